// A transform that is ready for one format, and the pictures that it is run over.
#include "growth/rendering.h"

#include "shared/frame.h"
#include "shared/tables.h"

#include <random>
#include <thread>
#include <vector>

namespace Bench
{

namespace
{

constexpr char kIdentity[] = R"(<Matrix inBitDepth="32f" outBitDepth="32f"><Array dim="3 3 3">1 0 0 0 1 0 0 0 1</Array></Matrix>)";

Tavrin::TransformPtr finalized(std::string const& elements, Tavrin::PixelFormat in, Tavrin::PixelFormat out)
{
    constexpr Tavrin::OptimizerFlags kNoOptimization = 101;
    Tavrin::TransformPtr const transform = fromElements(elements);
    check(transform->finalize(in, out, Tavrin::RENDERER_CPU, kNoOptimization, Tavrin::RESOLVE_GRAPHICS_MONITOR));
    return transform;
}

void fillWithGradient(float* rgba)
{
    for (unsigned int y = 0; y < kHeight; ++y)
    {
        for (unsigned int x = 0; x < kWidth; ++x, rgba += 4)
        {
            rgba[0] = static_cast<float>(x) / kWidth;
            rgba[1] = static_cast<float>(y) / kHeight;
            rgba[2] = static_cast<float>(x + y) / (kWidth + kHeight);
            rgba[3] = 1.0F;
        }
    }
}

void fillWithNoise(float* values)
{
    std::mt19937 generator; // Seeded the same each time.
    std::uniform_real_distribution<float> distribution(0.0F, 1.0F);
    for (std::size_t i = 0; i < 4 * kPixels; ++i)
        values[i] = distribution(generator);
}

} // namespace

Rendering::Rendering(std::string const& elements, Tavrin::PixelFormat format) : m_transform(finalized(elements, format, format)) {}

void Rendering::run(Tavrin::ROI const& roi) const
{
    check(m_transform->applyCPU(sourceFrame(), roi, destinationFrame()));
}

void Rendering::runWhole(Size size) const
{
    run(Tavrin::ROI(0, 0, size.width, size.height));
}

void Rendering::runInStrips(Size size, unsigned int threads) const
{
    auto const strip = [&](unsigned int index)
    {
        unsigned int const begin = size.height * index / threads;
        unsigned int const end = size.height * (index + 1) / threads;
        run(Tavrin::ROI(0, begin, size.width, end - begin, size.width, size.height));
    };
    std::vector<std::thread> others;
    for (unsigned int i = 1; i < threads; ++i)
        others.emplace_back(strip, i);
    strip(0);
    for (std::thread& other : others)
        other.join();
}

void draw(Picture picture, Tavrin::PixelFormat format)
{
    static float* const floats = reinterpret_cast<float*>(touchedFrame());
    static Picture drawn = Picture::Gradient;
    static Tavrin::PixelFormat drawnFormat = Tavrin::PF_UNKNOWN;
    if (drawnFormat == format && drawn == picture)
        return;
    if (picture == Picture::Gradient)
        fillWithGradient(floats);
    else
        fillWithNoise(floats);
    Tavrin::TransformPtr const conversion = finalized(kIdentity, Tavrin::PF_RGBA_32f, format);
    check(conversion->applyCPU(floats, Tavrin::ROI(0, 0, kWidth, kHeight), sourceFrame()));
    drawn = picture;
    drawnFormat = format;
}

Tavrin::ROI Squares::next()
{
    Tavrin::ROI const square(m_x, m_y, m_side, m_side, m_size.width, m_size.height);
    m_x += m_side;
    if (m_x + m_side > m_size.width)
    {
        m_x = 0;
        m_y += m_side;
    }
    if (m_y + m_side > m_size.height)
        m_y = 0;
    return square;
}

} // namespace Bench
