// Operators with the parameters that they have in practice.
#include "samples.h"

#include "xml/xmlTransformReader.h"

#include <cmath>
#include <cstdio>
#include <cstdlib>

namespace Bench
{

namespace
{

using Tavrin::PF_RGBA_16f;
using Tavrin::PF_RGBA_16i;
using Tavrin::PF_RGBA_32f;
using Tavrin::PF_RGBA_8i;

constexpr unsigned int kRows = 1024;

std::string array(std::string const& dimensions, std::string const& numbers)
{
    return "<Array dim='" + dimensions + "'>\n" + numbers + "</Array>";
}

std::string number(double value)
{
    char text[32];
    std::snprintf(text, sizeof text, "%.7g ", value);
    return text;
}

// From 0 to 1, as display curves run; columns of their own for three channels, so that no table serves two.
std::string curves(unsigned int rows)
{
    std::string text;
    for (unsigned int i = 0; i < rows; ++i)
    {
        for (double const gain : {1.0, 0.95, 0.9})
            text += number(gain * std::pow(i / (rows - 1.0), 1 / 2.2));
        text += "\n";
    }
    return array(std::to_string(rows) + " 3", text);
}

// A row for each half, which is what a fast inverse is sampled into.
std::string halfDomainElement(std::string const& attributes = "")
{
    return element("LUT1D", "halfDomain='true' " + attributes, curves(65536));
}

std::string rangeElement(std::string const& content)
{
    return element("Range", "", content);
}

std::string limits(double minIn, double maxIn, double minOut, double maxOut)
{
    return "<minInValue>" + number(minIn) + "</minInValue><maxInValue>" + number(maxIn) + "</maxInValue><minOutValue>" +
           number(minOut) + "</minOutValue><maxOutValue>" + number(maxOut) + "</maxOutValue>";
}

std::string gammaElement(std::string const& style)
{
    bool const isBasic = style == "basicFwd";
    return element("Gamma", "style='" + style + "'",
                   isBasic ? "<GammaParams gamma='2.2'/>" : "<GammaParams gamma='2.4' offset='0.055'/>");
}

std::string exposureAndContrastElement(double contrast)
{
    return element("ExposureContrast", "style='linear'",
                   "<ECParams exposure='0.5' contrast='" + number(contrast) + "' pivot='0.18'/>");
}

std::string decisionElement(std::string const& style)
{
    return element("ASC_CDL", "style='" + style + "'",
                   "<SOPNode><Slope>1.1 1.2 0.9</Slope><Offset>0.01 -0.02 0.03</Offset><Power>1.1 0.9 1.2</Power></SOPNode>"
                   "<SatNode><Saturation>1.2</Saturation></SatNode>");
}

std::string filmElement(std::string const& style)
{
    return element("Log", "style='" + style + "'",
                   "<LogParams gamma='0.6' refWhite='685' refBlack='95' highlight='1' shadow='0'/>");
}

std::string hueElement(std::string const& style)
{
    return element("HueVector", "style='" + style + "'", "<HueVecParams style='chroma' center='30' width='90' amount='1.5'/>");
}

} // namespace

std::string element(std::string const& tag, std::string const& attributes, std::string const& content)
{
    return "<" + tag + " inBitDepth='32f' outBitDepth='32f' " + attributes + ">" + content + "</" + tag + ">\n";
}

Rendering::Pipeline pipelineOf(std::string const& elements, Tavrin::PixelFormat in, Tavrin::PixelFormat out)
{
    Color::XMLTransformReader reader;
    reader.parseBuffer("<ProcessList id='sample' version='1.5'>\n" + elements + "</ProcessList>\n");
    Rendering::Pipeline pipeline = Rendering::makePipeline(reader.getTransform(), in, out);
    if (pipeline.convertsDepthOnly())
    {
        std::fprintf(stderr, "No renderer for %s\n", elements.c_str());
        std::exit(1);
    }
    return pipeline;
}

std::string matrixElement()
{
    return element("Matrix", "", array("3 3 3", "0.8 0.1 0.1\n0.15 0.7 0.15\n0.1 0.2 0.7\n"));
}

std::string curveElement(std::string const& attributes)
{
    return element("LUT1D", attributes, curves(kRows));
}

std::string logToLinElement()
{
    return filmElement("logToLin");
}

std::string gridElement(unsigned int points, std::string const& interpolation)
{
    std::string text;
    for (unsigned int i = 0; i < points * points * points; ++i)
    {
        for (unsigned int const index : {i / points / points, i / points % points, i % points})
            text += number(std::pow(index / (points - 1.0), 1.2));
        text += "\n";
    }
    std::string const n = std::to_string(points) + " ";
    return element("LUT3D", "interpolation='" + interpolation + "'", array(n + n + n + "3", text));
}

std::string exposureElement()
{
    return exposureAndContrastElement(1);
}

std::vector<Sample> kernelSamples()
{
    std::vector<Sample> samples;
    for (std::string const& elements : {
             element("Matrix", "", array("3 3 3", "0.9 0 0\n0 0.8 0\n0 0 0.7\n")),
             element("Matrix", "", array("3 4 3", "0.9 0 0 0.1\n0 0.8 0 0.05\n0 0 0.7 0.02\n")),
             matrixElement(),
             element("Matrix", "", array("3 4 3", "0.8 0.1 0.1 0.01\n0.15 0.7 0.15 0\n0.1 0.2 0.7 0.02\n")),
             rangeElement(limits(0.05, 0.95, 0, 1)),
             rangeElement("<minInValue>0.05</minInValue><minOutValue>0.1</minOutValue>"),
             rangeElement("<maxInValue>0.95</maxInValue><maxOutValue>0.9</maxOutValue>"),
             rangeElement(limits(0.05, 0.95, 0.05, 0.95)),
             rangeElement("<minInValue>0.05</minInValue><minOutValue>0.05</minOutValue>"),
             rangeElement("<maxInValue>0.95</maxInValue><maxOutValue>0.95</maxOutValue>"),
             gammaElement("basicFwd"),
             gammaElement("moncurveFwd"),
             gammaElement("moncurveRev"),
             exposureAndContrastElement(1.2),
             exposureElement(),
             element("Log", "style='log10'"),
             element("Log", "style='antiLog10'"),
             filmElement("logToLin"),
             filmElement("linToLog"),
             decisionElement("v1.2_Fwd"),
             decisionElement("noClampFwd"),
             decisionElement("v1.2_Rev"),
             decisionElement("noClampRev"),
             element("GamutMap", "style='dw3'"),
             hueElement("YCH_Fwd"),
             hueElement("YCH_Rev"),
             curveElement(),
             curveElement("hueAdjust='dw3'"),
             halfDomainElement(),
             halfDomainElement("hueAdjust='dw3'"),
             element("InverseLUT1D", "", curves(kRows)),
             gridElement(33, "trilinear"),
             gridElement(33, "tetrahedral"),
         })
        samples.push_back({elements, PF_RGBA_32f, PF_RGBA_32f});
    samples.push_back({rangeElement(""), PF_RGBA_8i, PF_RGBA_16i});
    samples.push_back({element("Dither", "ditherBitDepth='8i'"), PF_RGBA_16i, PF_RGBA_8i});
    samples.push_back({curveElement(), PF_RGBA_8i, PF_RGBA_8i});
    samples.push_back({curveElement(), PF_RGBA_16i, PF_RGBA_16i});
    samples.push_back({curveElement(), PF_RGBA_16f, PF_RGBA_16f});
    samples.push_back({curveElement(), PF_RGBA_16i, PF_RGBA_32f});
    samples.push_back({curveElement("hueAdjust='dw3'"), PF_RGBA_16i, PF_RGBA_16i});
    samples.push_back({curveElement("hueAdjust='dw3'"), PF_RGBA_16f, PF_RGBA_16f});
    return samples;
}

} // namespace Bench
