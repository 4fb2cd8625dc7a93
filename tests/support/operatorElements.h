// An element of a transform file for every operator in each of its styles, between any two depths.
#ifndef TAVRIN_TESTS_SUPPORT_OPERATOR_ELEMENTS_H
#define TAVRIN_TESTS_SUPPORT_OPERATOR_ELEMENTS_H

#include <string>
#include <vector>

namespace OperatorElements
{

inline constexpr char const* kDepths[] = {"8i", "10i", "12i", "16i", "16f", "32f"};

// Between two depths, with attributes and content of its own.
inline std::string element(std::string const& tag, std::string const& in, std::string const& out, std::string const& attributes,
                           std::string const& content)
{
    return "<" + tag + " inBitDepth='" + in + "' outBitDepth='" + out + "' " + attributes + ">" + content + "</" + tag + ">\n";
}

inline std::string array(std::string const& dimensions, std::string const& values)
{
    return "<Array dim='" + dimensions + "'>\n" + values + "\n</Array>";
}

// Numbers have few enough digits to be written as they are.
struct Element
{
    std::string tag;
    std::string attributes;
    std::string content;
};

// Elements that files of all versions may hold.
inline std::vector<Element> elementsOfAllVersions()
{
    return {
        {"Matrix", "", array("3 3 3", "0.5 0.25 0\n-0.125 1 0\n0 0 2")},
        {"LUT1D", "", array("3 1", "0\n0.25\n1")},
        {"LUT1D", "id='curve' interpolation='linear'", array("3 3", "0 0 1\n0.25 0.5 0.5\n1 1 0")},
        {"LUT1D", "interpolation='cubic' rawHalfs='true'", array("2 3", "0 15360 14336\n15360 0 16384")},
        {"LUT3D", "", array("2 2 2 3", "0 0 0 0 0 1 0 1 0 0 1 1 1 0 0 1 0 1 1 1 0 0.5 0.75 1")},
        {"LUT3D", "interpolation='trilinear'", array("2 2 2 3", "0 0 0 0 0 1 0 1 0 0 1 1 1 0 0 1 0 1 1 1 0 0.5 0.75 1")},
        {"LUT3D", "interpolation='tetrahedral'", array("2 2 2 3", "0 0 0 0 0 1 0 1 0 0 1 1 1 0 0 1 0 1 1 1 0 0.5 0.75 1")},
        {"Range", "", ""},
        {"Range", "", "<minInValue>0.25</minInValue><minOutValue>0.125</minOutValue>"},
        {"Range", "",
         "<minInValue>0.25</minInValue><maxInValue>0.75</maxInValue><minOutValue>0</minOutValue><maxOutValue>1</maxOutValue>"},
        {"Gamma", "style='basicFwd'", "<GammaParams gamma='2.4'/>"},
        {"Gamma", "style='basicRev' name='Curve'",
         "<GammaParams channel='R' gamma='2.4'/><GammaParams channel='G' gamma='2.2'/><GammaParams channel='B' gamma='1.8'/>"},
        {"Gamma", "style='moncurveFwd'", "<GammaParams gamma='2.4' offset='0.055'/>"},
        {"Gamma", "style='moncurveRev'", "<GammaParams gamma='2.2' offset='0.1'/>"},
        {"ExposureContrast", "style='video'", "<ECParams exposure='-0.5' contrast='1.25' pivot='0.18'/>"},
        {"ExposureContrast", "style='log'",
         "<Description>moves</Description><ECParams exposure='0.5' contrast='0.75' pivot='0.18'/>"
         "<DynamicParameter param='EXPOSURE'/><DynamicParameter param='CONTRAST'/>"},
        {"ExposureContrast", "style='linear'", "<ECParams exposure='1.5' contrast='1' pivot='1'/>"},
    };
}

// Also those that came later, as far as 1.5.
inline std::vector<Element> allElements()
{
    std::vector<Element> elements = elementsOfAllVersions();
    std::string const film = " refWhite='685' refBlack='95' highlight='1' shadow='0.001'/>";
    std::string const grade = "<SOPNode><Slope>1.1 1 0.9</Slope><Offset>-0.05 0 0.025</Offset><Power>1 1.2 0.95</Power></SOPNode>"
                              "<SatNode><Saturation>0.85</Saturation></SatNode>";
    std::vector<Element> const later = {
        {"Matrix", "", array("3 4 3", "0.5 0.25 0 0.125\n-0.125 1 0 0\n0 0 2 -1")},
        {"Matrix", "", array("4 4 4", "0.5 0.25 0 0.25\n0 1 0 0\n0 0 2 0\n0.5 0 0 0.5")},
        {"Matrix", "", array("4 5 4", "0.5 0.25 0 0 0.125\n0 1 0 0 0\n0 0 2 0 0\n0 0 0 1 -0.25")},
        {"LUT1D", "hueAdjust='dw3'", array("3 3", "0 0 0\n0.25 0.5 0.125\n1 1 1")},
        {"InverseLUT1D", "", array("3 1", "0\n0.25\n1")},
        {"InverseLUT1D", "interpolation='linear'", array("3 3", "0 0 1\n0.25 0.5 0.5\n1 1 0")},
        {"Gamma", "style='moncurveFwd'",
         "<GammaParams channel='R' gamma='2.4' offset='0.055'/><GammaParams channel='G' gamma='2.4' offset='0.055'/>"
         "<GammaParams channel='B' gamma='2.4' offset='0.055'/><GammaParams channel='A' gamma='2' offset='0.1'/>"},
        {"Log", "style='log10'", ""},
        {"Log", "style='log2'", ""},
        {"Log", "style='antiLog10'", ""},
        {"Log", "style='antiLog2'", ""},
        {"Log", "style='logToLin'", "<LogParams gamma='0.6'" + film},
        {"Log", "style='linToLog'",
         "<LogParams channel='R' gamma='0.6'" + film + "<LogParams channel='G' gamma='0.55'" + film +
             "<LogParams channel='B' gamma='0.5'" + film},
        {"ASC_CDL", "style='v1.2_Fwd'", grade},
        {"ASC_CDL", "style='v1.2_Rev'", grade},
        {"ASC_CDL", "style='noClampFwd'", grade},
        {"ASC_CDL", "style='noClampRev' bypass='true'", "<DynamicParameter param='LOOK_SWITCH'/>" + grade},
        {"Dither", "ditherBitDepth='8i'", ""},
        {"GamutMap", "style='none'", ""},
        {"GamutMap", "style='dw3'", ""},
        {"HueVector", "style='YCH_Fwd'", "<HueVecParams style='chroma' center='120' width='60' amount='1.25'/>"},
        {"HueVector", "style='YCH_Rev'", "<HueVecParams style='chroma' center='300.5' width='90' amount='0.5'/>"},
    };
    elements.insert(elements.end(), later.begin(), later.end());
    return elements;
}

inline std::string document(std::string const& version, std::string const& content)
{
    return "<ProcessList id='a' version='" + version + "'>\n" + content + "</ProcessList>\n";
}

struct Sample
{
    std::string description; // what tells it from others, for messages
    std::string document;
};

// A document for each element.
inline std::vector<Sample> samplesOf(std::vector<Element> const& elements, std::string const& version, std::string const& in,
                                     std::string const& out)
{
    std::vector<Sample> samples;
    for (Element const& e : elements)
        samples.push_back({version + " " + e.tag + " " + e.attributes + " " + in + " to " + out,
                           document(version, element(e.tag, in, out, e.attributes, e.content))});
    return samples;
}

// Every element at every pair of depths, and between floats in old versions.
inline std::vector<Sample> allSamples()
{
    std::vector<Sample> samples;
    auto const add = [&](std::vector<Sample> const& more) { samples.insert(samples.end(), more.begin(), more.end()); };
    for (char const* const in : kDepths)
    {
        for (char const* const out : kDepths)
            add(samplesOf(allElements(), "1.5", in, out));
    }
    for (char const* const version : {"1.0", "1.2", "1.3", "1.4"})
        add(samplesOf(elementsOfAllVersions(), version, "32f", "32f"));
    add(samplesOf({{"Matrix", "", array("4 4 3", "0.5 0.25 0 0.125\n-0.125 1 0 0\n0 0 2 -1\n0 0 0 1")}}, "1.2", "32f", "32f"));
    return samples;
}

} // namespace OperatorElements

#endif
