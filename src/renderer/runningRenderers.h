// A row of renderers with what holds for the lines that are being rendered.
#ifndef TAVRIN_RENDERER_RUNNING_RENDERERS_H
#define TAVRIN_RENDERER_RUNNING_RENDERERS_H

#include "renderer/virtualRenderer.h"

#include <tavrin/vocabulary.h>

#include <boost/container/small_vector.hpp>

#include <cstddef>
#include <optional>
#include <vector>

namespace Rendering
{

// What a renderer does, and with which parameters.
struct Work
{
    BlockFunction function;
    void const* parameters;

    bool operator==(Work const&) const = default;
};

struct RunningRenderer
{
    LineKernel kernel = {};
    LineParameters parameters;
    // Some later renderer, or the destination, takes the alpha that this one gives.
    bool alphaIsRead;

    Work work() const { return {kernel.function, kernel.parameters}; }
    Outputs outputs() const { return alphaIsRead && !kernel.keepsAlpha ? Outputs::ColorsAndAlpha : Outputs::Colors; }
};

// Those of one call of the engine. Allocates nothing unless the row is uncommonly long.
class RunningRenderers
{
public:
    RunningRenderers(TransformProcessor const& renderers, Tavrin::PixelFormat in, Tavrin::PixelFormat out);

    std::size_t size() const { return m_running.size(); }

    // Reads dynamic values, for the next lines. Whether anything is other than for the lines before.
    bool prepareLines();

    // What holds for the lines that were prepared. Whether the first renderer wants colours as codes:
    bool takesCodes() const { return m_takesCodes; }
    // How many renderers, from the first on, see each channel for itself:
    std::size_t channelwise() const;
    // And how many of these do so with parameters that are the same for all lines:
    std::size_t lasting() const;
    // What the first so many do:
    std::vector<Work> work(std::size_t renderers) const;
    // Whether it is this that the first ones do:
    bool beginWith(std::vector<Work> const& work) const;
    // Whether somebody reads the alpha that the first so many leave; there are some:
    bool isAlphaReadBehind(std::size_t renderers) const { return m_running[renderers - 1].alphaIsRead; }
    // Whether the first so many have little to do:
    bool areCheap(std::size_t renderers) const;
    // What a lone renderer that treats all channels alike does to the elements of a line, from some place on:
    std::optional<ElementArithmetic> getElementArithmetic(unsigned int channels, ImagePosition position) const;

    // Runs some of them, one after the other, over the first pixels of a block.
    void run(std::size_t begin, std::size_t end, Block& block, unsigned int count, ImagePosition position) const
    {
        for (std::size_t i = begin; i < end; ++i)
            m_running[i].kernel.function(m_running[i].kernel.parameters, block, count, position, m_running[i].outputs());
    }

private:
    void _findReadersOfAlpha(Tavrin::PixelFormat out);
    LineKernel _prepareBypassed(std::size_t index, LineParameters& room) const;

    TransformProcessor const& m_renderers;
    float m_inRange;
    float m_outRange;
    BlockFunction m_scale;
    boost::container::small_vector<RunningRenderer, 16> m_running;
    bool m_takesCodes = false;
};

} // namespace Rendering

#endif
