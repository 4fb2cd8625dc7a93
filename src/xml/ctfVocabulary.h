// Every name that transform files (CTF) are made of: tags, attributes, and the names by which messages and displays cite them.
// Reading matches tags and attributes without regard to case; writing uses these spellings.
#ifndef TAVRIN_XML_CTF_VOCABULARY_H
#define TAVRIN_XML_CTF_VOCABULARY_H

namespace Color::Xml
{

// The root, and what describes a transform or an operator.
inline constexpr char TAG_PROCESS_LIST[] = "ProcessList";
inline constexpr char TAG_DESCRIPTION[] = "Description";
inline constexpr char FRIENDLY_TAG_DESCRIPTION[] = "Description";
inline constexpr char TAG_INFO[] = "Info";
inline constexpr char TAG_INPUT_DESCRIPTOR[] = "InputDescriptor";
inline constexpr char FRIENDLY_TAG_INPUT_DESCRIPTOR[] = "Input Descriptor";
inline constexpr char TAG_OUTPUT_DESCRIPTOR[] = "OutputDescriptor";
inline constexpr char FRIENDLY_TAG_OUTPUT_DESCRIPTOR[] = "Output Descriptor";

// Operators.
inline constexpr char TAG_LUT1D[] = "LUT1D";
inline constexpr char TAG_INVLUT1D[] = "InverseLUT1D";
inline constexpr char TAG_LUT3D[] = "LUT3D";
inline constexpr char TAG_MATRIX[] = "Matrix";
inline constexpr char TAG_REFERENCE[] = "Reference";
inline constexpr char TAG_RANGE[] = "Range";
inline constexpr char TAG_GAMMA[] = "Gamma";
inline constexpr char TAG_EXPOSURE_CONTRAST[] = "ExposureContrast";
inline constexpr char FRIENDLY_TAG_EXPOSURE_CONTRAST[] = "Exposure/Contrast";
inline constexpr char TAG_LOG[] = "Log";
inline constexpr char TAG_CDL[] = "ASC_CDL";
inline constexpr char TAG_DITHER[] = "Dither";
inline constexpr char TAG_GAMUT_MAP[] = "GamutMap";
inline constexpr char FRIENDLY_TAG_GAMUT_MAP[] = "Gamut Map";
inline constexpr char TAG_HUE_VECTOR[] = "HueVector";
inline constexpr char FRIENDLY_TAG_HUE_VECTOR[] = "Hue Vector";

// Children of operators. An index map is a reserved name that stops the reading.
inline constexpr char TAG_ARRAY[] = "Array";
inline constexpr char TAG_INDEX_MAP[] = "IndexMap";
inline constexpr char TAG_MIN_IN_VALUE[] = "minInValue";
inline constexpr char FRIENDLY_TAG_MIN_IN_VALUE[] = "Min Input Value";
inline constexpr char TAG_MAX_IN_VALUE[] = "maxInValue";
inline constexpr char FRIENDLY_TAG_MAX_IN_VALUE[] = "Max Input Value";
inline constexpr char TAG_MIN_OUT_VALUE[] = "minOutValue";
inline constexpr char FRIENDLY_TAG_MIN_OUT_VALUE[] = "Min Output Value";
inline constexpr char TAG_MAX_OUT_VALUE[] = "maxOutValue";
inline constexpr char FRIENDLY_TAG_MAX_OUT_VALUE[] = "Max Output Value";
inline constexpr char TAG_GAMMA_PARAMS[] = "GammaParams";
inline constexpr char FRIENDLY_TAG_GAMMA_PARAMS[] = "Gamma Parameters";
inline constexpr char TAG_LOG_PARAMS[] = "LogParams";
inline constexpr char FRIENDLY_TAG_LOG_PARAMS[] = "Log Parameters";
inline constexpr char TAG_EC_PARAMS[] = "ECParams";
inline constexpr char FRIENDLY_TAG_EC_PARAMS[] = "E/C Parameters";
inline constexpr char TAG_HUE_VECTOR_PARAMS[] = "HueVecParams";
inline constexpr char TAG_SOPNODE[] = "SOPNode";
inline constexpr char TAG_SLOPE[] = "Slope";
inline constexpr char TAG_OFFSET[] = "Offset";
inline constexpr char TAG_POWER[] = "Power";
inline constexpr char TAG_SATNODE[] = "SatNode";
inline constexpr char TAG_SATURATION[] = "Saturation";
inline constexpr char TAG_DYNAMIC_PARAMETER[] = "DynamicParameter";
inline constexpr char FRIENDLY_TAG_DYNAMIC_PARAMETER[] = "Dynamic Parameter";

// What a dynamic parameter names.
inline constexpr char TAG_EXPOSURE[] = "EXPOSURE";
inline constexpr char TAG_CONTRAST[] = "CONTRAST";
inline constexpr char TAG_LOOK[] = "LOOK_SWITCH";

// Attributes of the root.
inline constexpr char ATTR_ID[] = "id";
inline constexpr char FRIENDLY_ATTR_ID[] = "Identifier";
inline constexpr char ATTR_NAME[] = "name";
inline constexpr char FRIENDLY_ATTR_NAME[] = "Name";
inline constexpr char ATTR_INVERSE_OF[] = "inverseOf";
inline constexpr char FRIENDLY_ATTR_INVERSE_OF[] = "Inverse Of";
inline constexpr char ATTR_VERSION[] = "version";
inline constexpr char FRIENDLY_ATTR_VERSION[] = "Version";
inline constexpr char ATTR_XML_NAMESPACE[] = "xmlns";

// Attributes of every operator.
inline constexpr char ATTR_IN_BIT_DEPTH[] = "inBitDepth";
inline constexpr char FRIENDLY_ATTR_IN_BIT_DEPTH[] = "Input Bit Depth";
inline constexpr char ATTR_OUT_BIT_DEPTH[] = "outBitDepth";
inline constexpr char FRIENDLY_ATTR_OUT_BIT_DEPTH[] = "Output Bit Depth";
inline constexpr char ATTR_BYPASS[] = "bypass";
inline constexpr char FRIENDLY_ATTR_BYPASS[] = "Bypass";

// Attributes of tables.
inline constexpr char ATTR_INTERPOLATION[] = "interpolation";
inline constexpr char FRIENDLY_ATTR_INTERPOLATION[] = "Interpolation";
inline constexpr char ATTR_HALF_DOMAIN[] = "halfDomain";
inline constexpr char FRIENDLY_ATTR_HALF_DOMAIN[] = "Half Domain";
inline constexpr char ATTR_RAW_HALFS[] = "rawHalfs";
inline constexpr char FRIENDLY_ATTR_RAW_HALFS[] = "Raw Halfs";
inline constexpr char ATTR_HUE_ADJUST[] = "hueAdjust";
inline constexpr char FRIENDLY_ATTR_HUE_ADJUST[] = "Hue Adjustment";
inline constexpr char ATTR_DIMENSION[] = "dim";
inline constexpr char FRIENDLY_ATTR_DIMENSION[] = "Array Dimension";

// Attributes of references. A path has a second name once it has been resolved.
inline constexpr char ATTR_ALIAS[] = "alias";
inline constexpr char FRIENDLY_ATTR_ALIAS[] = "Alias";
inline constexpr char ATTR_PATH[] = "path";
inline constexpr char FRIENDLY_ATTR_PATH[] = "Path";
inline constexpr char FRIENDLY_ATTR_RESOLVED_PATH[] = "Resolved Path";
inline constexpr char ATTR_BASE_PATH[] = "basePath";
inline constexpr char FRIENDLY_ATTR_BASE_PATH[] = "Base Path";

// One spelling, several meanings; ATTR_STYLE where the meaning does not matter.
inline constexpr char ATTR_STYLE[] = "style";
inline constexpr char ATTR_GAMMA_STYLE[] = "style";
inline constexpr char FRIENDLY_ATTR_GAMMA_STYLE[] = "Gamma Style";
inline constexpr char ATTR_LOG_STYLE[] = "style";
inline constexpr char FRIENDLY_ATTR_LOG_STYLE[] = "Log Style";
inline constexpr char ATTR_EC_STYLE[] = "style";
inline constexpr char FRIENDLY_ATTR_EC_STYLE[] = "E/C Style";
inline constexpr char ATTR_CDL_STYLE[] = "style";
inline constexpr char FRIENDLY_ATTR_CDL_STYLE[] = "CDL Style";
inline constexpr char ATTR_GAMUT_MAP_STYLE[] = "style";
inline constexpr char FRIENDLY_ATTR_GAMUT_MAP_STYLE[] = "Gamut Map Style";
inline constexpr char ATTR_HUE_VECTOR_STYLE[] = "style";
inline constexpr char FRIENDLY_ATTR_HUE_VECTOR_STYLE[] = "Hue Vector Style";
inline constexpr char ATTR_HUE_VECTOR_PARAM_STYLE[] = "style";
inline constexpr char FRIENDLY_ATTR_HUE_VECTOR_PARAM_STYLE[] = "Parameter Style";

// Attributes of parameter elements, and lists of those that stand together, in the order of the operators' parameters.
inline constexpr char ATTR_CHAN[] = "channel";
inline constexpr char CHANNEL_LETTERS[] = "RGBA"; // What a channel may be, in the order of the channels.
inline constexpr char ATTR_GAMMA[] = "gamma";
inline constexpr char FRIENDLY_ATTR_GAMMA[] = "Gamma";
inline constexpr char ATTR_OFFSET[] = "offset";
inline constexpr char ATTR_EXPOSURE[] = "exposure";
inline constexpr char FRIENDLY_ATTR_EXPOSURE[] = "Exposure";
inline constexpr char ATTR_CONTRAST[] = "contrast";
inline constexpr char FRIENDLY_ATTR_CONTRAST[] = "Contrast";
inline constexpr char ATTR_PIVOT[] = "pivot";
inline constexpr char FRIENDLY_ATTR_PIVOT[] = "Pivot";
inline constexpr char ATTR_PARAM[] = "param";
inline constexpr char ATTR_REFWHITE[] = "refWhite";
inline constexpr char FRIENDLY_ATTR_REFWHITE[] = "RefWhite";
inline constexpr char ATTR_REFBLACK[] = "refBlack";
inline constexpr char FRIENDLY_ATTR_REFBLACK[] = "RefBlack";
inline constexpr char ATTR_HIGHLIGHT[] = "highlight";
inline constexpr char FRIENDLY_ATTR_HIGHLIGHT[] = "Highlight";
inline constexpr char ATTR_SHADOW[] = "shadow";
inline constexpr char FRIENDLY_ATTR_SHADOW[] = "Shadow";
inline constexpr char const* ATTRS_LOG_PARAMS[] = {ATTR_GAMMA, ATTR_REFWHITE, ATTR_REFBLACK, ATTR_HIGHLIGHT, ATTR_SHADOW};
inline constexpr char ATTR_HUE_VECTOR_CENTER[] = "center";
inline constexpr char FRIENDLY_ATTR_HUE_VECTOR_CENTER[] = "Center";
inline constexpr char ATTR_HUE_VECTOR_WIDTH[] = "width";
inline constexpr char FRIENDLY_ATTR_HUE_VECTOR_WIDTH[] = "Width";
inline constexpr char ATTR_HUE_VECTOR_AMOUNT[] = "amount";
inline constexpr char FRIENDLY_ATTR_HUE_VECTOR_AMOUNT[] = "Amount";
inline constexpr char const* ATTRS_HUE_VECTOR_PARAMS[] = {ATTR_HUE_VECTOR_CENTER, ATTR_HUE_VECTOR_WIDTH, ATTR_HUE_VECTOR_AMOUNT};
inline constexpr char ATTR_DITHER_BIT_DEPTH[] = "ditherBitDepth";
inline constexpr char FRIENDLY_ATTR_DITHER_BIT_DEPTH[] = "Dither Bit Depth";

} // namespace Color::Xml

#endif
