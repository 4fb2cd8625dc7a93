// Renderers of the inverse 1D table: an exact search, or the resampled table of the fast style.
#include "renderer/CPUInvLut1DOp.h"

#include "renderer/CPUMatrixOp.h"
#include "renderer/invLutUtil.h"
#include "renderer/kernelsArithmetic.h"
#include "renderer/kernelsTables.h"
#include "renderer/opRenderers.h"
#include "transform/invLut1DOp.h"

#include <algorithm>
#include <array>
#include <bit>
#include <vector>

namespace Rendering
{

namespace
{

using Color::InvLut1DOp;

// Values below the range times 2^-16 share the first bucket of the index.
constexpr int kInverseIndexOctaves = 16;

std::int32_t indexNumber(float offset)
{
    return std::bit_cast<std::int32_t>(offset) >> kInverseIndexShift;
}

// The memory behind one InverseColumn.
class SearchTable
{
public:
    SearchTable(InvLut1DOp const& op, unsigned int component)
        : m_properties(op.getComponentProperties()[component]), m_flipSign(m_properties.isIncreasing ? 1.0F : -1.0F)
    {
        m_values.reserve(std::size_t{m_properties.endDomain} - m_properties.startDomain + 1);
        for (unsigned int row = m_properties.startDomain; row <= m_properties.endDomain; ++row)
            m_values.push_back(op.getArray().get(3 * row + component) * m_flipSign);
        _buildIndex();
    }

    InverseColumn column() const
    {
        return {m_values.data(),
                m_starts.data(),
                m_values.front(),
                m_values.back(),
                m_flipSign,
                static_cast<float>(m_properties.startDomain),
                static_cast<std::int32_t>(m_values.size()) - 1,
                m_lowestNumber,
                m_lastBucket,
                m_steps};
    }

private:
    void _buildIndex()
    {
        float const range = m_values.back() - m_values.front();
        std::int32_t const highestNumber = std::max(indexNumber(range), 1);
        m_lowestNumber = std::max(highestNumber - kInverseIndexOctaves * (1 << (23 - kInverseIndexShift)), 1);
        m_lastBucket = highestNumber - m_lowestNumber + 1;

        std::int32_t const lastRow = static_cast<std::int32_t>(m_values.size()) - 1;
        m_starts.reserve(static_cast<std::size_t>(m_lastBucket) + 2);
        std::int32_t row = 0;
        for (std::int32_t bucket = 0; bucket <= m_lastBucket + 1; ++bucket)
        {
            while (row < lastRow && _bucketOf(m_values[static_cast<std::size_t>(row)]) < bucket)
                ++row;
            m_starts.push_back(row);
        }
        std::int32_t largest = 0;
        for (std::size_t bucket = 0; bucket + 1 < m_starts.size(); ++bucket)
            largest = std::max(largest, m_starts[bucket + 1] - m_starts[bucket]);
        m_steps = std::bit_width(static_cast<std::uint32_t>(largest));
    }

    // The same reckoning as the kernel's.
    std::int32_t _bucketOf(float value) const
    {
        return std::clamp(indexNumber(value - m_values.front()) - (m_lowestNumber - 1), 0, m_lastBucket);
    }

    InvLut1DOp::ComponentProperties m_properties;
    float m_flipSign;
    std::vector<float> m_values;
    std::vector<std::int32_t> m_starts;
    std::int32_t m_lowestNumber = 0;
    std::int32_t m_lastBucket = 0;
    std::int32_t m_steps = 0;
};

// Tables of a half domain are refused where an inverse is made of them; should one arrive all the same, colours pass as they are.
void appendHalfCode(InvLut1DOp const& op, TransformProcessor& processor)
{
    float const alphaScale =
        Tavrin::getBitDepthMaxValue(op.getOutputBitDepth()) / Tavrin::getBitDepthMaxValue(op.getInputBitDepth());
    processor.append(std::make_unique<StaticRenderer<RendererKind::InvLut1DRendererHalfCode, ScaleParameters>>(
        op, getArithmeticKernel(ArithmeticKernel::Scale), ScaleParameters{{1.0F, 1.0F, 1.0F, alphaScale}}));
}

class ExactInverseRenderer : public VirtualRenderer
{
public:
    explicit ExactInverseRenderer(InvLut1DOp const& op)
        : VirtualRenderer(op), m_function(getTableKernel(TableKernel::SearchInverse))
    {
        // With one colour component one table serves all three channels.
        unsigned int const components = op.getArray().getNumColorComponents() == 1 ? 1 : 3;
        m_tables.reserve(components);
        for (unsigned int i = 0; i < components; ++i)
            m_tables.emplace_back(op, i);
        for (unsigned int i = 0; i < 3; ++i)
            m_parameters.column[i] = m_tables[components == 1 ? 0 : i].column();
        float const outMax = Tavrin::getBitDepthMaxValue(op.getOutputBitDepth());
        m_parameters.scale = outMax / static_cast<float>(op.getArray().getDimension() - 1);
        m_parameters.alphaScale = outMax / Tavrin::getBitDepthMaxValue(op.getInputBitDepth());
    }

    RendererKind getOpType() const override { return RendererKind::InvLut1DRenderer; }
    LineKernel prepareLine(LineParameters&) const override { return makeLineKernel(m_function, m_parameters); }

private:
    BlockFunction m_function;
    std::vector<SearchTable> m_tables;
    InvLut1DParameters m_parameters;
};

} // namespace

void InvLut1DRenderer::addAlgorithm(InvLut1DOp const& op, TransformProcessor& processor)
{
    if (op.getInvStyle() == InvLut1DOp::InvStyle::Fast)
        return Lut1DRenderer::addAlgorithm(*InvLutUtil::makeFastLut1D(op, false), processor);
    if (op.isInputHalfDomain())
        return appendHalfCode(op, processor);
    processor.append(std::make_unique<ExactInverseRenderer>(op));
}

} // namespace Rendering
