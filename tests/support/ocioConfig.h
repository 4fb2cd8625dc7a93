// OpenColorIO configurations written by tests.
#ifndef TAVRIN_TESTS_SUPPORT_OCIO_CONFIG_H
#define TAVRIN_TESTS_SUPPORT_OCIO_CONFIG_H

#include <string>

namespace OcioConfig
{

// What a configuration says beside its displays and colour spaces.
struct Settings
{
    std::string version = "1";
    std::string roles = "{default: linear}";
    std::string lists; // Active displays and views, inactive colour spaces: lines of their own.
};

// Two displays; "video" is the square root of "linear", "bright" its double, and the table of "tables" is missing.
inline std::string text(Settings const& settings = {})
{
    return "ocio_profile_version: " + settings.version + "\nsearch_path: luts\nstrictparsing: true\nroles: " + settings.roles +
           R"(
displays:
  screen:
    - !<View> {name: Film, colorspace: video}
    - !<View> {name: Raw, colorspace: linear}
  wall:
    - !<View> {name: Film, colorspace: bright}
    - !<View> {name: Soft (dim), colorspace: video}
    - !<View> {name: Look, colorspace: tables}
)" + settings.lists +
           R"(
colorspaces:
  - !<ColorSpace>
    name: linear
  - !<ColorSpace>
    name: video
    from_reference: !<ExponentTransform> {value: [2, 2, 2, 1], direction: inverse}
  - !<ColorSpace>
    name: bright
    from_reference: !<MatrixTransform> {matrix: [2, 0, 0, 0, 0, 2, 0, 0, 0, 0, 2, 0, 0, 0, 0, 1]}
  - !<ColorSpace>
    name: tables
    from_reference: !<FileTransform> {src: missing.spi3d, interpolation: linear}
)";
}

} // namespace OcioConfig

#endif
