// Names in the configuration file, in the spelling in which they are written.
#ifndef TAVRIN_XML_PREFERENCES_VOCABULARY_H
#define TAVRIN_XML_PREFERENCES_VOCABULARY_H

namespace Color::Xml
{

inline constexpr char TAG_TAVRIN_CONFIG[] = "TavrinConfig";
inline constexpr char ATTR_CONFIG_VERSION[] = "version";

inline constexpr char TAG_AUTO_CONFIGURE[] = "AutoConfigure";
inline constexpr char ATTR_GRAPHICS_MONITOR[] = "graphicsMonitor";
inline constexpr char VALUE_TRUE[] = "true";
inline constexpr char VALUE_FALSE[] = "false";

inline constexpr char TAG_SHARED_HOME[] = "SharedHome";
inline constexpr char ATTR_DIR[] = "dir";

inline constexpr char TAG_REFERENCE_TABLE[] = "ReferenceTable";
inline constexpr char TAG_REF[] = "Ref";
inline constexpr char ATTR_REF_ALIAS[] = "alias";
inline constexpr char ATTR_REF_PATH[] = "path";
inline constexpr char ATTR_REF_BASE_PATH[] = "basePath";

} // namespace Color::Xml

#endif
