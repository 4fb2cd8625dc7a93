// What it costs to make an inverse 1D table of the fast style ready to render. No file and no public function chooses that style,
// so this is measured inside the library.
#include "renderer/CPURenderer.h"
#include "transform/invLut1DOp.h"
#include "transform/lut1DOp.h"
#include "transform/transform.h"

#include <benchmark/benchmark.h>

#include <cmath>
#include <memory>

namespace
{

using Color::InvLut1DOp;
using Color::Lut1DOp;

// The inverse of a power from 0 to 1, different in each channel, between 32-bit floats.
std::shared_ptr<Color::Transform> inverseOfCurves(unsigned int rows)
{
    Lut1DOp forward(rows);
    for (unsigned int row = 0; row < rows; ++row)
    {
        for (unsigned int component = 0; component < 3; ++component)
        {
            double const power = 1.2 + 0.1 * component;
            forward.getArray().set(3 * row + component, static_cast<float>(std::pow(static_cast<double>(row) / (rows - 1), power)));
        }
    }
    auto inverse = std::make_unique<InvLut1DOp>(forward);
    inverse->setInvStyle(InvLut1DOp::InvStyle::Fast);
    auto transform = std::make_shared<Color::Transform>();
    transform->getOps().append(inverse.release());
    return transform;
}

void finalizeFastInverse(benchmark::State& state, Tavrin::PixelFormat format)
{
    std::shared_ptr<Color::Transform> const transform = inverseOfCurves(static_cast<unsigned int>(state.range(0)));
    for (auto _ : state)
    {
        Rendering::CPURenderer renderer;
        renderer.finalize(transform, format, format);
    }
    state.SetLabel(std::to_string(state.range(0)) + " rows");
}

BENCHMARK_CAPTURE(finalizeFastInverse, RGBA32f, Tavrin::PF_RGBA_32f)->Arg(4096)->Arg(65536)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(finalizeFastInverse, RGBA16i, Tavrin::PF_RGBA_16i)->Arg(4096)->Arg(65536)->Unit(benchmark::kMillisecond);

} // namespace
