// Operators of every kind and style, with the parameters that tests/data/shaders/expected.py has too.
#include "shaderSamples.h"

#include "transform/ops.h"
#include "transform/testOps.h"

#include <utility>

using namespace Color;
using namespace Tavrin;

namespace
{

template <class AnyOp>
using Change = std::function<void(AnyOp& op)>;

template <class AnyOp>
ShaderSample sampleOf(std::string name, AnyOp const& op)
{
    return {std::move(name), [op](OpList& ops) { ops.append(op.clone()); }};
}

using Matrix = std::vector<float>;

Matrix const kUnit = {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1};
Matrix const kDiagonal = {0.5F, 0, 0, 0, 0, 1.25F, 0, 0, 0, 0, 2, 0, 0, 0, 0, 2};
Matrix const kMixing = {0.9F, 0.1F, 0, 0, 0.05F, 0.8F, 0.15F, 0, 0, -0.25F, 1.25F, 0, 0, 0, 0, 1};
std::vector<float> const kNoOffsets = {0, 0, 0, 0};
std::vector<float> const kCodeOffsets = {16, -32, 0, 64};

MatrixOp matrix(Matrix const& values, std::vector<float> const& offsets = kNoOffsets, BitDepth in = BIT_DEPTH_32f,
                BitDepth out = BIT_DEPTH_32f)
{
    MatrixOp op(in, out, "", "", {});
    op.setRGBAValues(values.data());
    op.getOffsets().setRGBAValues(offsets.data());
    return op;
}

RangeOp range(BitDepth in, BitDepth out, double minIn, double maxIn, double minOut, double maxOut)
{
    return RangeOp(in, out, minIn, maxIn, minOut, maxOut);
}

GammaOp gamma(GammaOp::GammaStyle style)
{
    bool const isBasic = style == GammaOp::GammaStyle::BasicFwd || style == GammaOp::GammaStyle::BasicRev;
    GammaOp op;
    op.setGammaStyle(style);
    op.setRedParams(isBasic ? GammaOp::Params{2.2} : GammaOp::Params{2.4, 0.055});
    op.setGreenParams(isBasic ? GammaOp::Params{2.4} : GammaOp::Params{2.2, 0.099});
    op.setBlueParams(isBasic ? GammaOp::Params{2.6} : GammaOp::Params{1.0, 0.0});
    op.setAlphaParams(isBasic ? GammaOp::Params{1.0} : GammaOp::Params{1.0, 0.0});
    return op;
}

LogOp logarithm(LogOp::LogStyle style)
{
    return LogOp(BIT_DEPTH_32f, BIT_DEPTH_32f, style, {0.6, 685, 95, 1, 0}, {0.55, 680, 90, 0.9, 0.01},
                 {0.65, 690, 100, 1.1, -0.01});
}

CDLOp cdl(CDLOp::CDLStyle style)
{
    return CDLOp(BIT_DEPTH_32f, BIT_DEPTH_32f, "", "", {}, style, {1.25, 1, 0.8}, {0.05, 0, -0.05}, {1.5, 1, 0.75}, 0.8);
}

ExposureContrastOp exposureContrast(ExposureContrastOp::Style style, double pivot = 0.18)
{
    ExposureContrastOp op(BIT_DEPTH_32f, BIT_DEPTH_32f, style);
    op.setPivot(pivot);
    op.getExposure()->setValue(0.5);
    op.getContrast()->setValue(1.25);
    return op;
}

HueVectorOp hueVector(HueVectorOp::HueVectorStyle style, HueVectorOp::Params const& params)
{
    return HueVectorOp(BIT_DEPTH_32f, BIT_DEPTH_32f, style, HueVectorOp::HueVectorParamStyle::Chroma, params);
}

HueVectorOp hueVectorOfUnknownStyle()
{
    HueVectorOp op = hueVector(HueVectorOp::HueVectorStyle::YCH_Fwd, {120, 60, 1.5});
    op.setStyle(static_cast<HueVectorOp::HueVectorStyle>(2));
    return op;
}

// Each row holds the mean of its place and its square, so that the inverse is no steeper than 2.
Lut1DOp table(
    unsigned int rows, Change<Lut1DOp> const& change = [](Lut1DOp&) {})
{
    Lut1DOp op(rows);
    for (float& value : op.getArray().getValues())
        value = 0.5F * (value + value * value);
    change(op);
    return op;
}

// Halves its input.
Lut1DOp halfDomainTable()
{
    Lut1DOp op(BIT_DEPTH_32f, BIT_DEPTH_32f, "", "", {}, Lut1DOp::InterpolationAlgo::Linear, HALF_FLAGS_INPUT_HALF_DOMAIN);
    op.getArray().scale(0.5F);
    return op;
}

// No channel goes its own way, and none goes straight.
Lut3DOp cube(Lut3DOp::InterpolationAlgo interpolation)
{
    Lut3DOp op(BIT_DEPTH_32f, BIT_DEPTH_32f, "", "", {}, interpolation, 3);
    std::vector<float>& values = op.getArray().getValues();
    for (std::size_t i = 0; i < values.size(); i += 3)
    {
        float const red = values[i];
        float const green = values[i + 1];
        float const blue = values[i + 2];
        values[i] = red * (0.75F + 0.25F * green);
        values[i + 1] = green * green * (1.0F - 0.5F * blue);
        values[i + 2] = 0.5F * (blue + red * green);
    }
    return op;
}

template <class AnyOp>
AnyOp switchable(AnyOp op, std::string const& name)
{
    op.setName(name);
    op.setBypass(bypass(false, true));
    return op;
}

void appendChain(OpList& ops)
{
    ops.append(switchable(exposureContrast(ExposureContrastOp::Style::Linear), "grade").clone());
    ops.append(table(256).clone());
    ops.append(cube(Lut3DOp::InterpolationAlgo::Tetrahedral).clone());
    ops.append(matrix(kMixing).clone());
    ops.append(switchable(gamma(GammaOp::GammaStyle::BasicFwd), "display").clone());
    ops.append(DitherOp(BIT_DEPTH_32f, BIT_DEPTH_32f, BIT_DEPTH_8i).clone());
}

void appendChainOfTables(OpList& ops)
{
    ops.append(logarithm(LogOp::LogStyle::LogToLin).clone());
    ops.append(matrix(kMixing).clone());
    ops.append(logarithm(LogOp::LogStyle::LinToLog).clone());
    ops.append(table(4096).clone());
    ops.append(InvLut1DOp(table(256)).clone());
    ops.append(cdl(CDLOp::CDLStyle::V1_2Fwd).clone());
}

} // namespace

