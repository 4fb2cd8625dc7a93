// The names of all error ids, and the tags of the modules that raise them.
#ifndef TAVRIN_UTILS_ERROR_IDS_H
#define TAVRIN_UTILS_ERROR_IDS_H

#include <tavrin/status.h>

namespace Color
{

namespace ErrorIds
{
#define TAVRIN_ERROR(name, id, format) inline constexpr Tavrin::ErrorId name = id;
#include "utils/errorIds.def"
#undef TAVRIN_ERROR
} // namespace ErrorIds

// Who raises a failure; stands before the text in the log.
namespace Module
{
inline constexpr char const* kUtils = "COLOR:UTILS:ALL";
inline constexpr char const* kPreferences = "COLOR:UTILS:PREFERENCES";
inline constexpr char const* kDynamicProperty = "COLOR:UTILS:DYNAMIC_PROP";
inline constexpr char const* kTransform = "COLOR:TRANSFORM:ALL";
inline constexpr char const* kMatrix = "COLOR:TRANSFORM:MATRIX";
inline constexpr char const* kLut1D = "COLOR:TRANSFORM:LUT_1D";
inline constexpr char const* kLut3D = "COLOR:TRANSFORM:LUT_3D";
inline constexpr char const* kOpList = "COLOR:TRANSFORM:OPLIST";
inline constexpr char const* kRange = "COLOR:TRANSFORM:RANGE";
inline constexpr char const* kReference = "COLOR:TRANSFORM:REFERENCE";
inline constexpr char const* kGamma = "COLOR:TRANSFORM:GAMMA";
inline constexpr char const* kExposureContrast = "COLOR:TRANSFORM:EXPOSURE_CONTRAST";
inline constexpr char const* kLog = "COLOR:TRANSFORM:LOG";
inline constexpr char const* kCdl = "COLOR:TRANSFORM:CDL";
inline constexpr char const* kMetadata = "COLOR:TRANSFORM:METADATA";
inline constexpr char const* kGamutMap = "COLOR:TRANSFORM:GAMUT_MAP";
inline constexpr char const* kHueVector = "COLOR:TRANSFORM:HUE_VECTOR";
inline constexpr char const* kXml = "COLOR:XML:ALL";
inline constexpr char const* kXmlReader = "COLOR:XML:READER";
inline constexpr char const* kPreferencesReader = "COLOR:XML:PREFS_READER";
inline constexpr char const* kResolver = "COLOR:XML:RESOLVER";
inline constexpr char const* kXmlWriter = "COLOR:XML:WRITER";
inline constexpr char const* kFileReader = "COLOR:XML:IO_READER";
inline constexpr char const* kOcioReader = "COLOR:XML:OCIO_READER";
inline constexpr char const* kCatalogManager = "COLOR:XML:CATALOG_MANAGER";
inline constexpr char const* kIccReader = "COLOR:XML:ICC_READER";
inline constexpr char const* kRenderer = "COLOR:RENDERER:ALL";
inline constexpr char const* kCpuRenderer = "COLOR:RENDERER:CPU";
inline constexpr char const* kOcioRenderer = "COLOR:RENDERER:OCIO";
inline constexpr char const* kTemplate = "COLOR:TEMPLATE:ALL";
inline constexpr char const* kOcioTemplate = "COLOR:TEMPLATE:OCIO";
inline constexpr char const* kGpuRenderer = "COLOR:RENDERER:GPU";
inline constexpr char const* kLibrary = "COLOR:TAVRIN:COLOR";
inline constexpr char const* kLibraryPreferences = "COLOR:TAVRIN:PREFS";
inline constexpr char const* kLibraryPath = "COLOR:TAVRIN:PATH";
} // namespace Module

} // namespace Color

#endif
