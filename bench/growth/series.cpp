// What grows: the cases of each series, ready to be timed.
#include "growth/series.h"

#include "growth/rendering.h"
#include "shared/frame.h"
#include "shared/tables.h"

#include <algorithm>
#include <cmath>
#include <memory>
#include <thread>

namespace Bench
{

namespace
{

// ---------------------------------------------------------------- what is rendered

// A typical operator in a format that it is typical for.
struct Subject
{
    std::string name;
    Tavrin::PixelFormat format;
    // The element of the operator at a place in a chain.
    std::string (*element)(unsigned int place);
};

std::string matrix(unsigned int)
{
    return R"(<Matrix inBitDepth="32f" outBitDepth="32f"><Array dim="3 3 3">
0.9 0.1 0
0.2 0.7 0.1
0 0.1 0.9
</Array></Matrix>)";
}

// Turns about, so that values stay where they are.
std::string gamma(unsigned int place)
{
    std::string const style = place % 2 == 0 ? "basicFwd" : "basicRev";
    return R"(<Gamma inBitDepth="32f" outBitDepth="32f" style=")" + style + R"("><GammaParams gamma="2.2"/></Gamma>)";
}

std::string rows(unsigned int)
{
    return table1DElement("LUT1D", 4096);
}

std::string points(unsigned int)
{
    return table3DElement(33, "tetrahedral");
}

std::vector<Subject> const kSubjects = {
    {"matrix, RGBA32f", Tavrin::PF_RGBA_32f, matrix},
    {"gamma, RGBA16f", Tavrin::PF_RGBA_16f, gamma},
    {"1D 4096, RGBA16i", Tavrin::PF_RGBA_16i, rows},
    {"3D 33, RGBA32f", Tavrin::PF_RGBA_32f, points},
};

std::string chain(Subject const& subject, unsigned int operators)
{
    std::string elements;
    for (unsigned int place = 0; place < operators; ++place)
        elements += subject.element(place);
    return elements;
}

// ---------------------------------------------------------------- how it is called

using Call = std::function<void()>;

// Of a gradient, through operators that are made ready first.
template <class MakeCall>
std::function<Call()> prepared(std::string const& elements, Tavrin::PixelFormat format, Picture picture, MakeCall makeCall)
{
    return [=]
    {
        draw(picture, format);
        return makeCall(std::make_shared<Rendering const>(elements, format));
    };
}

constexpr Size kFrame = {kWidth, kHeight};

Case wholePicture(double x, std::string const& elements, Tavrin::PixelFormat format, Size size, Picture picture = Picture::Gradient)
{
    auto const makeCall = [size](std::shared_ptr<Rendering const> const& rendering)
    { return Call([=] { rendering->runWhole(size); }); };
    return {x, std::size_t{size.width} * size.height, prepared(elements, format, picture, makeCall)};
}

Case squares(Subject const& subject, Size size, unsigned int side)
{
    auto const makeCall = [=](std::shared_ptr<Rendering const> const& rendering)
    { return Call([rendering, squares = Squares(size, side)]() mutable { rendering->run(squares.next()); }); };
    return {static_cast<double>(side), std::size_t{side} * side,
            prepared(chain(subject, 1), subject.format, Picture::Gradient, makeCall)};
}

Case strips(Subject const& subject, unsigned int threads)
{
    auto const makeCall = [=](std::shared_ptr<Rendering const> const& rendering)
    { return Call([=] { rendering->runInStrips(kFrame, threads); }); };
    return {static_cast<double>(threads), kPixels, prepared(chain(subject, 1), subject.format, Picture::Gradient, makeCall)};
}

// ---------------------------------------------------------------- series

template <class MakeCases>
std::vector<Line> lineOfEachSubject(MakeCases makeCases)
{
    std::vector<Line> lines;
    for (Subject const& subject : kSubjects)
        lines.push_back({subject.name, makeCases(subject)});
    return lines;
}

std::vector<unsigned int> powersOfTwo(unsigned int first, unsigned int last)
{
    std::vector<unsigned int> powers;
    for (unsigned int power = first; power <= last; power *= 2)
        powers.push_back(power);
    return powers;
}

Series widths()
{
    constexpr unsigned int kPictures = 65536; // pixels, which stay in the second-level cache or in the third
    auto const cases = [](Subject const& subject)
    {
        std::vector<Case> all;
        for (unsigned int width : powersOfTwo(1, 16384))
            all.push_back(wholePicture(width, chain(subject, 1), subject.format, {width, kPictures / width}));
        return all;
    };
    return {"width", "Pictures of 65536 pixels", "width in pixels", Clock::Processor, lineOfEachSubject(cases)};
}

// The last case is the whole picture, at the side that a square of as many pixels has.
Series regions(std::string const& name, std::string const& title, Size size)
{
    auto const cases = [size](Subject const& subject)
    {
        std::vector<Case> all;
        for (unsigned int side : powersOfTwo(1, std::min(size.width, size.height) / 2))
            all.push_back(squares(subject, size, side));
        double const side = std::sqrt(static_cast<double>(size.width) * size.height);
        all.push_back(wholePicture(side, chain(subject, 1), subject.format, size));
        return all;
    };
    return {name, title, "side of the square in pixels", Clock::Processor, lineOfEachSubject(cases)};
}

Series operators()
{
    auto const cases = [](Subject const& subject)
    {
        std::vector<Case> all;
        for (unsigned int count : powersOfTwo(1, 32))
            all.push_back(wholePicture(count, chain(subject, count), subject.format, kFrame));
        return all;
    };
    return {"operators", "Operators one after the other", "operators", Clock::Processor, lineOfEachSubject(cases)};
}

Line tablesOf(std::string const& interpolation, Picture picture)
{
    Line line = {interpolation + (picture == Picture::Gradient ? ", gradient" : ", noise"), {}};
    for (unsigned int size : {2U, 3U, 5U, 9U, 17U, 33U, 65U, 129U})
        line.cases.push_back(wholePicture(size, table3DElement(size, interpolation), Tavrin::PF_RGBA_32f, kFrame, picture));
    return line;
}

Series tables()
{
    Series series = {"tables", "3D tables, RGBA32f", "points on an axis", Clock::Processor, {}};
    for (Picture picture : {Picture::Gradient, Picture::Noise})
    {
        for (char const* interpolation : {"trilinear", "tetrahedral"})
            series.lines.push_back(tablesOf(interpolation, picture));
    }
    return series;
}

Series threads()
{
    auto const cases = [](Subject const& subject)
    {
        std::vector<Case> all;
        for (unsigned int count = 1; count <= std::max(std::thread::hardware_concurrency(), 1U); ++count)
            all.push_back(strips(subject, count));
        return all;
    };
    return {"threads", "Threads that share the rows of a frame", "threads", Clock::Wall, lineOfEachSubject(cases)};
}

} // namespace

std::vector<Series> allSeries()
{
    return {widths(),
            regions("cachedRegions", "Squares of a picture of 256 x 256", {256, 256}),
            regions("regions", "Squares of a frame of 3840 x 2160", kFrame),
            operators(),
            tables(),
            threads()};
}

} // namespace Bench
