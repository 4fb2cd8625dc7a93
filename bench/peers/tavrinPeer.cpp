// Tavrin as its users call it: a document of the operators, finalized with the usual simplification.
#include "peers/peers.h"
#include "shared/tables.h"

#include <fmt/format.h>

namespace Bench
{

namespace
{

constexpr char const* kDepths = R"(inBitDepth="32f" outBitDepth="32f")";

struct ElementWriter
{
    std::string operator()(GamutMatrix const& matrix) const
    {
        return fmt::format("<Matrix {}><Array dim=\"3 3 3\">{:.9g}</Array></Matrix>\n", kDepths,
                           fmt::join(coefficients(matrix), " "));
    }

    std::string operator()(SrgbCurve const& curve) const
    {
        char const* const style = curve.direction == Direction::Forward ? "moncurveFwd" : "moncurveRev";
        return fmt::format("<Gamma {} style=\"{}\"><GammaParams gamma=\"{}\" offset=\"{}\"/></Gamma>\n", kDepths, style, kSrgbGamma,
                           kSrgbOffset);
    }

    std::string operator()(Table1D const& table) const { return table1DElement("LUT1D", table.rows); }

    std::string operator()(Table3D const& table) const
    {
        return table3DElement(table.points, table.interpolation == Interpolation::Tetrahedral ? "tetrahedral" : "trilinear");
    }

    std::string operator()(Cdl const& cdl) const
    {
        return fmt::format("<ASC_CDL {} style=\"v1.2_Fwd\">"
                           "<SOPNode><Slope>{}</Slope><Offset>{}</Offset><Power>{}</Power></SOPNode>"
                           "<SatNode><Saturation>{}</Saturation></SatNode></ASC_CDL>\n",
                           kDepths, fmt::join(cdl.slope, " "), fmt::join(cdl.offset, " "), fmt::join(cdl.power, " "),
                           cdl.saturation);
    }

    std::string operator()(FilmLog const& log) const
    {
        return fmt::format("<Log {} style=\"{}\"><LogParams gamma=\"{}\" refWhite=\"{}\" refBlack=\"{}\" highlight=\"1\" "
                           "shadow=\"0\"/></Log>\n",
                           kDepths, log.direction == Direction::Forward ? "logToLin" : "linToLog", kFilmGamma, kFilmWhite,
                           kFilmBlack);
    }

    std::string operator()(Exposure const& exposure) const
    {
        return fmt::format("<ExposureContrast {} style=\"linear\"><ECParams exposure=\"{}\" contrast=\"1\" pivot=\"0.18\"/>"
                           "</ExposureContrast>\n",
                           kDepths, exposure.stops);
    }

    std::string operator()(Dither const&) const { return fmt::format("<Dither {} ditherBitDepth=\"8i\"/>\n", kDepths); }
};

// A document has at least one operator.
std::string elementsOf(Work const& work)
{
    std::string elements;
    for (Operator const& op : work.operators)
        elements += std::visit(ElementWriter(), op);
    return elements.empty() ? fmt::format("<Matrix {}><Array dim=\"3 3 3\">1 0 0 0 1 0 0 0 1</Array></Matrix>\n", kDepths)
                            : elements;
}

} // namespace

std::optional<Runnable> tavrin(Task const& task)
{
    Tavrin::TransformPtr const transform = fromElements(elementsOf(task.work));
    check(transform->finalize(task.in, task.out, Tavrin::RENDERER_CPU, Tavrin::OPTIMIZER_DEFAULT_THRESHOLD,
                              Tavrin::RESOLVE_GRAPHICS_MONITOR));
    unsigned char const* const source = picture(task.in, Arrangement::Interleaved);
    return Runnable{Arrangement::Interleaved,
                    [=] { check(transform->applyCPU(source, Tavrin::ROI(0, 0, kWidth, kHeight), destinationFrame())); }};
}

} // namespace Bench
