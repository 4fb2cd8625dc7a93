// Gamma, logarithms, colour decisions, exposure and contrast.
#include "cases.h"

namespace Bench
{

namespace
{

using Tavrin::PixelFormat;

constexpr PixelFormat kFormats[] = {Tavrin::PF_RGBA_16i, Tavrin::PF_RGBA_16f, Tavrin::PF_RGBA_32f};

struct Case
{
    char const* name;
    char const* tag;
    char const* style;
    char const* content;
};

constexpr char kGamma[] = R"(<GammaParams gamma="2.2"/>)";
constexpr char kMoncurve[] = R"(<GammaParams gamma="2.4" offset="0.055"/>)";
constexpr char kFilm[] = R"(<LogParams gamma="0.6" refWhite="685" refBlack="95" highlight="1" shadow="0"/>)";
constexpr char kDecision[] =
    "<SOPNode><Slope>1.1 1.2 0.9</Slope><Offset>0.01 -0.02 0.03</Offset><Power>1.1 0.9 1.2</Power></SOPNode>"
    "<SatNode><Saturation>1.2</Saturation></SatNode>";
constexpr char kExposure[] = R"(<ECParams exposure="0.5" contrast="1.2" pivot="0.18"/>)";

constexpr Case kCases[] = {
    {"gamma/basic", "Gamma", "basicFwd", kGamma},
    {"gamma/moncurve forward", "Gamma", "moncurveFwd", kMoncurve},
    {"gamma/moncurve reverse", "Gamma", "moncurveRev", kMoncurve},
    {"log/log10", "Log", "log10", ""},
    {"log/antilog10", "Log", "antiLog10", ""},
    {"log/linear to log", "Log", "linToLog", kFilm},
    {"log/log to linear", "Log", "logToLin", kFilm},
    {"cdl/1.2 forward", "ASC_CDL", "v1.2_Fwd", kDecision},
    {"cdl/1.2 reverse", "ASC_CDL", "v1.2_Rev", kDecision},
    {"cdl/no clamp forward", "ASC_CDL", "noClampFwd", kDecision},
    {"cdl/no clamp reverse", "ASC_CDL", "noClampRev", kDecision},
    {"exposure contrast/video", "ExposureContrast", "video", kExposure},
    {"exposure contrast/log", "ExposureContrast", "log", kExposure},
    {"exposure contrast/linear", "ExposureContrast", "linear", kExposure},
};

Tavrin::TransformPtr transformOf(Case const& c)
{
    std::string element = "<";
    element.append(c.tag).append(R"( inBitDepth="32f" outBitDepth="32f" style=")").append(c.style).append("\">");
    element.append(c.content).append("</").append(c.tag).append(">");
    return fromElements(element);
}

} // namespace

void addGrades()
{
    for (Case const& c : kCases)
    {
        for (PixelFormat const format : kFormats)
            addRender(c.name, transformOf(c), format, format);
    }
}

} // namespace Bench
