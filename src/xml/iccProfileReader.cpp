// The reader of ICC profiles of displays.
#include "xml/iccProfileReader.h"

#include "transform/gammaOp.h"
#include "transform/invLut1DOp.h"
#include "transform/lut1DOp.h"
#include "transform/matrixOp.h"
#include "transform/referenceOp.h"
#include "utils/logger.h"
#include "utils/utils.h"
#include "xml/iccProfile.h"

#include <algorithm>
#include <array>
#include <iterator>

namespace Color
{

namespace
{

constexpr char const* kExtensions[] = {"icm", "icc", "pf"};

// Red, green and blue.
constexpr cmsTagSignature kPrimaryTags[] = {cmsSigRedColorantTag, cmsSigGreenColorantTag, cmsSigBlueColorantTag};
constexpr cmsTagSignature kCurveTags[] = {cmsSigRedTRCTag, cmsSigGreenTRCTag, cmsSigBlueTRCTag};

// Bradford's chromatic adaptation, in row order.
constexpr float kD65ToD50[] = {1.0478895902633667F,    0.0229206420481205F,  -0.050218306481838226F,
                               0.029584422707557678F,  0.9904819130897522F,  -0.017079530283808708F,
                               -0.009252188727259636F, 0.01507304236292839F, 0.7516689300537109F};

// Tags begin with their type and four reserved bytes; those of curves go on with the number of entries.
constexpr std::size_t kTagContent = 8;
constexpr std::size_t kCurveEntries = 12;

Descriptions describedAs(char const* text)
{
    Descriptions descriptions;
    descriptions += text;
    return descriptions;
}

// Appends what a profile says to a transform. All operators are between 16f and 16f, but for the device's end.
class ICCMatrixShaper
{
public:
    ICCMatrixShaper(std::string const& fileName, ICCProfile const& profile, Transform& transform)
        : m_fileName(fileName), m_profile(profile), m_transform(transform)
    {
    }

    void extractHeaderInformation();
    void extractTransform();

private:
    using Curves = std::array<ICCData, 3>;

    void _appendXYZCorrection();
    void _extractMatrixPart();
    void _appendGamutMap();
    void _extractCurvePart();
    Curves _readCurves() const;
    void _appendIdentity();
    void _appendGamma(Curves const& curves);
    void _appendTable(Curves const& curves, std::size_t entries);

    template <class Operator>
    void _append(std::unique_ptr<Operator> op)
    {
        m_transform.getOps().append(op.release());
    }
    Exception _failure(ErrorSite site) const { return failure(site, Module::kIccReader, m_fileName); }

