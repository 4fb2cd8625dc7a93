// The versions of the format of transform files.
#ifndef TAVRIN_XML_CTF_VERSIONS_H
#define TAVRIN_XML_CTF_VERSIONS_H

namespace Color::Xml::Versions
{

// A file that does not tell its version has this one; there is no rule of their own for older ones.
inline constexpr float kWithoutAttribute = 1.2F;
inline constexpr float kNewest = 1.5F;
// What a written file states, unless its operators ask for a newer one.
inline constexpr float kOldestWritten = 1.3F;

} // namespace Color::Xml::Versions

#endif
