// The base of readers that read files and nothing from memory.
#ifndef TAVRIN_XML_FILE_ONLY_READER_H
#define TAVRIN_XML_FILE_ONLY_READER_H

#include "utils/errorMessage.h"
#include "xml/ioReader.h"

#include <memory>
#include <string>

namespace Color
{

class FileOnlyReader : public IOReader
{
public:
    // Throws the failure that a derived class names.
    void parseBuffer(std::string const& text) const override;
    void parseFile(std::string const& path) const override { m_transform = readTransform(path); }
    std::shared_ptr<Transform> getTransform() const override { return m_transform; }

protected:
    FileOnlyReader(ErrorId bufferUnsupported, char const* moduleTag)
        : m_bufferUnsupported(bufferUnsupported), m_moduleTag(moduleTag)
    {
    }

    // The validated transform of a file, or an exception.
    virtual std::shared_ptr<Transform> readTransform(std::string const& path) const = 0;

private:
    ErrorId m_bufferUnsupported;
    char const* m_moduleTag;
    mutable std::shared_ptr<Transform> m_transform; // What the last parse came to, which is constant for those who call it.
};

} // namespace Color

#endif
