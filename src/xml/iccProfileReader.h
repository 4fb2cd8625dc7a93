// The reader of ICC profiles of displays.
#ifndef TAVRIN_XML_ICC_PROFILE_READER_H
#define TAVRIN_XML_ICC_PROFILE_READER_H

#include "xml/fileOnlyReader.h"

#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace Color
{

// A profile of three primaries and three curves (a matrix shaper) becomes a transform from CIE XYZ, with the white of D65, to
// device values. Between the two stands a reference to the alias "defaultGamutMap".
class ICCProfileReader : public FileOnlyReader
{
public:
    ICCProfileReader();

    // Extensions without the dot, with words for people.
    static std::vector<std::pair<std::string, std::string>> supportedFileFormats();

    char const* getName() const override;
    // "icm", "icc" or "pf", in this spelling.
    bool isFileSupported(std::string const& path) const override;

protected:
    std::shared_ptr<Transform> readTransform(std::string const& path) const override;
};

} // namespace Color

#endif
