// Writes transform files (CTF).
#ifndef TAVRIN_XML_TRANSFORM_FILE_WRITER_H
#define TAVRIN_XML_TRANSFORM_FILE_WRITER_H

#include "transform/transform.h"

#include <iosfwd>
#include <memory>
#include <string>

namespace Color
{

// A transform without an id is given one. Throws what is wrong with a transform that is null or not valid, before anything is
// written.
class XMLTransformWriter
{
public:
    void writeStream(std::shared_ptr<Transform> const& transform, std::ostream& stream) const;
    // A file of that name is replaced once the new one is whole. Throws why the path can't be written.
    void writeFile(std::shared_ptr<Transform> const& transform, std::string const& path) const;
};

} // namespace Color

#endif
