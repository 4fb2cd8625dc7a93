// What every reader of a file kind offers.
#ifndef TAVRIN_XML_IO_READER_H
#define TAVRIN_XML_IO_READER_H

#include "transform/transform.h"

#include <memory>
#include <string>

namespace Color
{

// An object reads one document and is then thrown away. Readings fail by throwing a Color::Exception.
class IOReader
{
public:
    virtual ~IOReader() = default;
    // For people: it stands before a reader's complaint when several readers were tried.
    virtual char const* getName() const = 0;
    virtual void parseBuffer(std::string const& text) const = 0;
    virtual void parseFile(std::string const& path) const = 0;
    // What the parse built. Not to be asked for after a failure.
    virtual std::shared_ptr<Transform> getTransform() const = 0;
    // Looks at the extension alone; the file need not exist.
    virtual bool isFileSupported(std::string const& path) const = 0;
};

} // namespace Color

#endif