    std::string const& m_fileName;
    ICCProfile const& m_profile;
    Transform& m_transform;
    Descriptions const m_curveDescriptions = describedAs("Tone response curve from ICC profile");
};

void ICCMatrixShaper::extractHeaderInformation()
{
    std::uint32_t const connectionSpace = m_profile.getConnectionSpace();
    if (connectionSpace != cmsSigXYZData)
    {
        throw failure(ErrorIds::kIccConnectionSpace, Module::kIccReader, getSignatureName(connectionSpace), m_fileName);
    }
    m_transform.setInputDescriptor("ICC XYZ PCS");
    std::uint32_t const deviceSpace = m_profile.getDeviceSpace();
    if (deviceSpace != cmsSigRgbData)
    {
        throw failure(ErrorIds::kIccDeviceSpace, Module::kIccReader, getSignatureName(deviceSpace), m_fileName);
    }
    m_transform.setOutputDescriptor("device RGB");
}

void ICCMatrixShaper::extractTransform()
{
    _appendXYZCorrection();
    _extractMatrixPart();
    _appendGamutMap();
    _extractCurvePart();
}

void ICCMatrixShaper::_appendXYZCorrection()
{
    auto op = std::make_unique<MatrixOp>(Tavrin::BIT_DEPTH_16f, Tavrin::BIT_DEPTH_16f, "", "",
                                         describedAs("Chromatic adaptation (Bradford) from D65 to ICC PCS D50"));
    op->setRGBValues(kD65ToD50);
    _append(std::move(op));
}

void ICCMatrixShaper::_extractMatrixPart()
{
    constexpr std::size_t kXyzSize = 12;
    constexpr float kFixedPoint = 1.0F / 65536.0F; // Sixteen of the bits are behind the point.
    std::array<float, 9> values{};
    for (std::size_t color = 0; color < 3; ++color)
    {
        std::size_t const size = m_profile.getTagSize(kPrimaryTags[color]);
        ICCData const tag = m_profile.readTag(kPrimaryTags[color], kTagContent + kXyzSize);
        if (!tag.isOfType(cmsSigXYZType) || (size - kTagContent) / kXyzSize != 1)
        {
            throw _failure(ErrorIds::kIccMatrixTag);
        }
        for (std::size_t row = 0; row < 3; ++row)
        {
            auto const fixed = static_cast<std::int32_t>(tag.get32(kTagContent + row * 4));
            values[row * 3 + color] = static_cast<float>(fixed) * kFixedPoint;
        }
    }
    MatrixOp matrix(Tavrin::BIT_DEPTH_16f, Tavrin::BIT_DEPTH_16f, "", "", Descriptions());
    matrix.setRGBValues(values.data());
    matrix.validate();
    OpList& ops = m_transform.getOps();
    matrix.inverse(ops);
    ops.get(ops.size() - 1).getDescriptions() += "RGB primary matrix from ICC profile";
}

void ICCMatrixShaper::_appendGamutMap()
{
    _append(std::make_unique<ReferenceOp>(Tavrin::BIT_DEPTH_16f, Tavrin::BIT_DEPTH_16f, "", "", Descriptions(), "defaultGamutMap"));
}

void ICCMatrixShaper::_extractCurvePart()
{
    Curves const curves = _readCurves();
    switch (std::size_t const entries = curves.front().get32(kTagContent))
    {
    case 0:
        _appendIdentity();
        break;
    case 1:
        _appendGamma(curves);
        break;
    default:
        _appendTable(curves, entries);
    }
}

ICCMatrixShaper::Curves ICCMatrixShaper::_readCurves() const
{
    Curves curves;
    for (std::size_t color = 0; color < 3; ++color)
    {
        ICCData& curve = curves[color];
        curve = m_profile.readTag(kCurveTags[color], kCurveEntries + 2 * std::size_t{Lut1DOp::kMaxDimension});
        if (!curve.isOfType(cmsSigCurveType) || curve.size() < kCurveEntries)
        {
            throw _failure(ErrorIds::kIccCurveTag);
        }
        std::uint32_t const entries = curve.get32(kTagContent);
        if (entries != curves.front().get32(kTagContent) || entries > (curve.size() - kCurveEntries) / 2)
        {
            throw _failure(ErrorIds::kIccCurveTag);
        }
    }
    return curves;
}

void ICCMatrixShaper::_appendIdentity()
{
    _append(std::make_unique<Lut1DOp>(Tavrin::BIT_DEPTH_16f, Tavrin::BIT_DEPTH_16i, "", "", m_curveDescriptions,
                                      Lut1DOp::InterpolationAlgo::Default, Tavrin::HALF_FLAGS_NONE, 2));
}

void ICCMatrixShaper::_appendGamma(Curves const& curves)
{
    constexpr double kFixedPoint = 1.0 / 256.0; // Eight of the bits are behind the point.
    constexpr auto kStyle = GammaOp::GammaStyle::BasicRev;
    auto const params = [&](std::size_t color) { return GammaOp::Params{curves[color].get16(kCurveEntries) * kFixedPoint}; };
    _append(std::make_unique<GammaOp>(Tavrin::BIT_DEPTH_16f, Tavrin::BIT_DEPTH_16i, "", "", m_curveDescriptions, kStyle, params(0),
                                      params(1), params(2), GammaOp::getIdentityParameters(kStyle)));
}

// The curves go from the device to light, and are searched backwards.
void ICCMatrixShaper::_appendTable(Curves const& curves, std::size_t entries)
{
    Lut1DOp table(Tavrin::BIT_DEPTH_16i, Tavrin::BIT_DEPTH_16f, "", "", m_curveDescriptions, Lut1DOp::InterpolationAlgo::Default,
                  Tavrin::HALF_FLAGS_NONE, static_cast<unsigned int>(entries));
    Array::Values& values = table.getArray().getValues();
    for (std::size_t i = 0; i < values.size(); ++i)
    {
        values[i] = static_cast<float>(curves[i % 3].get16(kCurveEntries + i / 3 * 2)) / 65535.0F;
    }
    table.validate();
    _append(std::make_unique<InvLut1DOp>(table));
}

void requireMatrixShaper(ICCProfile const& profile, std::string const& path)
{
    auto const hasTag = [&](cmsTagSignature tag) { return profile.hasTag(tag); };
    if (!std::all_of(std::begin(kPrimaryTags), std::end(kPrimaryTags), hasTag) ||
        !std::all_of(std::begin(kCurveTags), std::end(kCurveTags), hasTag))
    {
        throw failure(ErrorIds::kIccTransformModel, Module::kIccReader, path);
    }
}

void requireSoundProfile(ICCProfile& profile, std::string const& path)
{
    std::string report;
    if (!profile.ReadValidate(report))
    {
        throw failure(ErrorIds::kIccReading, Module::kIccReader, report, path);
    }
    auto const status = profile.Validate(report);
    if (status == ICCProfile::ValidateStatus::CriticalError)
    {
        throw failure(ErrorIds::kIccReading, Module::kIccReader, report, path);
    }
    if (status != ICCProfile::ValidateStatus::Ok)
    {
        Logger::log(LOG_DEBUG, "%s", errorMessage(ErrorIds::kIccReading, Module::kIccReader, report, path).getMessage().c_str());
    }
}

} // namespace

ICCProfileReader::ICCProfileReader() : FileOnlyReader(ErrorIds::kIccBuffer, Module::kIccReader) {}

std::vector<std::pair<std::string, std::string>> ICCProfileReader::supportedFileFormats()
{
    std::vector<std::pair<std::string, std::string>> formats;
    for (char const* const extension : kExtensions)
    {
        formats.emplace_back(extension, "ICC Profile file extension");
    }
    return formats;
}

char const* ICCProfileReader::getName() const
{
    return "ICC Profile Reader";
}

bool ICCProfileReader::isFileSupported(std::string const& path) const
{
    return std::find(std::begin(kExtensions), std::end(kExtensions), Utils::getFileExtension(path)) != std::end(kExtensions);
}

std::shared_ptr<Transform> ICCProfileReader::readTransform(std::string const& path) const
{
    ICCProfile profile(path);
    requireSoundProfile(profile, path);
    requireMatrixShaper(profile, path);
    auto transform = std::make_shared<Transform>();
    ICCMatrixShaper shaper(path, profile, *transform);
    shaper.extractHeaderInformation();
    shaper.extractTransform();
    return transform;
}

} // namespace Color
