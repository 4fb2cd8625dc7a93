// What each renderer of a row does for the next lines, and what it may leave out.
#include "renderer/runningRenderers.h"

#include "renderer/CPUMatrixOp.h"
#include "renderer/kernelsArithmetic.h"
#include "renderer/kernelsFormats.h"
#include "renderer/pixelLayout.h"
#include "utils/utils.h"

#include <algorithm>

namespace Rendering
{

RunningRenderers::RunningRenderers(TransformProcessor const& renderers, PixelFormat in, PixelFormat out, unsigned int width)
    : m_renderers(renderers),
      m_missingAlpha(getMissingAlpha(in)),
      m_inRange(Tavrin::getBitDepthValueRange(Color::Utils::depthOf(in))),
      m_outRange(Tavrin::getBitDepthValueRange(Color::Utils::depthOf(out))),
      m_scale(getArithmeticKernel(ArithmeticKernel::Scale)),
      m_running(renderers.size(), boost::container::default_init)
{
    _findReadersOfAlpha(out);
    _findUniformAlpha(in, width);
}

// What the first renderer wants is asked for; a bypassed one takes values.
bool RunningRenderers::prepareLines()
{
    bool isOther = false;
    for (std::size_t i = 0; i < m_running.size(); ++i)
    {
        RunningRenderer& running = m_running[i];
        bool const isBypassed = m_renderers[i].isBypassed();
        LineKernel const kernel =
            isBypassed ? _prepareBypassed(i, running.parameters) : m_renderers[i].prepareLine(running.parameters);
        isOther |= kernel.function != running.kernel.function || kernel.parameters != running.kernel.parameters;
        isOther |= running.parameters.takeChange();
        running.kernel = kernel;
        if (i == 0)
            m_takesCodes = !isBypassed && m_renderers[i].takesCodes();
    }
    return isOther;
}

std::size_t RunningRenderers::channelwise() const
{
    auto const end = std::find_if_not(m_running.begin(), m_running.end(),
                                      [](RunningRenderer const& running) { return running.kernel.isChannelwise; });
    return static_cast<std::size_t>(end - m_running.begin());
}

std::optional<ElementArithmetic> RunningRenderers::getElementArithmetic(unsigned int channels, ImagePosition position) const
{
    if (m_running.size() != 1 || m_running[0].kernel.elementArithmetic == nullptr)
        return std::nullopt;
    LineKernel const& kernel = m_running[0].kernel;
    return kernel.elementArithmetic(kernel.parameters, channels, position);
}

float RunningRenderers::reckonUniformAlpha(Block& block) const
{
    std::fill_n(block.alpha, Block::kPixels, m_missingAlpha);
    for (RunningRenderer const& running : m_running)
    {
        if (running.alphaIsUniform && running.changesAlpha())
            running.kernel.function(running.kernel.parameters, block, 1, {0, 0}, Outputs::ColorsAndAlpha);
    }
    return block.alpha[0];
}

void RunningRenderers::_findReadersOfAlpha(PixelFormat out)
{
    bool isRead = hasAlpha(layoutOf(out));
    for (std::size_t i = m_running.size(); i-- > 0;)
    {
        m_running[i].alphaIsRead = isRead;
        isRead = isRead || m_renderers[i].mixesAlpha();
    }
}

// A format without alpha gives all pixels the same one. In lines of a block or less there is nothing to win by that.
void RunningRenderers::_findUniformAlpha(PixelFormat in, unsigned int width)
{
    bool isUniform = !hasAlpha(layoutOf(in)) && width > Block::kPixels;
    for (std::size_t i = 0; i < m_running.size(); ++i)
    {
        isUniform = isUniform && !m_renderers[i].mixesAlpha() && !m_renderers[i].dependsOnPosition();
        m_running[i].alphaIsUniform = isUniform;
    }
}

// A renderer that is bypassed still makes the change of depth that its place asks for.
LineKernel RunningRenderers::_prepareBypassed(std::size_t index, LineParameters& room) const
{
    float const floatRange = Tavrin::getBitDepthValueRange(Tavrin::BIT_DEPTH_32f);
    float const scale = (index + 1 == m_running.size() ? m_outRange : floatRange) / (index == 0 ? m_inRange : floatRange);
    return makeLineKernel(m_scale, room.hold(ScaleParameters{{scale, scale, scale, scale}}));
}

} // namespace Rendering
