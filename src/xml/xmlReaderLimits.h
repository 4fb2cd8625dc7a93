// How much a document may ask for. The limits are far above what transforms need; they keep a hostile or broken file from
// taking the machine's memory or time.
#ifndef TAVRIN_XML_READER_LIMITS_H
#define TAVRIN_XML_READER_LIMITS_H

#include <cstddef>
#include <cstdint>

namespace Color::Xml::Reader::Limits
{

// Open elements at once. Operators need four; the rest is room for free metadata, whose tree is freed recursively.
inline constexpr std::size_t kNesting = 256;

// The product of the numbers in the dim attribute of an array, checked before memory is taken. The largest 3D table
// (129 points an axis) has 6.4 million values.
inline constexpr std::uint64_t kArrayValues = std::uint64_t{1} << 24;

// Bytes of text between two tags on one line.
inline constexpr std::size_t kLineText = std::size_t{1} << 28;

// Memory for descriptions that the colour corrections of a document take over from the elements around them, each a copy.
inline constexpr std::size_t kHandedOnDescriptions = std::size_t{1} << 26;

// Bytes that the parser may scan more than once: in all, and on top for each byte of the document. A fraction of a second's work.
inline constexpr std::uint64_t kRescannedBytes = std::uint64_t{1} << 27;
inline constexpr std::uint64_t kRescannedPerByte = 8;

// Files that refer to each other in a chain, and references that are followed for one transform. Each of them is a file that is
// read.
inline constexpr std::size_t kReferenceNesting = 64;
inline constexpr std::size_t kReferences = 4096;

} // namespace Color::Xml::Reader::Limits

#endif
