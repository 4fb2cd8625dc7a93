// Everything that is asked of OpenColorIO: its operators into plain numbers and back, files, pixels, configurations.
#include "ocio/config.h"

#include <OpenColorIO/OpenColorIO.h>

#include <algorithm>
#include <cmath>
#include <limits>

namespace Color::OpUtil
{

namespace
{

namespace OCIO = OCIO_NAMESPACE;

// Runs a call of OpenColorIO; what it throws, also of the standard library's, becomes our error.
template <class Call>
auto translatingErrors(Call&& call)
{
    try
    {
        return call();
    }
    catch (std::exception const& exception)
    {
        throw Error(exception.what());
    }
}

Direction directionOf(OCIO::Transform const& transform)
{
    return transform.getDirection() == OCIO::TRANSFORM_DIR_INVERSE ? Direction::Inverse : Direction::Forward;
}

OCIO::TransformDirection toDirection(Direction direction)
{
    return direction == Direction::Inverse ? OCIO::TRANSFORM_DIR_INVERSE : OCIO::TRANSFORM_DIR_FORWARD;
}

// Both sides number them alike.
Interpolation interpolationOf(OCIO::Interpolation interpolation)
{
    switch (interpolation)
    {
    case OCIO::INTERP_LINEAR:
        return Interpolation::Linear;
    case OCIO::INTERP_TETRAHEDRAL:
        return Interpolation::Tetrahedral;
    case OCIO::INTERP_BEST:
        return Interpolation::Best;
    default:
        return Interpolation::Unknown;
    }
}

OCIO::Interpolation toInterpolation(Interpolation interpolation)
{
    return interpolation == Interpolation::Unknown ? OCIO::INTERP_DEFAULT : static_cast<OCIO::Interpolation>(interpolation);
}

template <class To, class From, std::size_t kCount>
void convert(From const (&from)[kCount], std::array<To, kCount>& to)
{
    std::transform(std::begin(from), std::end(from), to.begin(), [](From value) { return static_cast<To>(value); });
}

template <class To, class From, std::size_t kCount>
void convert(std::array<From, kCount> const& from, To (&to)[kCount])
{
    std::copy(from.begin(), from.end(), to);
}

// Reading: from operators of OpenColorIO. A domain other than 0 to 1 is a matrix of its own there.

Operation read(OCIO::Lut1DTransform const& transform)
{
    Lut1D lut;
    unsigned long const length = transform.getLength();
    for (std::vector<float>& channel : lut.luts)
        channel.resize(length);
    for (unsigned long i = 0; i < length; ++i)
        transform.getValue(i, lut.luts[0][i], lut.luts[1][i], lut.luts[2][i]);
    lut.interpolation = interpolationOf(transform.getInterpolation());
    lut.direction = directionOf(transform);
    lut.hasHalfDomain = transform.getInputHalfDomain();
    lut.adjustsHue = transform.getHueAdjust() == OCIO::HUE_DW3;
    return lut;
}

Operation read(OCIO::Lut3DTransform const& transform)
{
    Lut3D lut;
    unsigned int const size = static_cast<unsigned int>(transform.getGridSize());
    lut.sizes = {size, size, size};
    lut.lut.resize(std::size_t{3} * size * size * size);
    float* value = lut.lut.data();
    for (unsigned int b = 0; b < size; ++b)
        for (unsigned int g = 0; g < size; ++g)
            for (unsigned int r = 0; r < size; ++r, value += 3)
                transform.getValue(r, g, b, value[0], value[1], value[2]);
    lut.interpolation = interpolationOf(transform.getInterpolation());
    lut.direction = directionOf(transform);
    return lut;
}

Operation read(OCIO::MatrixTransform const& transform)
{
    double matrix[16];
    double offsets[4];
    transform.getMatrix(matrix);
    transform.getOffset(offsets);
    Matrix result;
    convert(matrix, result.matrix);
    convert(offsets, result.offsets);
    result.direction = directionOf(transform);
    return result;
}

bool isPlain(Log const& log)
{
    Log const plain;
    return log.k == plain.k && log.m == plain.m && log.b == plain.b && log.kb == plain.kb;
}

// A logarithm to another base is one to base 10 with another slope. A plain one to base 2 has an operator of its own.
Log withBase(Log log, double base)
{
    bool const keepsBase = base == 2.0 && isPlain(log);
    log.base = keepsBase ? 2.0F : 10.0F;
    for (float& slope : log.k)
        slope = static_cast<float>(slope * std::log(double{log.base}) / std::log(base));
    return log;
}

Operation read(OCIO::LogTransform const& transform)
{
    Log log;
    log.direction = directionOf(transform);
    return withBase(log, transform.getBase());
}

Operation read(OCIO::LogAffineTransform const& transform)
{
    double k[3];
    double m[3];
    double b[3];
    double kb[3];
    transform.getLogSideSlopeValue(k);
    transform.getLinSideSlopeValue(m);
    transform.getLinSideOffsetValue(b);
    transform.getLogSideOffsetValue(kb);
    Log log;
    convert(k, log.k);
    convert(m, log.m);
    convert(b, log.b);
    convert(kb, log.kb);
    log.direction = directionOf(transform);
    return withBase(log, transform.getBase());
}

// Other ways with values below 0 have no counterpart.
Operation read(OCIO::ExponentTransform const& transform)
{
    if (transform.getNegativeStyle() != OCIO::NEGATIVE_CLAMP)
        return Unknown();
    double exponents[4];
    transform.getValue(exponents);
    Exponent exponent;
    convert(exponents, exponent.exponents);
    exponent.direction = directionOf(transform);
    return exponent;
}

Operation read(OCIO::ExponentWithLinearTransform const& transform)
{
    if (transform.getNegativeStyle() != OCIO::NEGATIVE_LINEAR)
        return Unknown();
    double gamma[4];
    double offset[4];
    transform.getGamma(gamma);
    transform.getOffset(offset);
    Moncurve curve;
    convert(gamma, curve.gamma);
    convert(offset, curve.offset);
    curve.direction = directionOf(transform);
    return curve;
}

// Processors hold ranges in forward direction that clamp; what does not clamp is a matrix there.
Operation read(OCIO::RangeTransform const& transform)
{
    if (transform.getStyle() != OCIO::RANGE_CLAMP || directionOf(transform) != Direction::Forward)
        return Unknown();
    constexpr double kNone = std::numeric_limits<double>::quiet_NaN();
    return Range{transform.hasMinInValue() ? transform.getMinInValue() : kNone,
                 transform.hasMaxInValue() ? transform.getMaxInValue() : kNone,
                 transform.hasMinOutValue() ? transform.getMinOutValue() : kNone,
                 transform.hasMaxOutValue() ? transform.getMaxOutValue() : kNone};
}

Operation read(OCIO::CDLTransform const& transform)
{
    Cdl cdl;
    transform.getSlope(cdl.slope.data());
    transform.getOffset(cdl.offset.data());
    transform.getPower(cdl.power.data());
    cdl.saturation = transform.getSat();
    cdl.clamps = transform.getStyle() == OCIO::CDL_ASC;
    cdl.direction = directionOf(transform);
    return cdl;
}

// Gamma is a second contrast. The logarithmic style has constants of its own, and the inverse is no exposure and contrast.
Operation read(OCIO::ExposureContrastTransform const& transform)
{
    bool const isLog = transform.getStyle() == OCIO::EXPOSURE_CONTRAST_LOGARITHMIC;
    if (isLog || directionOf(transform) != Direction::Forward)
        return Unknown();
    ExposureContrast grade;
    grade.isVideo = transform.getStyle() == OCIO::EXPOSURE_CONTRAST_VIDEO;
    grade.exposure = transform.getExposure();
    grade.contrast = transform.getContrast() * transform.getGamma();
    grade.pivot = transform.getPivot();
    return grade;
}

// The operator as its class says it.
template <class Transform>
Operation readAs(OCIO::Transform const& transform)
{
    return read(dynamic_cast<Transform const&>(transform));
}

Operation readTransform(OCIO::Transform const& transform)
{
    switch (transform.getTransformType())
    {
    case OCIO::TRANSFORM_TYPE_LUT1D:
        return readAs<OCIO::Lut1DTransform>(transform);
    case OCIO::TRANSFORM_TYPE_LUT3D:
        return readAs<OCIO::Lut3DTransform>(transform);
    case OCIO::TRANSFORM_TYPE_MATRIX:
        return readAs<OCIO::MatrixTransform>(transform);
    case OCIO::TRANSFORM_TYPE_LOG:
        return readAs<OCIO::LogTransform>(transform);
    case OCIO::TRANSFORM_TYPE_LOG_AFFINE:
        return readAs<OCIO::LogAffineTransform>(transform);
    case OCIO::TRANSFORM_TYPE_EXPONENT:
        return readAs<OCIO::ExponentTransform>(transform);
    case OCIO::TRANSFORM_TYPE_EXPONENT_WITH_LINEAR:
        return readAs<OCIO::ExponentWithLinearTransform>(transform);
    case OCIO::TRANSFORM_TYPE_RANGE:
        return readAs<OCIO::RangeTransform>(transform);
    case OCIO::TRANSFORM_TYPE_CDL:
        return readAs<OCIO::CDLTransform>(transform);
    case OCIO::TRANSFORM_TYPE_EXPOSURE_CONTRAST:
        return readAs<OCIO::ExposureContrastTransform>(transform);
    default:
        return Unknown();
    }
}

std::shared_ptr<Processor const> readProcessor(OCIO::Processor const& processor)
{
    OCIO::ConstGroupTransformRcPtr const group = processor.createGroupTransform();
    auto result = std::make_shared<Processor>();
    for (int i = 0; i < group->getNumTransforms(); ++i)
        result->append(readTransform(*group->getTransform(i)));
    return result;
}

// Building: operators of OpenColorIO into a group.

OCIO::MatrixTransformRcPtr domainMatrix(Triple const& from, Triple const& to, Direction direction)
{
    double matrix[16] = {};
    double offsets[4] = {};
    for (std::size_t channel = 0; channel < 3; ++channel)
    {
        double const scale = 1.0 / (double{to[channel]} - double{from[channel]});
        matrix[channel * 5] = scale;
        offsets[channel] = -from[channel] * scale;
    }
    matrix[15] = 1.0;
    OCIO::MatrixTransformRcPtr transform = OCIO::MatrixTransform::Create();
    transform->setMatrix(matrix);
    transform->setOffset(offsets);
    transform->setDirection(toDirection(direction));
    return transform;
}

// A table with its domain, which comes before the table, or after its inverse.
template <class Lut>
void buildLut(OCIO::GroupTransform& group, Lut const& lut, OCIO::TransformRcPtr const& transform)
{
    transform->setDirection(toDirection(lut.direction));
    OCIO::TransformRcPtr const domain = domainMatrix(lut.from, lut.to, lut.direction);
    bool const isForward = lut.direction == Direction::Forward;
    group.appendTransform(isForward ? domain : transform);
    group.appendTransform(isForward ? transform : domain);
}

void build(OCIO::GroupTransform& group, Lut1D const& lut)
{
    std::size_t const length = lut.luts[0].size();
    OCIO::Lut1DTransformRcPtr const transform = OCIO::Lut1DTransform::Create(length, lut.hasHalfDomain);
    for (std::size_t i = 0; i < length; ++i)
        transform->setValue(i, lut.luts[0].at(i), lut.luts[1].at(i), lut.luts[2].at(i));
    transform->setInterpolation(toInterpolation(lut.interpolation));
    transform->setHueAdjust(lut.adjustsHue ? OCIO::HUE_DW3 : OCIO::HUE_NONE);
    buildLut(group, lut, transform);
}

void build(OCIO::GroupTransform& group, Lut3D const& lut)
{
    OCIO::Lut3DTransformRcPtr const transform = OCIO::Lut3DTransform::Create(lut.sizes[0]);
    float const* value = lut.lut.data();
    for (unsigned int b = 0; b < lut.sizes[2]; ++b)
        for (unsigned int g = 0; g < lut.sizes[1]; ++g)
            for (unsigned int r = 0; r < lut.sizes[0]; ++r, value += 3)
                transform->setValue(r, g, b, value[0], value[1], value[2]);
    transform->setInterpolation(toInterpolation(lut.interpolation));
    buildLut(group, lut, transform);
}

void build(OCIO::GroupTransform& group, Matrix const& matrix)
{
    double coefficients[16];
    double offsets[4];
    convert(matrix.matrix, coefficients);
    convert(matrix.offsets, offsets);
    OCIO::MatrixTransformRcPtr const transform = OCIO::MatrixTransform::Create();
    transform->setMatrix(coefficients);
    transform->setOffset(offsets);
    transform->setDirection(toDirection(matrix.direction));
    group.appendTransform(transform);
}

void build(OCIO::GroupTransform& group, Log const& log)
{
    double k[3];
    double m[3];
    double b[3];
    double kb[3];
    convert(log.k, k);
    convert(log.m, m);
    convert(log.b, b);
    convert(log.kb, kb);
    OCIO::LogAffineTransformRcPtr const transform = OCIO::LogAffineTransform::Create();
    transform->setBase(log.base);
    transform->setLogSideSlopeValue(k);
    transform->setLinSideSlopeValue(m);
    transform->setLinSideOffsetValue(b);
    transform->setLogSideOffsetValue(kb);
    transform->setDirection(toDirection(log.direction));
    group.appendTransform(transform);
}

void build(OCIO::GroupTransform& group, Exponent const& exponent)
{
    double exponents[4];
    convert(exponent.exponents, exponents);
    OCIO::ExponentTransformRcPtr const transform = OCIO::ExponentTransform::Create();
    transform->setValue(exponents);
    transform->setNegativeStyle(OCIO::NEGATIVE_CLAMP);
    transform->setDirection(toDirection(exponent.direction));
    group.appendTransform(transform);
}

void build(OCIO::GroupTransform& group, Cdl const& cdl)
{
    OCIO::CDLTransformRcPtr const transform = OCIO::CDLTransform::Create();
    transform->setSlope(cdl.slope.data());
    transform->setOffset(cdl.offset.data());
    transform->setPower(cdl.power.data());
    transform->setSat(cdl.saturation);
    transform->setStyle(cdl.clamps ? OCIO::CDL_ASC : OCIO::CDL_NO_CLAMP);
    transform->setDirection(toDirection(cdl.direction));
    group.appendTransform(transform);
}

// The others are never built.
template <class Operator>
void build(OCIO::GroupTransform&, Operator const&)
{
    throw Error("No operator to build");
}

} // namespace

class Processor::Program
{
public:
    explicit Program(std::vector<Operation> const& operations)
    {
        OCIO::GroupTransformRcPtr const group = OCIO::GroupTransform::Create();
        for (Operation const& operation : operations)
            std::visit([&](auto const& op) { build(*group, op); }, operation);
        m_processor = OCIO::Config::CreateRaw()->getProcessor(group)->getOptimizedCPUProcessor(OCIO::OPTIMIZATION_LOSSLESS);
    }

