// The synthetic test chart: a table of regions, each a function from a place to a colour.
#include "chart.h"

#include "failure.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>

namespace Program
{

namespace
{

// Scene-linear light, primaries and white of Rec. 709.
struct Color
{
    double red;
    double green;
    double blue;
};

Color operator*(double factor, Color c)
{
    return {factor * c.red, factor * c.green, factor * c.blue};
}

Color operator+(Color a, Color b)
{
    return {a.red + b.red, a.green + b.green, a.blue + b.blue};
}

Color mix(Color a, Color b, double t)
{
    return (1.0 - t) * a + t * b;
}

Color grey(double light)
{
    return {light, light, light};
}

// IEC 61966-2-1, both ways; values above 1 go on along the curve.
double srgbToLinear(double v)
{
    return v <= 0.04045 ? v / 12.92 : std::pow((v + 0.055) / 1.055, 2.4);
}

double linearToSrgb(double v)
{
    return v <= 0.0031308 ? v * 12.92 : 1.055 * std::pow(v, 1.0 / 2.4) - 0.055;
}

// The Cineon code of printing density at 0.002 a code and a negative's gamma of 0.6, with white at 685 and black at 95
// (G. Kennel and others, "Conversion of 10-bit log film data to 8-bit linear or video data", Kodak 1995), over 1023.
double linearToLog(double v)
{
    const double codesPerDecade = 0.6 / 0.002;
    const double black = std::pow(10.0, (95.0 - 685.0) / codesPerDecade);
    return (685.0 + codesPerDecade * std::log10(std::max(v, 0.0) * (1.0 - black) + black)) / 1023.0;
}

Color fromSrgb(double red, double green, double blue)
{
    return {srgbToLinear(red / 255.0), srgbToLinear(green / 255.0), srgbToLinear(blue / 255.0)};
}

double stops(double s)
{
    return std::exp2(s);
}

// The 24 patches of the ColorChecker Classic in 8-bit sRGB, as its maker X-Rite published them ("Colorimetric values for
// ColorChecker family of targets", chart before November 2014), from dark skin to black.
constexpr unsigned int kPatchColumns = 6;
constexpr unsigned int kPatchRows = 4;
constexpr unsigned char kPatches[kPatchColumns * kPatchRows][3] = {
    {115, 82, 68},   {194, 150, 130}, {98, 122, 157},  {87, 108, 67},   {133, 128, 177}, {103, 189, 170},
    {214, 126, 44},  {80, 91, 166},   {193, 90, 99},   {94, 60, 108},   {157, 188, 64},  {224, 163, 46},
    {56, 61, 150},   {70, 148, 73},   {175, 54, 60},   {231, 199, 31},  {187, 86, 149},  {8, 133, 161},
    {243, 243, 242}, {200, 200, 200}, {160, 160, 160}, {122, 122, 121}, {85, 85, 85},    {52, 52, 52},
};
enum Patch
{
    DARK_SKIN = 0,
    LIGHT_SKIN = 1,
    BLUE_SKY = 2,
    BLUE = 12,
    GREEN = 13,
    RED = 14,
    NEUTRAL_5 = 21
};

Color patch(unsigned int index)
{
    return fromSrgb(kPatches[index][0], kPatches[index][1], kPatches[index][2]);
}

const Color kBackground = fromSrgb(58, 58, 58);

// A place in a region: both coordinates run from 0 at the left or upper edge to 1.
struct Place
{
    double x;
    double y;
};

// The cell of a grid and the place in it.
struct Cell
{
    unsigned int column;
    unsigned int row;
    Place place;
};

Cell cellOf(Place p, unsigned int columns, unsigned int rows)
{
    const double x = p.x * columns;
    const double y = p.y * rows;
    const double column = std::min(std::floor(x), columns - 1.0);
    const double row = std::min(std::floor(y), rows - 1.0);
    return {static_cast<unsigned int>(column), static_cast<unsigned int>(row), {x - column, y - row}};
}

Color paintPatches(Place p)
{
    constexpr double gap = 0.05;
    const Cell cell = cellOf(p, kPatchColumns, kPatchRows);
    const auto inside = [](double v) { return v > gap && v < 1.0 - gap; };
    if (!inside(cell.place.x) || !inside(cell.place.y))
        return kBackground;
    return patch(cell.row * kPatchColumns + cell.column);
}

// The pure hue: one channel 1, one 0. Once round from red over green and blue; even steps for the eye, not for light.
Color hue(double turn)
{
    const auto channel = [&](double offset)
    {
        const double h = std::fmod(turn * 6.0 + offset, 6.0);
        return srgbToLinear(std::clamp(std::min(h, 4.0 - h), 0.0, 1.0));
    };
    return {channel(2.0), channel(0.0), channel(4.0)};
}

// White at the upper edge, full colour in the middle, black at the lower edge.
Color paintHues(Place p)
{
    const Color pure = hue(p.x);
    if (p.y < 0.5)
        return mix(pure, grey(1.0), srgbToLinear(1.0 - 2.0 * p.y));
    return srgbToLinear(2.0 - 2.0 * p.y) * pure;
}

// From deep blue down to a pale horizon, with a sun of 32 and the glow round it.
Color paintSky(Place p)
{
    const Color sky = patch(BLUE_SKY);
    const Color zenith = {0.35 * sky.red, 0.6 * sky.green, 1.1 * sky.blue};
    const Color horizon = {0.75, 0.68, 0.62};
    const double distance = std::hypot((p.x - 0.72) * 1.42, p.y - 0.62);
    const Color glow = stops(1.5 - 12.0 * distance) * Color{1.0, 0.82, 0.55};
    const Color sun = distance < 0.06 ? grey(stops(5.0)) : grey(0.0);
    return mix(zenith, horizon, p.y * p.y) + glow + sun;
}

// A matt ball with a highlight, lit from the upper left.
Color shadeBall(Color surface, Place p)
{
    const double x = (2.0 * p.x - 1.0) / 0.9;
    const double y = (2.0 * p.y - 1.0) / 0.9;
    const double squared = x * x + y * y;
    if (squared > 1.0)
        return kBackground;
    const double z = std::sqrt(1.0 - squared);
    const double light = (-x - y + 1.2 * z) / std::sqrt(2.0 + 1.2 * 1.2);
    const double highlight = 16.0 * std::pow(std::max(light, 0.0), 180.0);
    return (0.08 + 1.1 * std::max(light, 0.0)) * surface + grey(highlight);
}

// Skin from light to dark, then red, green, blue and grey.
Color paintBalls(Place p)
{
    const Cell cell = cellOf(p, 4, 2);
    if (cell.row == 0)
        return shadeBall(mix(patch(LIGHT_SKIN), 0.5 * patch(DARK_SKIN), cell.column / 3.0), cell.place);
    constexpr Patch surfaces[] = {RED, GREEN, BLUE, NEUTRAL_5};
    return shadeBall(patch(surfaces[cell.column]), cell.place);
}

// Grey, red, green, blue and grey in 17 steps, from 0 to 1, even for the eye.
Color paintRamps(Place p)
{
    constexpr double steps = 17.0;
    const double light = srgbToLinear(p.x);
    switch (cellOf(p, 1, 5).row)
    {
    case 0:
        return grey(light);
    case 1:
        return {light, 0.0, 0.0};
    case 2:
        return {0.0, light, 0.0};
    case 3:
        return {0.0, 0.0, light};
    default:
        return grey(srgbToLinear(std::min(std::floor(p.x * steps), steps - 1.0) / (steps - 1.0)));
    }
}

// Light from 6 stops below 1.0 to 4 above, hues from top to bottom. A little white keeps every channel above zero, as in nature.
Color paintBrightHues(Place p)
{
    return stops(-6.0 + 10.0 * p.x) * mix(hue(p.y), grey(1.0), 0.05);
}

// From 8 stops below 1.0 to 5 above: in steps of one stop, each with its exact power of two, and continuous.
Color paintHighlights(Place p)
{
    constexpr double darkest = -8.0;
    constexpr double brightest = 5.0;
    if (p.y >= 0.5)
        return grey(stops(darkest + (brightest - darkest) * p.x));
    const double count = brightest - darkest + 1.0;
    return grey(stops(darkest + std::min(std::floor(p.x * count), count - 1.0)));
}

struct Region
{
    double left;
    double top;
    double right;
    double bottom;
    Color (*paint)(Place);
};

constexpr Region kRegions[] = {
    {0.025, 0.040, 0.485, 0.540, paintPatches},    {0.505, 0.040, 0.975, 0.280, paintHues},
    {0.505, 0.305, 0.693, 0.540, paintSky},        {0.711, 0.305, 0.975, 0.540, paintBalls},
    {0.025, 0.565, 0.485, 0.790, paintRamps},      {0.505, 0.565, 0.975, 0.790, paintBrightHues},
    {0.025, 0.815, 0.975, 0.960, paintHighlights},
};

Color paint(Place p)
{
    for (Region const& r : kRegions)
    {
        if (p.x >= r.left && p.x < r.right && p.y >= r.top && p.y < r.bottom)
            return r.paint({(p.x - r.left) / (r.right - r.left), (p.y - r.top) / (r.bottom - r.top)});
    }
    return kBackground;
}

double encode(double light, ChartEncoding encoding)
{
    switch (encoding)
    {
    case ChartEncoding::SRGB:
        return linearToSrgb(light);
    case ChartEncoding::LOG:
        return linearToLog(light);
    case ChartEncoding::LINEAR:
        break;
    }
    return light;
}

} // namespace

Image drawChart(std::string const& path, unsigned int width, unsigned int height, ChartEncoding encoding, RowReport const& report)
{
    Image image = makeImage(path, Tavrin::PF_RGB_32f, width, height);
    for (unsigned int y = 0; y < height; ++y)
    {
        for (unsigned int x = 0; x < width; ++x)
        {
            const Color c = paint({(x + 0.5) / width, (y + 0.5) / height});
            const std::array<float, 3> pixel = {static_cast<float>(encode(c.red, encoding)),
                                                static_cast<float>(encode(c.green, encoding)),
                                                static_cast<float>(encode(c.blue, encoding))};
            std::memcpy(image.row(y) + x * sizeof(pixel), pixel.data(), sizeof(pixel));
        }
        report(y + 1);
    }
    return image;
}

} // namespace Program
