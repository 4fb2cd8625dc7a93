// The reader of plain-text tables of one dimension.
#ifndef TAVRIN_XML_OSTRAND_1D_READER_H
#define TAVRIN_XML_OSTRAND_1D_READER_H

#include "xml/fileOnlyReader.h"

#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace Color
{

class Ostrand1DReader : public FileOnlyReader
{
public:
    Ostrand1DReader();

    // The extension without the dot, with words for people.
    static std::vector<std::pair<std::string, std::string>> supportedFileFormats();

    char const* getName() const override;
    // "lut", in this spelling.
    bool isFileSupported(std::string const& path) const override;

protected:
    std::shared_ptr<Transform> readTransform(std::string const& path) const override;
};

} // namespace Color

#endif
