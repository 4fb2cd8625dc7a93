// Operators with the parameters that they have in practice, as renderers between two formats.
#ifndef TAVRIN_BENCH_KERNELS_SAMPLES_H
#define TAVRIN_BENCH_KERNELS_SAMPLES_H

#include "renderer/CPURenderer.h"

#include <string>
#include <vector>

namespace Bench
{

// An element of a transform file, between floats.
std::string element(std::string const& tag, std::string const& attributes = "", std::string const& content = "");

// The renderers of the elements, none simplified away; an element that leaves nothing to do ends the program.
Rendering::Pipeline pipelineOf(std::string const& elements, Tavrin::PixelFormat in, Tavrin::PixelFormat out);

// Some elements of which there is more than one use.
std::string matrixElement();
std::string curveElement(std::string const& attributes = "");
std::string logToLinElement();
std::string gridElement(unsigned int points, std::string const& interpolation);
std::string exposureElement();

struct Sample
{
    std::string elements;
    Tavrin::PixelFormat in;
    Tavrin::PixelFormat out;
};

// A renderer for every kernel.
std::vector<Sample> kernelSamples();

} // namespace Bench

#endif
