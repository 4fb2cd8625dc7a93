// What each renderer of a row does for the next lines, and what it may leave out.
#include "renderer/runningRenderers.h"

#include "renderer/CPUMatrixOp.h"
#include "renderer/kernelsArithmetic.h"
#include "renderer/pixelLayout.h"
#include "utils/utils.h"

#include <algorithm>

namespace Rendering
{

RunningRenderers::RunningRenderers(TransformProcessor const& renderers, Tavrin::PixelFormat in, Tavrin::PixelFormat out)
    : m_renderers(renderers),
      m_inRange(Tavrin::getBitDepthValueRange(Color::Utils::depthOf(in))),
      m_outRange(Tavrin::getBitDepthValueRange(Color::Utils::depthOf(out))),
      m_scale(getArithmeticKernel(ArithmeticKernel::Scale)),
      m_running(renderers.size(), boost::container::default_init)
{
    _findReadersOfAlpha(out);
}

// What the first renderer wants is asked for; a bypassed one takes values.
bool RunningRenderers::prepareLines()
{
    bool areOther = false;
    for (std::size_t i = 0; i < m_running.size(); ++i)
    {
        RunningRenderer& running = m_running[i];
        bool const isBypassed = m_renderers[i].isBypassed();
        LineKernel const kernel =
            isBypassed ? _prepareBypassed(i, running.parameters) : m_renderers[i].prepareLine(running.parameters);
        bool const hasOtherParameters = running.parameters.takeChange();
        if (hasOtherParameters || Work{kernel.function, kernel.parameters} != running.work())
        {
            running.kernel = kernel;
            areOther = true;
        }
        if (i == 0)
            m_takesCodes = !isBypassed && m_renderers[i].takesCodes();
    }
    return areOther;
}

std::size_t RunningRenderers::channelwise() const
{
    auto const end = std::find_if_not(m_running.begin(), m_running.end(),
                                      [](RunningRenderer const& running) { return running.kernel.isChannelwise; });
    return static_cast<std::size_t>(end - m_running.begin());
}

std::size_t RunningRenderers::lasting() const
{
    auto const end = std::find_if_not(m_running.begin(), m_running.end(),
                                      [](RunningRenderer const& running)
                                      { return running.kernel.isChannelwise && running.parameters.isEmpty(); });
    return static_cast<std::size_t>(end - m_running.begin());
}

std::vector<Work> RunningRenderers::work(std::size_t renderers) const
{
    std::vector<Work> work(renderers);
    std::transform(m_running.begin(), m_running.begin() + static_cast<std::ptrdiff_t>(renderers), work.begin(),
                   [](RunningRenderer const& running) { return running.work(); });
    return work;
}

bool RunningRenderers::beginWith(std::vector<Work> const& work) const
{
    return std::equal(work.begin(), work.end(), m_running.begin(),
                      [](Work const& each, RunningRenderer const& running) { return each == running.work(); });
}

bool RunningRenderers::areCheap(std::size_t renderers) const
{
    return std::all_of(m_running.begin(), m_running.begin() + static_cast<std::ptrdiff_t>(renderers),
                       [](RunningRenderer const& running) { return running.kernel.isCheap; });
}

std::optional<ElementArithmetic> RunningRenderers::getElementArithmetic(unsigned int channels, ImagePosition position) const
{
    if (m_running.size() != 1 || m_running[0].kernel.elementArithmetic == nullptr)
        return std::nullopt;
    LineKernel const& kernel = m_running[0].kernel;
    return kernel.elementArithmetic(kernel.parameters, channels, position);
}

void RunningRenderers::_findReadersOfAlpha(Tavrin::PixelFormat out)
{
    bool isRead = hasAlpha(layoutOf(out));
    for (std::size_t i = m_running.size(); i-- > 0;)
    {
        m_running[i].alphaIsRead = isRead;
        isRead = isRead || m_renderers[i].mixesAlpha();
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
