// The reader of plain-text tables of three dimensions.
#include "xml/ostrand3DReader.h"

#include "transform/lut3DOp.h"
#include "utils/utils.h"
#include "xml/lut3dUtils.h"

#include <algorithm>

namespace Color
{

using namespace Lut3dUtils;

namespace
{

constexpr char kExtension[] = "3dl";

// The format does not tell its depth.
BitDepth depthOf(int maxValue, std::string const& path)
{
    if (maxValue > 4095)
    {
        throw failure(ErrorIds::kOstrand3DDepthRange, Module::kXml, maxValue, path);
    }
    return maxValue > 1023 ? Tavrin::BIT_DEPTH_12i : Tavrin::BIT_DEPTH_10i;
}

std::unique_ptr<Lut3DOp> readOp(std::string const& path)
{
    Rows rows;
    int maxValue = 0;
    Error const error = readFile(path, rows, maxValue);
    if (error != OK)
    {
        throw failure(ErrorIds::kOstrand3DReading, Module::kXml, errorToString(path, error), path);
    }
    BitDepth const depth = depthOf(maxValue, path);
    if (rows.size() != kRows)
    {
        throw failure(ErrorIds::kOstrand3DRows, Module::kXml, path);
    }
    auto op = std::make_unique<Lut3DOp>(depth, depth, "", "", Descriptions(), Lut3DOp::InterpolationAlgo::Trilinear, kGridPoints);
    auto value = op->getArray().getValues().begin();
    for (auto const& row : rows)
    {
        value = std::transform(row.begin(), row.end(), value, [](int number) { return static_cast<float>(number); });
    }
    return op;
}

} // namespace

Ostrand3DReader::Ostrand3DReader() : FileOnlyReader(ErrorIds::kOstrand3DBuffer, Module::kXml) {}

std::vector<std::pair<std::string, std::string>> Ostrand3DReader::supportedFileFormats()
{
    return {{kExtension, "Ostrand 3d-LUT format"}};
}

char const* Ostrand3DReader::getName() const
{
    return "Ostrand 3DL Reader";
}

bool Ostrand3DReader::isFileSupported(std::string const& path) const
{
    return Utils::getFileExtension(path) == kExtension;
}

std::shared_ptr<Transform> Ostrand3DReader::readTransform(std::string const& path) const
{
    auto transform = std::make_shared<Transform>();
    transform->getOps().append(readOp(path).release());
    transform->validate();
    return transform;
}

} // namespace Color
