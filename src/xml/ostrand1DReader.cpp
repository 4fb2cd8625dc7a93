// The reader of plain-text tables of one dimension.
#include "xml/ostrand1DReader.h"

#include "transform/lut1DOp.h"
#include "utils/logger.h"
#include "utils/numerics.h"
#include "utils/utils.h"
#include "xml/lut1dUtils.h"

namespace Color
{

using namespace Lut1dUtils;

namespace
{

constexpr char kExtension[] = "lut";

IMLutStruct readTable(std::string const& path)
{
    IMLutStruct lut;
    int line = 0;
    IMLutError const error = IMLutGet(path, lut, line);
    if (error != IM_LUT_OK)
    {
        Logger::log(LOG_DEBUG, "Reading ended at line %d of %s", line, path.c_str());
        throw failure(ErrorIds::kOstrand1DReading, Module::kXml, IMLutErrorStr(error), path);
    }
    return lut;
}

std::unique_ptr<Lut1DOp> makeOp(IMLutStruct const& lut)
{
    HalfFlags const halfFlags = lut.inputDepth == IM_LUT_BITS_16F ? Tavrin::HALF_FLAGS_INPUT_HALF_DOMAIN : Tavrin::HALF_FLAGS_NONE;
    auto op = std::make_unique<Lut1DOp>(getTavrinLut1DBitDepth(lut.inputDepth), getTavrinLut1DBitDepth(lut.outputDepth), "", "",
                                        Descriptions(), Lut1DOp::InterpolationAlgo::Linear, halfFlags,
                                        static_cast<unsigned int>(lut.length));
    bool const isHalf = lut.outputDepth == IM_LUT_BITS_16F;
    Array::Values& values = op->getArray().getValues();
    for (std::size_t i = 0; i < values.size(); ++i)
    {
        std::uint16_t const value = lut.getTable(i % 3)[i / 3];
        values[i] = isHalf ? Foundation::Numerics::convertHalfBitsToFloat(value) : static_cast<float>(value);
    }
    return op;
}

} // namespace

Ostrand1DReader::Ostrand1DReader() : FileOnlyReader(ErrorIds::kOstrand1DBuffer, Module::kXml) {}

std::vector<std::pair<std::string, std::string>> Ostrand1DReader::supportedFileFormats()
{
    return {{kExtension, "Ostrand 1d-LUT format"}};
}

char const* Ostrand1DReader::getName() const
{
    return "Ostrand LUT Reader";
}

bool Ostrand1DReader::isFileSupported(std::string const& path) const
{
    return Utils::getFileExtension(path) == kExtension;
}

std::shared_ptr<Transform> Ostrand1DReader::readTransform(std::string const& path) const
{
    auto transform = std::make_shared<Transform>();
    transform->getOps().append(makeOp(readTable(path)).release());
    transform->validate();
    return transform;
}

} // namespace Color
