// The reader of transform files (CTF).
#ifndef TAVRIN_XML_XML_TRANSFORM_READER_H
#define TAVRIN_XML_XML_TRANSFORM_READER_H

#include "xml/ioReader.h"

#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace Color
{

class XMLTransformReader : public IOReader
{
public:
    XMLTransformReader();
    ~XMLTransformReader() override;

    // "ctf".
    static char const* getColorTransformFileExtension();
    // Extensions without the dot, with words for people.
    static std::vector<std::pair<std::string, std::string>> supportedFileFormats();

    char const* getName() const override;
    // A transform without operators is accepted from a buffer and refused from a file.
    void parseBuffer(std::string const& text) const override;
    void parseFile(std::string const& path) const override;
    std::shared_ptr<Transform> getTransform() const override;
    // "ctf" or "xml", in this spelling.
    bool isFileSupported(std::string const& path) const override;
    // Looks into the file, which tells transforms from other XML files.
    bool isFileLoadable(std::string const& path) const;

private:
    class Impl;
    std::unique_ptr<Impl> m_impl;
};

namespace Xml::Reader
{

// Whether a line in the first 5120 bytes of the file opens a transform. Never throws a Color::Exception.
bool isLoadableCTF(std::string const& path);

} // namespace Xml::Reader

} // namespace Color

#endif