    void run(float* pixels, unsigned int width, unsigned int height, unsigned int channels) const
    {
        OCIO::PackedImageDesc image(pixels, width, height, channels);
        m_processor->apply(image);
    }

private:
    OCIO::ConstCPUProcessorRcPtr m_processor;
};

void Processor::finalize()
{
    translatingErrors([&] { m_program = std::make_shared<Program const>(m_operations); });
}

void Processor::apply(float* pixels, unsigned int width, unsigned int height, unsigned int channels) const
{
    translatingErrors([&] { m_program->run(pixels, width, height, channels); });
}

bool isAvailable()
{
    return true;
}

std::vector<std::pair<std::string, std::string>> getFileFormats()
{
    return translatingErrors(
        []
        {
            int const count = OCIO::FileTransform::GetNumFormats();
            std::vector<std::pair<std::string, std::string>> formats;
            formats.reserve(static_cast<std::size_t>(count));
            for (int i = 0; i < count; ++i)
                formats.emplace_back(OCIO::FileTransform::GetFormatExtensionByIndex(i),
                                     OCIO::FileTransform::GetFormatNameByIndex(i));
            return formats;
        });
}

std::shared_ptr<Processor const> getFileProcessor(std::string const& path, Direction direction)
{
    return translatingErrors(
        [&]
        {
            // Files are kept by their paths for as long as the process lives, however they change.
            OCIO::ClearAllCaches();
            OCIO::FileTransformRcPtr const file = OCIO::FileTransform::Create();
            file->setInterpolation(OCIO::INTERP_LINEAR);
            file->setSrc(path.c_str());
            file->setDirection(toDirection(direction));
            return readProcessor(*OCIO::Config::Create()->getProcessor(file));
        });
}

Cdl getCDLFromFile(std::string const& path, std::string const& id)
{
    return translatingErrors(
        [&]
        {
            OCIO::ClearAllCaches();
            OCIO::ConstCDLTransformRcPtr const transform = OCIO::CDLTransform::CreateFromFile(path.c_str(), id.c_str());
            return std::get<Cdl>(read(*transform));
        });
}

namespace
{

// Null texts are empty.
std::string textOf(char const* text)
{
    return text == nullptr ? std::string() : std::string(text);
}

template <class GetName>
std::vector<std::string> namesOf(int count, GetName getName)
{
    std::vector<std::string> names;
    names.reserve(static_cast<std::size_t>(count));
    for (int i = 0; i < count; ++i)
        names.push_back(textOf(getName(i)));
    return names;
}

class FileConfig : public Config
{
public:
    explicit FileConfig(std::string const& path) : m_config(OCIO::Config::CreateFromFile(path.c_str())) {}

