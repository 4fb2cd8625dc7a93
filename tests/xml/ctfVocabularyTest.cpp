// The names of the format, which files out there depend on.
#include "xml/ctfVocabulary.h"

#include <gtest/gtest.h>

#include <string>

using namespace Color::Xml;

// Every tag and attribute as the format spells it.
TEST(Vocabulary, SpellsTagsAndAttributesAsTheFormatDoes)
{
    struct Case
    {
        std::string constant;
        char const* spelling;
    };
    Case const cases[] = {
        {TAG_PROCESS_LIST, "ProcessList"},
        {TAG_LUT1D, "LUT1D"},
        {TAG_INVLUT1D, "InverseLUT1D"},
        {TAG_LUT3D, "LUT3D"},
        {TAG_MATRIX, "Matrix"},
        {TAG_REFERENCE, "Reference"},
        {TAG_RANGE, "Range"},
        {TAG_GAMMA, "Gamma"},
        {TAG_EXPOSURE_CONTRAST, "ExposureContrast"},
        {TAG_LOG, "Log"},
        {TAG_CDL, "ASC_CDL"},
        {TAG_DITHER, "Dither"},
        {TAG_GAMUT_MAP, "GamutMap"},
        {TAG_HUE_VECTOR, "HueVector"},
        {TAG_ARRAY, "Array"},
        {TAG_INDEX_MAP, "IndexMap"},
        {TAG_DESCRIPTION, "Description"},
        {TAG_INFO, "Info"},
        {TAG_INPUT_DESCRIPTOR, "InputDescriptor"},
        {TAG_OUTPUT_DESCRIPTOR, "OutputDescriptor"},
        {TAG_GAMMA_PARAMS, "GammaParams"},
        {TAG_EC_PARAMS, "ECParams"},
        {TAG_DYNAMIC_PARAMETER, "DynamicParameter"},
        {TAG_LOG_PARAMS, "LogParams"},
        {TAG_HUE_VECTOR_PARAMS, "HueVecParams"},
        {TAG_SOPNODE, "SOPNode"},
        {TAG_SLOPE, "Slope"},
        {TAG_OFFSET, "Offset"},
        {TAG_POWER, "Power"},
        {TAG_SATNODE, "SatNode"},
        {TAG_SATURATION, "Saturation"},
        {TAG_MIN_IN_VALUE, "minInValue"},
        {TAG_MAX_IN_VALUE, "maxInValue"},
        {TAG_MIN_OUT_VALUE, "minOutValue"},
        {TAG_MAX_OUT_VALUE, "maxOutValue"},
        {TAG_EXPOSURE, "EXPOSURE"},
        {TAG_CONTRAST, "CONTRAST"},
        {TAG_LOOK, "LOOK_SWITCH"},
        {ATTR_ID, "id"},
        {ATTR_NAME, "name"},
        {ATTR_INVERSE_OF, "inverseOf"},
        {ATTR_VERSION, "version"},
        {ATTR_XML_NAMESPACE, "xmlns"},
        {ATTR_IN_BIT_DEPTH, "inBitDepth"},
        {ATTR_OUT_BIT_DEPTH, "outBitDepth"},
        {ATTR_BYPASS, "bypass"},
        {ATTR_INTERPOLATION, "interpolation"},
        {ATTR_HALF_DOMAIN, "halfDomain"},
        {ATTR_RAW_HALFS, "rawHalfs"},
        {ATTR_HUE_ADJUST, "hueAdjust"},
        {ATTR_ALIAS, "alias"},
        {ATTR_PATH, "path"},
        {ATTR_BASE_PATH, "basePath"},
        {ATTR_DIMENSION, "dim"},
        {ATTR_GAMMA_STYLE, "style"},
        {ATTR_LOG_STYLE, "style"},
        {ATTR_EC_STYLE, "style"},
        {ATTR_CDL_STYLE, "style"},
        {ATTR_GAMUT_MAP_STYLE, "style"},
        {ATTR_HUE_VECTOR_STYLE, "style"},
        {ATTR_HUE_VECTOR_PARAM_STYLE, "style"},
        {ATTR_CHAN, "channel"},
        {ATTR_GAMMA, "gamma"},
        {ATTR_OFFSET, "offset"},
        {ATTR_EXPOSURE, "exposure"},
        {ATTR_CONTRAST, "contrast"},
        {ATTR_PIVOT, "pivot"},
        {ATTR_PARAM, "param"},
        {ATTR_REFWHITE, "refWhite"},
        {ATTR_REFBLACK, "refBlack"},
        {ATTR_HIGHLIGHT, "highlight"},
        {ATTR_SHADOW, "shadow"},
        {ATTR_HUE_VECTOR_CENTER, "center"},
        {ATTR_HUE_VECTOR_WIDTH, "width"},
        {ATTR_HUE_VECTOR_AMOUNT, "amount"},
        {ATTR_DITHER_BIT_DEPTH, "ditherBitDepth"},
    };
    for (Case const& c : cases)
        EXPECT_EQ(c.constant, c.spelling);
}

