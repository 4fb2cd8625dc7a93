// Table files in every format that OpenColorIO reads, written here, with what they mean in double precision.
#ifndef TAVRIN_TESTS_SUPPORT_TABLE_FILES_H
#define TAVRIN_TESTS_SUPPORT_TABLE_FILES_H

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <functional>
#include <ostream>
#include <string>
#include <vector>

namespace TableFiles
{

using Rgb = std::array<double, 3>;
using Meaning = std::function<Rgb(Rgb const&)>;

struct TableFile
{
    std::string name;
    std::string text;
    Meaning meaning;
    double precision = 0.0; // Half a code, where the file holds codes.
};

inline void PrintTo(TableFile const& file, std::ostream* out)
{
    *out << file.name;
}

template <class... Values>
std::string line(char const* format, Values... values)
{
    char text[200];
    std::snprintf(text, sizeof text, format, values...);
    return text;
}

// The look of all cubes. Linear in each channel, so that a trilinear interpolation of its grid points meets it everywhere; without
// symmetry, so that no exchange of axes or channels goes unseen.
inline Rgb look(Rgb const& rgb)
{
    auto const [r, g, b] = rgb;
    return {0.25 + 0.5 * r * g, 0.75 * g + 0.25 * b, b * (1.0 - 0.5 * r)};
}

// The curves of all one-dimensional tables: rising, of even steps, each channel another.
inline std::vector<Rgb> const kCurves{{0.0, 0.1, 0.0}, {0.125, 0.25, 0.5}, {0.25, 0.5, 0.75}, {0.5, 0.75, 0.875}, {1.0, 0.8, 1.0}};

inline Rgb curves(Rgb const& rgb)
{
    Rgb result;
    for (std::size_t channel = 0; channel < 3; ++channel)
    {
        double const position = std::clamp(rgb[channel], 0.0, 1.0) * static_cast<double>(kCurves.size() - 1);
        std::size_t const row = std::min(static_cast<std::size_t>(position), kCurves.size() - 2);
        double const share = position - static_cast<double>(row);
        result[channel] = kCurves[row][channel] * (1.0 - share) + kCurves[row + 1][channel] * share;
    }
    return result;
}

// A meaning on another domain: from and to become 0 and 1, and what is outside is held at the ends.
inline Meaning onDomain(Meaning const& meaning, Rgb const& from, Rgb const& to)
{
    return [=](Rgb const& rgb)
    {
        Rgb position;
        for (std::size_t channel = 0; channel < 3; ++channel)
            position[channel] = std::clamp((rgb[channel] - from[channel]) / (to[channel] - from[channel]), 0.0, 1.0);
        return meaning(position);
    };
}

inline Meaning onUnit(Meaning const& meaning)
{
    return onDomain(meaning, {0.0, 0.0, 0.0}, {1.0, 1.0, 1.0});
}

enum class Fastest
{
    Red,
    Blue
};

// The grid points of the look, one after the other.
template <class Write>
std::string gridOf(int size, Fastest fastest, Write const& write)
{
    std::string text;
    for (int slow = 0; slow < size; ++slow)
        for (int middle = 0; middle < size; ++middle)
            for (int fast = 0; fast < size; ++fast)
            {
                double const last = size - 1;
                Rgb const ends{slow / last, middle / last, fast / last};
                text += write(look(fastest == Fastest::Blue ? ends : Rgb{ends[2], ends[1], ends[0]}));
            }
    return text;
}

inline std::string floats(Rgb const& rgb)
{
    return line("%.6f %.6f %.6f\n", rgb[0], rgb[1], rgb[2]);
}

inline std::string codes(Rgb const& rgb, double maximum)
{
    return line("%.0f %.0f %.0f\n", rgb[0] * maximum, rgb[1] * maximum, rgb[2] * maximum);
}

inline std::string cube(Fastest fastest)
{
    return gridOf(3, fastest, floats);
}

inline std::string rows()
{
    std::string text;
    for (Rgb const& row : kCurves)
        text += floats(row);
    return text;
}

inline std::string csp(char const* kind, std::string const& shaper, std::string const& table)
{
    return std::string("CSPLUTV100\n") + kind + "\n\nBEGIN METADATA\nof the tests\nEND METADATA\n\n" + shaper + shaper + shaper +
           "\n" + table;
}

inline std::string houdini(char const* version, char const* type, char const* from, char const* length, std::string const& tables)
{
    return std::string("Version\t\t") + version + "\nFormat\t\tany\nType\t\t" + type + "\nFrom\t\t" + from +
           "\nTo\t\t0.0 1.0\nBlack\t\t0.0\nWhite\t\t1.0\nLength\t\t" + length + "\nLUT:\n" + tables;
}

// Numbered rows, counted with blue fastest.
inline std::string pandora()
{
    int number = 0;
    auto const row = [&](Rgb const& rgb)
    { return line("%d\t%.0f\t%.0f\t%.0f\n", number++, rgb[0] * 4095, rgb[1] * 4095, rgb[2] * 4095); };
    return "channel 3d\nin 27\nout 4096\n\nformat lut\n\nvalues\tred\tgreen\tblue\n" + gridOf(3, Fastest::Blue, row);
}

// Grid points in the bytes of floats, written out as digits.
inline std::string iridasLook()
{
    auto const bytes = [](Rgb const& rgb)
    {
        std::string text;
        for (double const value : rgb)
        {
            auto const bits = std::bit_cast<std::uint32_t>(static_cast<float>(value));
            text += line("%02X%02X%02X%02X", bits & 0xffU, bits >> 8U & 0xffU, bits >> 16U & 0xffU, bits >> 24U);
        }
        return text + "\n";
    };
    return "<?xml version=\"1.0\" ?>\n<look>\n<shaders></shaders>\n<LUT>\n<size>\"3\"</size>\n<data>\"" +
           gridOf(3, Fastest::Red, bytes) + "\"</data>\n</LUT>\n</look>\n";
}

inline std::string spi1d(char const* from, char const* to)
{
    return line("Version 1\nFrom %s %s\nLength 5\nComponents 3\n{\n", from, to) + rows() + "}\n";
}

inline std::string spi3d()
{
    std::string text = "SPILUT 1.0\n3 3\n3 3 3\n";
    for (int r = 0; r < 3; ++r)
        for (int g = 0; g < 3; ++g)
            for (int b = 0; b < 3; ++b)
                text += line("%d %d %d ", r, g, b) + floats(look({r / 2.0, g / 2.0, b / 2.0}));
    return text;
}

// 4 grid points at the codes of 10 bits, values of 12 bits.
inline std::string flame3dl()
{
    return "0 341 682 1023\n" + gridOf(4, Fastest::Blue, [](Rgb const& rgb) { return codes(rgb, 4095); });
}

inline std::string lustre3dl()
{
    return "3DMESH\nMesh 2 12\n0 256 512 767 1023\n" + gridOf(5, Fastest::Blue, [](Rgb const& rgb) { return codes(rgb, 4095); }) +
           "\nLUT8\ngamma 1.0\n";
}

// A table of 256 rows of 8 bits for each channel: half, the same, and reversed.
inline std::string discreet1d()
{
    std::string text = "LUT: 3 256\n";
    for (int i = 0; i < 256; ++i)
        text += line("%d\n", i / 2);
    for (int i = 0; i < 256; ++i)
        text += line("%d\n", i);
    for (int i = 0; i < 256; ++i)
        text += line("%d\n", 255 - i);
    return text;
}

inline std::vector<TableFile> all()
{
    std::string const unitShaper = "2\n0.0 1.0\n0.0 1.0\n";
    std::string const bentShaper = "3\n0.0 1.0 2.0\n0.0 0.5 1.0\n";
    Meaning const unitLook = onUnit(look);
    Meaning const unitCurves = onUnit(curves);
    Meaning const wideLook = onDomain(look, {0, 0, 0}, {2, 2, 2});
    Meaning const wideCurves = onDomain(curves, {0, 0, 0}, {2, 2, 2});
    double const twelveBits = 0.5 / 4095;
    return {
        {"unit.spi1d", spi1d("0.0", "1.0"), unitCurves},
        {"wide.spi1d", spi1d("0.0", "2.0"), wideCurves},
        {"below.spi1d", spi1d("-1.0", "1.0"), onDomain(curves, {-1, -1, -1}, {1, 1, 1})},
        {"one.spi1d", "Version 1\nFrom 0.0 1.0\nLength 3\nComponents 1\n{\n0.0\n0.25\n1.5\n}\n",
         onUnit(
             [](Rgb const& rgb)
             {
                 auto const curve = [](double x) { return x < 0.5 ? 0.5 * x : 0.25 + (x - 0.5) * 2.5; };
                 return Rgb{curve(rgb[0]), curve(rgb[1]), curve(rgb[2])};
             })},
        {"look.spi3d", spi3d(), unitLook},
        {"offset.spimtx", "1.5 0.125 0 6553.5\n0 0.75 0 0\n0.25 0 2 -655.35\n",
         [](Rgb const& rgb)
         {
             auto const [r, g, b] = rgb;
             return Rgb{1.5 * r + 0.125 * g + 0.1, 0.75 * g, 0.25 * r + 2.0 * b - 0.01};
         }},
        {"iridas.cube", "TITLE \"look\"\n# a comment\nLUT_3D_SIZE 3\n" + cube(Fastest::Red), unitLook},
        {"iridasDomain.cube", "LUT_3D_SIZE 3\nDOMAIN_MIN -1 0 0\nDOMAIN_MAX 1 2 4\n" + cube(Fastest::Red),
         onDomain(look, {-1, 0, 0}, {1, 2, 4})},
        {"iridasCurves.cube", "LUT_1D_SIZE 5\nDOMAIN_MIN 0 0 0\nDOMAIN_MAX 2 2 2\n" + rows(), wideCurves},
        {"resolve.cube", "LUT_3D_SIZE 3\nLUT_3D_INPUT_RANGE 0.0 2.0\n" + cube(Fastest::Red), wideLook},
        {"resolveCurves.cube", "LUT_1D_SIZE 5\nLUT_1D_INPUT_RANGE 0.0 2.0\n" + rows(), wideCurves},
        {"resolveBoth.cube",
         "LUT_1D_SIZE 5\nLUT_1D_INPUT_RANGE 0.0 2.0\nLUT_3D_SIZE 3\nLUT_3D_INPUT_RANGE 0.0 1.0\n" + rows() + cube(Fastest::Red),
         [=](Rgb const& rgb) { return unitLook(wideCurves(rgb)); }},
        {"look.csp", csp("3D", unitShaper, "3 3 3\n" + cube(Fastest::Red)), unitLook},
        {"shaped.csp", csp("3D", bentShaper, "3 3 3\n" + cube(Fastest::Red)), wideLook},
        {"curves.csp", csp("1D", unitShaper, "5\n" + rows()), unitCurves},
        {"shapedCurves.csp", csp("1D", bentShaper, "5\n" + rows()), wideCurves},
        {"flame.3dl", flame3dl(), unitLook, twelveBits},
        {"lustre.3dl", lustre3dl(), unitLook, twelveBits},
        // The transform of this format is of positions in the grid.
        {"look.vf",
         "#Inventor V2.1 ascii\ngrid_size 3 3 3\nglobal_transform 0.33333333333 0 0 0 0 0.33333333333 0 0 0 0 0.33333333333 0 0 0 "
         "0 "
         "1\ndata\n" +
             cube(Fastest::Blue),
         unitLook},
        {"untransformed.vf", "#Inventor V2.1 ascii\ngrid_size 3 3 3\ndata\n" + cube(Fastest::Blue), unitLook},
        {"houdiniCurve.lut", houdini("1", "C", "0.0 2.0", "3", "RGB {\n 0\n 0.25\n 1\n}\n"),
         onDomain(
             [](Rgb const& rgb)
             {
                 auto const curve = [](double x) { return x < 0.5 ? 0.5 * x : 0.25 + (x - 0.5) * 1.5; };
                 return Rgb{curve(rgb[0]), curve(rgb[1]), curve(rgb[2])};
             },
             {0, 0, 0}, {2, 2, 2})},
        {"houdiniLook.lut", houdini("2", "3D", "0.0 1.0", "3", " {\n" + cube(Fastest::Red) + "}\n"), unitLook},
        {"discreet.lut", discreet1d(),
         onUnit(
             [](Rgb const& rgb) {
                 return Rgb{0.5 * rgb[0], rgb[1], 1.0 - rgb[2]};
             }),
         0.5 / 255},
        {"look.itx", "LUT_3D_SIZE 3\n\n" + cube(Fastest::Red), unitLook},
        {"look.mga", pandora(), unitLook, twelveBits},
        {"look.m3d", pandora(), unitLook, twelveBits},
        {"look.cub", "# Truelight Cube v2.0\n# iDims 3\n# oDims 3\n# width 3 3 3\n\n# Cube\n" + cube(Fastest::Red) + "# end\n",
         unitLook},
        // The rows of the input table are positions in the grid.
        {"shaped.cub",
         "# Truelight Cube v2.0\n# lutLength 3\n# iDims 3\n# oDims 3\n# width 3 3 3\n\n# InputLUT\n0 0 0\n0.5 1 1.5\n2 2 2\n\n"
         "# Cube\n" +
             cube(Fastest::Red) + "# end\n",
         onUnit(
             [](Rgb const& rgb)
             {
                 auto const bend = [](double x, double middle)
                 { return x < 0.5 ? 2.0 * x * middle : middle + (2.0 * x - 1.0) * (1.0 - middle); };
                 return look({bend(rgb[0], 0.25), rgb[1], bend(rgb[2], 0.75)});
             })},
        {"look.look", iridasLook(), unitLook},
    };
}

} // namespace TableFiles

#endif
