// Files that appear whole or not at all.
#ifndef TAVRIN_XML_WHOLE_FILE_H
#define TAVRIN_XML_WHOLE_FILE_H

#include <functional>
#include <iosfwd>
#include <string>

namespace Color::Xml::Writer
{

// Lets the function write to a stream, and then gives what it wrote the name of the path. Until then, and when the function or the
// writing fails, a file of that name stays as it was. A symbolic link stays one; an existing file's permissions are kept. Only
// where a file can't be replaced, since its folder takes no new one or it is a device, it is written in place.
//
// Throws why the path can't be written, and passes on what the function throws.
void writeWholeFile(std::string const& path, std::function<void(std::ostream&)> const& write);

} // namespace Color::Xml::Writer

#endif
