// What the benchmarks share: frames of one size in memory, transforms built for them, and how a case is registered.
#ifndef TAVRIN_BENCH_FRAME_H
#define TAVRIN_BENCH_FRAME_H

#include <tavrin/tavrin.h>

#include <cstddef>
#include <functional>
#include <string>

namespace Bench
{

constexpr unsigned int kWidth = 3840;
constexpr unsigned int kHeight = 2160;
constexpr std::size_t kPixels = std::size_t{kWidth} * kHeight;

// Two buffers that hold a frame of any format, page-aligned and touched; they live to the end of the program.
unsigned char* sourceFrame();
unsigned char* destinationFrame();

// Fills the source frame with codes over the whole range of the format, or floats from 0 to 1.
void fillSource(Tavrin::PixelFormat format);

// The transform of a document, or an exit with its message.
Tavrin::TransformPtr fromDocument(std::string const& document);

enum class Placement
{
    Separate,
    InPlace
};

// One transform over the frame. Names read "area/what/formats". The optimizer merges nothing.
void addRender(std::string const& name, Tavrin::TransformPtr const& transform, Tavrin::PixelFormat in, Tavrin::PixelFormat out,
               Placement placement = Placement::Separate);

// A call whose time does not depend on a frame and that has to succeed.
void addCall(std::string const& name, std::function<Tavrin::TavStatus()> const& call);

// Finalize, whose time does not depend on a frame, with these optimizer flags.
void addFinalize(std::string const& name, Tavrin::TransformPtr const& transform, Tavrin::OptimizerFlags flags);

// Any work on a frame of the format; for peers. Prepare runs once, untimed, before the work does.
void addWork(std::string const& name, Tavrin::PixelFormat format, std::function<void()> const& prepare,
             std::function<void()> const& work);

// "RGBA32f to RGBA8i", for names.
std::string formatNames(Tavrin::PixelFormat in, Tavrin::PixelFormat out);

} // namespace Bench

#endif
