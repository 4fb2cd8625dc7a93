// Little CMS: a device link of the operators, or profiles of primaries and curves where these are faster. Flags are the default
// ones, but for alpha, which other participants copy too, and for the cache of one pixel, which makes no difference where there is
// noise.
#include "peers/peers.h"
#include "shared/tables.h"

#include <lcms2.h>

#include <algorithm>
#include <cmath>
#include <memory>

namespace Bench
{

namespace
{

struct Delete
{
    void operator()(cmsPipeline* pipeline) const { cmsPipelineFree(pipeline); }
    void operator()(cmsToneCurve* curve) const { cmsFreeToneCurve(curve); }
};

using Pipeline = std::unique_ptr<cmsPipeline, Delete>;
using ToneCurve = std::unique_ptr<cmsToneCurve, Delete>;
using Profile = std::shared_ptr<void>;

Profile owned(cmsHPROFILE profile)
{
    return {profile, cmsCloseProfile};
}

std::optional<cmsUInt32Number> formatOf(Tavrin::PixelFormat format)
{
    switch (format)
    {
    case Tavrin::PF_RGB_8i:
        return TYPE_RGB_8;
    case Tavrin::PF_RGB_16i:
        return TYPE_RGB_16;
    case Tavrin::PF_RGB_16f:
        return TYPE_RGB_HALF_FLT;
    case Tavrin::PF_RGB_32f:
        return TYPE_RGB_FLT;
    case Tavrin::PF_RGBA_8i:
        return TYPE_RGBA_8;
    case Tavrin::PF_RGBA_16i:
        return TYPE_RGBA_16;
    case Tavrin::PF_RGBA_16f:
        return TYPE_RGBA_HALF_FLT;
    case Tavrin::PF_RGBA_32f:
        return TYPE_RGBA_FLT;
    default:
        return std::nullopt;
    }
}

// ---------------------------------------------------------------- curves

// Type 4 of the parametric curves is this one; a negative type is its inverse.
ToneCurve srgbCurve(bool inverse)
{
    double const slope = srgbSlope();
    double const parameters[] = {kSrgbGamma, 1.0 / (1.0 + kSrgbOffset), kSrgbOffset / (1.0 + kSrgbOffset), slope, kSrgbBreak};
    return ToneCurve(cmsBuildParametricToneCurve(nullptr, inverse ? -4 : 4, parameters));
}

cmsCurveSegment segment(float from, float to, int type, std::initializer_list<double> parameters)
{
    cmsCurveSegment result = {from, to, type, {}, 0, nullptr};
    std::copy(parameters.begin(), parameters.end(), result.Params);
    return result;
}

constexpr float kFar = 1e22F;

// Type 6 of the segments, (a x + b) ^ gamma + c, between constant ends: a power that clamps.
ToneCurve clampedPower(double power)
{
    cmsCurveSegment const segments[] = {segment(-kFar, 0.0F, 6, {1.0, 0.0, 0.0, 0.0}),
                                        segment(0.0F, 1.0F, 6, {power, 1.0, 0.0, 0.0}),
                                        segment(1.0F, kFar, 6, {1.0, 0.0, 0.0, 1.0})};
    return ToneCurve(cmsBuildSegmentedToneCurve(nullptr, 3, segments));
}

// Type 8 is a b ^ (c x + d) + e, and type 7 is a log10(b x ^ gamma + c) + d.
ToneCurve filmCurve(Direction direction)
{
    auto const [multiplier, white, gain, offset] = filmParameters();
    cmsCurveSegment const forward = segment(-kFar, kFar, 8, {gain, 10.0, multiplier, -multiplier * white, -offset});
    cmsCurveSegment const inverse = segment(-kFar, kFar, 7, {1.0, 1.0 / multiplier, 1.0 / gain, offset / gain, white});
    return ToneCurve(cmsBuildSegmentedToneCurve(nullptr, 1, direction == Direction::Forward ? &forward : &inverse));
}

// ---------------------------------------------------------------- a device link

// Adds the stages of an operator; false where there are none for it.
struct StageAdder
{
    bool operator()(GamutMatrix const& matrix) const { return addMatrix(coefficients(matrix), {}); }

    bool operator()(SrgbCurve const& curve) const { return addCurve(srgbCurve(curve.direction == Direction::Inverse)); }

    bool operator()(Table1D const& table) const
    {
        return addCurve(ToneCurve(cmsBuildTabulatedToneCurveFloat(nullptr, table.rows, column(table.rows).data())));
    }

    // The library chooses the interpolation of a grid: for three channels tetrahedra.
    bool operator()(Table3D const& table) const
    {
        return table.interpolation == Interpolation::Tetrahedral &&
               add(cmsStageAllocCLutFloat(nullptr, table.points, 3, 3, grid(table.points).data()));
    }

