// How a case of tavrinBench is registered.
#ifndef TAVRIN_BENCH_CASES_H
#define TAVRIN_BENCH_CASES_H

#include "shared/frame.h"
#include "shared/tables.h"

#include <functional>
#include <string>

namespace Bench
{

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

// A frame of the format, copied.
void addCopy(Tavrin::PixelFormat format);

} // namespace Bench

#endif
