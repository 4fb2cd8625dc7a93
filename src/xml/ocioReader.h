// The reader of every file that OpenColorIO can read, and of its processors.
#ifndef TAVRIN_XML_OCIO_READER_H
#define TAVRIN_XML_OCIO_READER_H

#include "ocio/opUtil.h"
#include "xml/ioReader.h"

#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace Color
{

// OpenColorIO parses; its operators are rebuilt as ours, from 32f to 32f.
class OCIOReader : public IOReader
{
public:
    enum class DIRECTION
    {
        FORWARD,
        INVERSE
    };

    OCIOReader();
    ~OCIOReader() override;

    // Extensions without the dot, with the names of formats: all but those for which there is a reader that would never be asked
    // otherwise, or with which OpenColorIO reads a dialect of our own. Empty in a build without OpenColorIO.
    static std::vector<std::pair<std::string, std::string>> supportedFileFormats();
    // Without regard to case.
    static bool isFormatSupported(std::string const& extension);

    char const* getName() const override;
    // Refuses: only files can be read.
    void parseBuffer(std::string const& text) const override;
    void parseFile(std::string const& path) const override;
    void parseFile(std::string const& path, DIRECTION direction) const;
    // The operators of a processor. An operator that has no counterpart fails.
    void parse(std::shared_ptr<OpUtil::Processor const> const& processor) const;
    std::shared_ptr<Transform> getTransform() const override;
    bool isFileSupported(std::string const& path) const override;

private:
    class Impl;
    std::unique_ptr<Impl> m_impl;
};

} // namespace Color

#endif