std::vector<ShaderSample> shaderSamples()
{
    using Gamma = GammaOp::GammaStyle;
    using Log = LogOp::LogStyle;
    using Cdl = CDLOp::CDLStyle;
    using Exposure = ExposureContrastOp::Style;
    using GamutMap = GamutMapOp::GamutMapStyle;
    using HueVector = HueVectorOp::HueVectorStyle;
    using Interpolation = Lut3DOp::InterpolationAlgo;
    double const none = RangeOp::emptyValue();
    return {
        {"empty", [](OpList&) {}},
        sampleOf("matrixIdentity", matrix(kUnit)),
        sampleOf("matrixDiagonal", matrix(kDiagonal)),
        sampleOf("matrixFull", matrix(kMixing)),
        sampleOf("matrixOffsets", matrix(kUnit, {0.1F, -0.2F, 0, 0.3F})),
        sampleOf("matrixBetweenDepths", matrix(kMixing, kCodeOffsets, BIT_DEPTH_8i, BIT_DEPTH_10i)),
        sampleOf("matrixAtOneDepth", matrix(kUnit, kCodeOffsets, BIT_DEPTH_10i, BIT_DEPTH_10i)),
        sampleOf("rangeWithoutLimits", range(BIT_DEPTH_32f, BIT_DEPTH_32f, none, none, none, none)),
        sampleOf("rangeBetweenDepths", range(BIT_DEPTH_10i, BIT_DEPTH_8i, 64, 940, 16, 235)),
        sampleOf("rangeScales", range(BIT_DEPTH_32f, BIT_DEPTH_32f, 0.125, 0.875, 0.25, 0.75)),
        sampleOf("rangeLowerLimit", range(BIT_DEPTH_32f, BIT_DEPTH_32f, 0.125, none, 0.125, none)),
        sampleOf("rangeUpperLimit", range(BIT_DEPTH_32f, BIT_DEPTH_32f, none, 0.875, none, 0.875)),
        sampleOf("gammaBasicFwd", gamma(Gamma::BasicFwd)),
        sampleOf("gammaBasicRev", gamma(Gamma::BasicRev)),
        sampleOf("gammaMoncurveFwd", gamma(Gamma::MoncurveFwd)),
        sampleOf("gammaMoncurveRev", gamma(Gamma::MoncurveRev)),
        sampleOf("logLog10", logarithm(Log::Log10)),
        sampleOf("logLog2", logarithm(Log::Log2)),
        sampleOf("logAntiLog10", logarithm(Log::AntiLog10)),
        sampleOf("logAntiLog2", logarithm(Log::AntiLog2)),
        sampleOf("logLogToLin", logarithm(Log::LogToLin)),
        sampleOf("logLinToLog", logarithm(Log::LinToLog)),
        sampleOf("cdlV1_2Fwd", cdl(Cdl::V1_2Fwd)),
        sampleOf("cdlV1_2Rev", cdl(Cdl::V1_2Rev)),
        sampleOf("cdlNoClampFwd", cdl(Cdl::NoClampFwd)),
        sampleOf("cdlNoClampRev", cdl(Cdl::NoClampRev)),
        sampleOf("exposureContrastVideo", exposureContrast(Exposure::Video)),
        sampleOf("exposureContrastLog", exposureContrast(Exposure::Log)),
        sampleOf("exposureContrastLinear", exposureContrast(Exposure::Linear)),
        sampleOf("exposureContrastVideoLowPivot", exposureContrast(Exposure::Video, 0.0001)),
        sampleOf("exposureContrastLogLowPivot", exposureContrast(Exposure::Log, 0.0001)),
        sampleOf("exposureContrastLinearLowPivot", exposureContrast(Exposure::Linear, 0.0001)),
        sampleOf("gamutMapNone", GamutMapOp(BIT_DEPTH_32f, BIT_DEPTH_32f, GamutMap::None)),
        sampleOf("gamutMapDW3", GamutMapOp(BIT_DEPTH_32f, BIT_DEPTH_32f, GamutMap::DW3)),
        sampleOf("hueVectorFwd", hueVector(HueVector::YCH_Fwd, {120, 60, 1.5})),
        sampleOf("hueVectorRev", hueVector(HueVector::YCH_Rev, {240, 90, 1.25})),
        sampleOf("hueVectorUnknownStyle", hueVectorOfUnknownStyle()),
        sampleOf("lut1D", table(256)),
        sampleOf("lut1DOneColumn", table(256, [](Lut1DOp& op) { op.getArray().setNumColorComponents(1); })),
        sampleOf("lut1DFewRows", table(255)),
        sampleOf("lut1DFolded", table(4096)),
        sampleOf("lut1DHalfDomain", halfDomainTable()),
        sampleOf("lut1DHueAdjust", table(256, [](Lut1DOp& op) { op.setHueAdjust(Lut1DOp::HueAdjust::Dw3); })),
        sampleOf("invLut1D", InvLut1DOp(table(256))),
        sampleOf("lut3DTrilinear", cube(Interpolation::Trilinear)),
        sampleOf("lut3DTetrahedral", cube(Interpolation::Tetrahedral)),
        sampleOf("dither", DitherOp(BIT_DEPTH_32f, BIT_DEPTH_32f, BIT_DEPTH_8i)),
        sampleOf("ditherIdentity", DitherOp(BIT_DEPTH_8i, BIT_DEPTH_8i, BIT_DEPTH_8i)),
        {"twoGammas",
         [](OpList& ops)
         {
             ops.append(gamma(Gamma::BasicFwd).clone());
             ops.append(gamma(Gamma::BasicRev).clone());
         }},
        {"chain", appendChain},
        {"chainOfTables", appendChainOfTables},
    };
}
