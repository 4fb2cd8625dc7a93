// Frames and the registration of cases.
#include "frame.h"

#include <benchmark/benchmark.h>

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace Bench
{

namespace
{

constexpr std::size_t kFrameBytes = kPixels * 16;

unsigned char* touchedFrame()
{
    unsigned char* const frame = static_cast<unsigned char*>(std::aligned_alloc(4096, kFrameBytes));
    if (frame == nullptr)
        std::abort();
    std::memset(frame, 1, kFrameBytes);
    return frame;
}

void check(Tavrin::TavStatus const& status)
{
    if (status)
        return;
    std::fprintf(stderr, "%s\n", status.getErrorMessage());
    std::exit(1);
}

// 0 to 1 in steps that do not repeat with the rows.
float rampValue(std::size_t i)
{
    return static_cast<float>(i % 1021) / 1020.0F;
}

// The half pattern of a value from 0 to 1, truncated; good enough to fill a frame.
std::uint16_t halfBits(float value)
{
    std::uint32_t bits;
    std::memcpy(&bits, &value, sizeof bits);
    return value < 6.2e-5F ? 0 : static_cast<std::uint16_t>((bits - 0x38000000U) >> 13);
}

void setCounters(benchmark::State& state, std::size_t bytes)
{
    state.SetItemsProcessed(static_cast<std::int64_t>(state.iterations() * kPixels));
    state.counters["bytes"] = static_cast<double>(bytes);
}

} // namespace

unsigned char* sourceFrame()
{
    static unsigned char* const frame = touchedFrame();
    return frame;
}

unsigned char* destinationFrame()
{
    static unsigned char* const frame = touchedFrame();
    return frame;
}

void fillSource(Tavrin::PixelFormat format)
{
    std::size_t const bytes = kPixels * Tavrin::getPixelSizeInByte(format);
    unsigned int const depth = format & 0xff000U;
    for (std::size_t i = 0; depth == Tavrin::BIT_DEPTH_32f && i < bytes / 4; ++i)
        reinterpret_cast<float*>(sourceFrame())[i] = rampValue(i);
    for (std::size_t i = 0; depth == Tavrin::BIT_DEPTH_16f && i < bytes / 2; ++i)
        reinterpret_cast<std::uint16_t*>(sourceFrame())[i] = halfBits(rampValue(i));
    for (std::size_t i = 0; depth < Tavrin::BIT_DEPTH_16f && i < bytes; ++i)
        sourceFrame()[i] = static_cast<unsigned char>(i * 7 + (i >> 10));
}

Tavrin::TransformPtr fromDocument(std::string const& document)
{
    Tavrin::TransformPtr transform;
    check(Tavrin::loadColorTransformFromBuffer(document.c_str(), transform));
    return transform;
}

std::string formatNames(Tavrin::PixelFormat in, Tavrin::PixelFormat out)
{
    auto const name = [](Tavrin::PixelFormat format)
    {
        std::string text = std::string(Tavrin::pfToStr(format)).substr(3);
        text.erase(text.find('_'), 1);
        return text;
    };
    return name(in) + (in == out ? "" : " to " + name(out));
}

void addRender(std::string const& name, Tavrin::TransformPtr const& transform, Tavrin::PixelFormat in, Tavrin::PixelFormat out,
               Placement placement)
{
    bool const inPlace = placement == Placement::InPlace;
    std::string const fullName = name + "/" + formatNames(in, out) + (inPlace ? " in place" : "");
    benchmark::RegisterBenchmark(
        fullName.c_str(),
        [=](benchmark::State& state)
        {
            constexpr Tavrin::OptimizerFlags kNoOptimization = 101;
            check(transform->finalize(in, out, Tavrin::RENDERER_CPU, kNoOptimization, Tavrin::RESOLVE_GRAPHICS_MONITOR));
            fillSource(in);
            unsigned char* const destination = inPlace ? sourceFrame() : destinationFrame();
            Tavrin::ROI const roi(0, 0, kWidth, kHeight);
            for (auto _ : state)
                check(transform->applyCPU(sourceFrame(), roi, destination));
            setCounters(state, Tavrin::getPixelSizeInByte(out));
        });
}

void addCall(std::string const& name, std::function<Tavrin::TavStatus()> const& call)
{
    benchmark::RegisterBenchmark(name.c_str(),
                                 [=](benchmark::State& state)
                                 {
                                     for (auto _ : state)
                                         check(call());
                                 });
}

void addFinalize(std::string const& name, Tavrin::TransformPtr const& transform, Tavrin::OptimizerFlags flags)
{
    addCall(name + ", threshold " + std::to_string(flags),
            [=]
            {
                return transform->finalize(Tavrin::PF_RGBA_32f, Tavrin::PF_RGBA_32f, Tavrin::RENDERER_CPU, flags,
                                           Tavrin::RESOLVE_GRAPHICS_MONITOR);
            });
}

void addWork(std::string const& name, Tavrin::PixelFormat format, std::function<void()> const& prepare,
             std::function<void()> const& work)
{
    std::string const fullName = name + "/" + formatNames(format, format);
    benchmark::RegisterBenchmark(fullName.c_str(),
                                 [=](benchmark::State& state)
                                 {
                                     fillSource(format);
                                     prepare();
                                     for (auto _ : state)
                                         work();
                                     setCounters(state, Tavrin::getPixelSizeInByte(format));
                                 });
}

} // namespace Bench