    bool operator()(Cdl const& cdl) const
    {
        auto const& [slopeR, slopeG, slopeB] = cdl.slope;
        std::array<double, 9> saturation;
        for (std::size_t i = 0; i < 9; ++i)
            saturation[i] = (1.0 - cdl.saturation) * kLuma[i % 3] + (i % 4 == 0 ? cdl.saturation : 0.0);
        return addMatrix({slopeR, 0, 0, 0, slopeG, 0, 0, 0, slopeB}, cdl.offset) &&
               addCurves(clampedPower(cdl.power[0]), clampedPower(cdl.power[1]), clampedPower(cdl.power[2])) &&
               addMatrix(saturation, {}) && addCurve(clampedPower(1.0));
    }

    bool operator()(FilmLog const& log) const { return addCurve(filmCurve(log.direction)); }

    bool operator()(Exposure const& exposure) const
    {
        double const gain = std::exp2(exposure.stops);
        return addMatrix({gain, 0, 0, 0, gain, 0, 0, 0, gain}, {});
    }

    bool operator()(Dither const&) const { return false; }

    bool add(cmsStage* stage) const { return stage != nullptr && cmsPipelineInsertStage(pipeline, cmsAT_END, stage) != 0; }

    bool addMatrix(std::array<double, 9> const& values, std::array<double, 3> const& offsets) const
    {
        return add(cmsStageAllocMatrix(nullptr, 3, 3, values.data(), offsets.data()));
    }

    bool addCurves(ToneCurve const& red, ToneCurve const& green, ToneCurve const& blue) const
    {
        cmsToneCurve* const curves[] = {red.get(), green.get(), blue.get()};
        return red != nullptr && add(cmsStageAllocToneCurves(nullptr, 3, curves));
    }

    bool addCurve(ToneCurve const& curve) const { return addCurves(curve, curve, curve); }

    cmsPipeline* pipeline;
};

// The tag is that of pipelines of floats.
Profile deviceLink(Work const& work)
{
    Pipeline const pipeline(cmsPipelineAlloc(nullptr, 3, 3));
    for (Operator const& op : work.operators)
    {
        if (!std::visit(StageAdder{pipeline.get()}, op))
            return nullptr;
    }
    Profile const profile = owned(cmsCreateProfilePlaceholder(nullptr));
    cmsSetProfileVersion(profile.get(), 4.3);
    cmsSetDeviceClass(profile.get(), cmsSigLinkClass);
    cmsSetColorSpace(profile.get(), cmsSigRgbData);
    cmsSetPCS(profile.get(), cmsSigRgbData);
    cmsWriteTag(profile.get(), cmsSigDToB0Tag, pipeline.get());
    return profile;
}

// ---------------------------------------------------------------- profiles of spaces

Profile profileOf(Space const& space)
{
    auto const xyY = [](Chromaticity const& c) { return cmsCIExyY{c.x, c.y, 1.0}; };
    auto const [red, green, blue] = primaries(space.gamut);
    cmsCIExyY const white = xyY(kD65);
    cmsCIExyYTRIPLE const rgb = {xyY(red), xyY(green), xyY(blue)};
    ToneCurve const curve = space.linear ? ToneCurve(cmsBuildGamma(nullptr, 1.0)) : srgbCurve(false);
    cmsToneCurve* const curves[] = {curve.get(), curve.get(), curve.get()};
    return owned(cmsCreateRGBProfile(&white, &rgb, curves));
}

// The library has a way of its own for matrices between bytes, which it takes for profiles of spaces.
cmsHTRANSFORM transformOf(Work const& work, cmsUInt32Number in, cmsUInt32Number out)
{
    constexpr cmsUInt32Number kFlags = cmsFLAGS_NOCACHE | cmsFLAGS_COPY_ALPHA;
    std::optional<Conversion> const conversion = conversionOf(work);
    if (conversion && T_BYTES(in) == 1 && T_BYTES(out) == 1)
        return cmsCreateTransform(profileOf(conversion->from).get(), in, profileOf(conversion->to).get(), out,
                                  INTENT_RELATIVE_COLORIMETRIC, kFlags);
    Profile const link = deviceLink(work);
    return link == nullptr ? nullptr : cmsCreateTransform(link.get(), in, nullptr, out, INTENT_PERCEPTUAL, kFlags);
}

} // namespace

std::string littleCmsVersion()
{
    return "Little CMS " + std::to_string(cmsGetEncodedCMMversion() / 1000) + "." +
           std::to_string(cmsGetEncodedCMMversion() % 1000 / 10);
}

std::optional<Runnable> littleCms(Task const& task)
{
    std::optional<cmsUInt32Number> const in = formatOf(task.in);
    std::optional<cmsUInt32Number> const out = formatOf(task.out);
    cmsHTRANSFORM const created = in && out ? transformOf(task.work, *in, *out) : nullptr;
    if (created == nullptr)
        return std::nullopt;
    std::shared_ptr<void> const transform(created, cmsDeleteTransform);
    unsigned char const* const source = picture(task.in, Arrangement::Interleaved);
    return Runnable{Arrangement::Interleaved, [=] { cmsDoTransform(transform.get(), source, destinationFrame(), kPixels); }};
}

} // namespace Bench