    void sanityCheck() const override
    {
        translatingErrors(
            [&]
            {
                OCIO::ConfigRcPtr const copy = m_config->createEditableCopy();
                copy->setActiveDisplays("");
                copy->setActiveViews("");
                copy->validate();
            });
    }

    std::vector<std::string> getRoleNames() const override
    {
        return namesOf(m_config->getNumRoles(), [this](int i) { return m_config->getRoleName(i); });
    }
    std::string getColorSpaceName(std::string const& nameOrRole) const override
    {
        OCIO::ConstColorSpaceRcPtr const space = m_config->getColorSpace(nameOrRole.c_str());
        return space ? textOf(space->getName()) : std::string();
    }
    std::vector<std::string> getColorSpaceNames() const override
    {
        return namesOf(m_config->getNumColorSpaces(), [this](int i) { return m_config->getColorSpaceNameByIndex(i); });
    }

    std::vector<std::string> getDisplays() const override
    {
        return namesOf(m_config->getNumDisplays(), [this](int i) { return m_config->getDisplay(i); });
    }
    std::vector<std::string> getViews(std::string const& display) const override
    {
        char const* const name = display.c_str();
        return namesOf(m_config->getNumViews(name), [this, name](int i) { return m_config->getView(name, i); });
    }
    std::string getActiveDisplays() const override { return textOf(m_config->getActiveDisplays()); }
    std::string getActiveViews() const override { return textOf(m_config->getActiveViews()); }
    std::string getDefaultDisplay() const override { return textOf(m_config->getDefaultDisplay()); }
    std::string getDefaultView(std::string const& display) const override
    {
        return textOf(m_config->getDefaultView(display.c_str()));
    }

    // A view that displays share may stand for the colour space that bears the display's name.
    std::string getDisplayColorSpaceName(std::string const& display, std::string const& view) const override
    {
        std::string const name =
            translatingErrors([&] { return textOf(m_config->getDisplayViewColorSpaceName(display.c_str(), view.c_str())); });
        return name == OCIO::OCIO_VIEW_USE_DISPLAY_NAME ? display : name;
    }

    std::shared_ptr<Processor const> getProcessor(std::string const& fromSpace, std::string const& toSpace) const override
    {
        return translatingErrors([&] { return readProcessor(*m_config->getProcessor(fromSpace.c_str(), toSpace.c_str())); });
    }

private:
    OCIO::ConstConfigRcPtr m_config;
};

} // namespace

std::shared_ptr<Config const> Config::CreateFromFile(std::string const& path)
{
    return translatingErrors(
        [&]
        {
            OCIO::ClearAllCaches();
            return std::make_shared<FileConfig const>(path);
        });
}

} // namespace Color::OpUtil
