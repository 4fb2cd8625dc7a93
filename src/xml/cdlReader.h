// The reader of colour decision lists, as the American Society of Cinematographers has them.
#ifndef TAVRIN_XML_CDL_READER_H
#define TAVRIN_XML_CDL_READER_H

#include "xml/ioReader.h"

#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace Color
{

// Each colour correction becomes a transform of one CDLOp, whose bypass is dynamic. Which of the three kinds of documents a file
// holds is told by its root, not by its extension.
class CDLReader : public IOReader
{
public:
    using TransformList = std::vector<std::shared_ptr<Transform>>;

    CDLReader();
    ~CDLReader() override;

    // Extensions without the dot, with words for people.
    static std::vector<std::pair<std::string, std::string>> supportedFileFormats();

    char const* getName() const override;
    void parseBuffer(std::string const& text) const override;
    void parseFile(std::string const& path) const override;
    // All corrections, in the order of the document.
    TransformList const& getTransformList() const;
    // The first correction; a transform without operators when there is none.
    std::shared_ptr<Transform> getTransform() const override;
    // "cdl", "ccc" or "cc", in any case.
    bool isFileSupported(std::string const& path) const override;

private:
    class Impl;
    std::unique_ptr<Impl> m_impl;
};

} // namespace Color

#endif
