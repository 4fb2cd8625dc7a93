// A transform that is ready for one format, and the pictures that it is run over.
#ifndef TAVRIN_BENCH_GROWTH_RENDERING_H
#define TAVRIN_BENCH_GROWTH_RENDERING_H

#include <tavrin/tavrin.h>

#include <string>

namespace Bench
{

// What the source frame shows: neighbours that are alike, as in pictures, or colours that have nothing to do with each other.
enum class Picture
{
    Gradient,
    Noise
};

// No larger than the frames that the benchmarks share.
struct Size
{
    unsigned int width;
    unsigned int height;
};

class Rendering
{
public:
    // From the format to itself; nothing is merged.
    Rendering(std::string const& elements, Tavrin::PixelFormat format);

    // From the source frame to the destination frame.
    void run(Tavrin::ROI const& roi) const;
    void runWhole(Size size) const;
    // Rows are split evenly among so many threads, of which the caller's is one.
    void runInStrips(Size size, unsigned int threads) const;

private:
    Tavrin::TransformPtr m_transform;
};

// Draws the picture into the source frame, unless it is there.
void draw(Picture picture, Tavrin::PixelFormat format);

// Squares of an image, row after row; those that do not fit in are left out.
class Squares
{
public:
    Squares(Size size, unsigned int side) : m_size(size), m_side(side) {}

    // The next one, and after the last one the first.
    Tavrin::ROI next();

private:
    Size m_size;
    unsigned int m_side;
    unsigned int m_x = 0;
    unsigned int m_y = 0;
};

} // namespace Bench

#endif