TEST(Vocabulary, HasNamesForPeople)
{
    struct Case
    {
        std::string constant;
        char const* name;
    };
    Case const cases[] = {
        {FRIENDLY_ATTR_ID, "Identifier"},
        {FRIENDLY_ATTR_NAME, "Name"},
        {FRIENDLY_ATTR_INVERSE_OF, "Inverse Of"},
        {FRIENDLY_ATTR_VERSION, "Version"},
        {FRIENDLY_ATTR_IN_BIT_DEPTH, "Input Bit Depth"},
        {FRIENDLY_ATTR_OUT_BIT_DEPTH, "Output Bit Depth"},
        {FRIENDLY_ATTR_DITHER_BIT_DEPTH, "Dither Bit Depth"},
        {FRIENDLY_ATTR_BYPASS, "Bypass"},
        {FRIENDLY_ATTR_INTERPOLATION, "Interpolation"},
        {FRIENDLY_ATTR_HALF_DOMAIN, "Half Domain"},
        {FRIENDLY_ATTR_RAW_HALFS, "Raw Halfs"},
        {FRIENDLY_ATTR_HUE_ADJUST, "Hue Adjustment"},
        {FRIENDLY_ATTR_ALIAS, "Alias"},
        {FRIENDLY_ATTR_PATH, "Path"},
        {FRIENDLY_ATTR_RESOLVED_PATH, "Resolved Path"},
        {FRIENDLY_ATTR_BASE_PATH, "Base Path"},
        {FRIENDLY_ATTR_DIMENSION, "Array Dimension"},
        {FRIENDLY_ATTR_GAMMA_STYLE, "Gamma Style"},
        {FRIENDLY_ATTR_LOG_STYLE, "Log Style"},
        {FRIENDLY_ATTR_EC_STYLE, "E/C Style"},
        {FRIENDLY_ATTR_CDL_STYLE, "CDL Style"},
        {FRIENDLY_ATTR_GAMUT_MAP_STYLE, "Gamut Map Style"},
        {FRIENDLY_ATTR_HUE_VECTOR_STYLE, "Hue Vector Style"},
        {FRIENDLY_ATTR_HUE_VECTOR_PARAM_STYLE, "Parameter Style"},
        {FRIENDLY_ATTR_GAMMA, "Gamma"},
        {FRIENDLY_ATTR_EXPOSURE, "Exposure"},
        {FRIENDLY_ATTR_CONTRAST, "Contrast"},
        {FRIENDLY_ATTR_PIVOT, "Pivot"},
        {FRIENDLY_ATTR_REFWHITE, "RefWhite"},
        {FRIENDLY_ATTR_REFBLACK, "RefBlack"},
        {FRIENDLY_ATTR_HIGHLIGHT, "Highlight"},
        {FRIENDLY_ATTR_SHADOW, "Shadow"},
        {FRIENDLY_ATTR_HUE_VECTOR_CENTER, "Center"},
        {FRIENDLY_ATTR_HUE_VECTOR_WIDTH, "Width"},
        {FRIENDLY_ATTR_HUE_VECTOR_AMOUNT, "Amount"},
        {FRIENDLY_TAG_DESCRIPTION, "Description"},
        {FRIENDLY_TAG_INPUT_DESCRIPTOR, "Input Descriptor"},
        {FRIENDLY_TAG_OUTPUT_DESCRIPTOR, "Output Descriptor"},
        {FRIENDLY_TAG_GAMMA_PARAMS, "Gamma Parameters"},
        {FRIENDLY_TAG_LOG_PARAMS, "Log Parameters"},
        {FRIENDLY_TAG_EC_PARAMS, "E/C Parameters"},
        {FRIENDLY_TAG_EXPOSURE_CONTRAST, "Exposure/Contrast"},
        {FRIENDLY_TAG_DYNAMIC_PARAMETER, "Dynamic Parameter"},
        {FRIENDLY_TAG_GAMUT_MAP, "Gamut Map"},
        {FRIENDLY_TAG_HUE_VECTOR, "Hue Vector"},
        {FRIENDLY_TAG_MIN_IN_VALUE, "Min Input Value"},
        {FRIENDLY_TAG_MAX_IN_VALUE, "Max Input Value"},
        {FRIENDLY_TAG_MIN_OUT_VALUE, "Min Output Value"},
        {FRIENDLY_TAG_MAX_OUT_VALUE, "Max Output Value"},
    };
    for (Case const& c : cases)
        EXPECT_EQ(c.constant, c.name);
}
