// Renderers of the 1D table. Whatever can be worked out before is: for every input depth but 32f a pixel's raw value is a row, and
// the table is resampled here so that this is exact.
#include "renderer/CPULut1DOp.h"

#include "renderer/compose.h"
#include "renderer/kernelsTables.h"
#include "renderer/opRenderers.h"
#include "transform/lut1DOp.h"
#include "utils/errorMessage.h"
#include "utils/logger.h"
#include "utils/numerics.h"

#include <Imath/half.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <cstring>

namespace Rendering
{

namespace
{

using Color::BitDepth;
using Color::Lut1DOp;
namespace ErrorIds = Color::ErrorIds;
namespace Module = Color::Module;

// How an input becomes a row, and what an entry of the tables is.
enum class RowRule
{
    LookUp,
    Interpolate,
    HalfCode
};

enum class EntryType
{
    Byte,
    Short,
    Half,
    Float
};

EntryType entryTypeOf(BitDepth outputDepth)
{
    switch (outputDepth)
    {
    case Tavrin::BIT_DEPTH_8i:
        return EntryType::Byte;
    case Tavrin::BIT_DEPTH_10i:
    case Tavrin::BIT_DEPTH_12i:
    case Tavrin::BIT_DEPTH_16i:
        return EntryType::Short;
    case Tavrin::BIT_DEPTH_16f:
        return EntryType::Half;
    case Tavrin::BIT_DEPTH_32f:
        return EntryType::Float;
    case Tavrin::BIT_DEPTH_UNKNOWN:
        break;
    }
    throw Color::failure(ErrorIds::kRendererDepthMissing, Module::kCpuRenderer);
}

void checkLut1D(Lut1DOp const& op)
{
    std::string const& identifier = op.getMeaningfullIdentifier();
    if (op.getInputBitDepth() == Tavrin::BIT_DEPTH_UNKNOWN)
        throw Color::failure(ErrorIds::kRendererAttributeIllegal, Module::kCpuRenderer, identifier, "InputBitDepth");
    if (op.getOutputBitDepth() == Tavrin::BIT_DEPTH_UNKNOWN)
        throw Color::failure(ErrorIds::kRendererAttributeIllegal, Module::kCpuRenderer, identifier, "OutputBitDepth");
    if (op.getInterpolation() == Lut1DOp::InterpolationAlgo::Cubic)
    {
        Color::ErrorMessage const message =
            Color::errorMessage(ErrorIds::kRendererAttributeIllegal, Module::kCpuRenderer, identifier, "Interpolation");
        Color::Logger::log(Color::LOG_DEBUG, "%s", message.getDetailedMessage().c_str());
    }
}

bool isInterpolated(Lut1DOp const& op)
{
    return op.getInputBitDepth() == Tavrin::BIT_DEPTH_32f;
}

// The rows that pixels index: the operator's own, or what it gives for every value that a pixel can take.
std::unique_ptr<Lut1DOp> resampled(Lut1DOp const& op)
{
    if (isInterpolated(op) || op.mayLookup(op.getInputBitDepth()))
        return nullptr;
    std::unique_ptr<Lut1DOp> const domain = op.makeLookupDomain(op.getInputBitDepth());
    Lut1DOp active(op);
    active.setBypass(std::make_shared<Color::BypassDynamicProperty>(false, false)); // The table is wanted when it is off again.
    return Color::TransformTools::compose(*domain, active, Color::TransformTools::ComposeMethod::FirstGrid);
}

// A value as its entry stands for: rounded and clamped where the operator's output is an integer, finite where it is not, and then
// as precise as an entry of that type is.
class EntryValue
{
public:
    EntryValue(BitDepth outputDepth, EntryType precision)
        : m_toInteger(Tavrin::isIntegerDepth(outputDepth)),
          m_min(Tavrin::getBitDepthMinValue(outputDepth)),
          m_max(Tavrin::getBitDepthMaxValue(outputDepth)),
          m_precision(precision)
    {
    }

    float operator()(float value) const
    {
        float const limited = m_toInteger ? _rounded(value) : Foundation::Numerics::sanitizeFloat(value);
        switch (m_precision)
        {
        case EntryType::Byte:
        case EntryType::Short:
            return std::trunc(limited);
        case EntryType::Half:
            return half(limited);
        case EntryType::Float:
            break;
        }
        return limited;
    }

private:
    float _rounded(float value) const
    {
        float const rounded = value + 0.5F;
        return rounded > m_max ? m_max : rounded > m_min ? rounded : m_min;
    }

    bool m_toInteger;
    float m_min;
    float m_max;
    EntryType m_precision;
};

// The three columns as arrays of entries. Columns that are equal, as those of a curve for all channels are, stand in memory once:
// the fewer bytes pixels look into, the more of them are in the fastest cache.
class EntryTables
{
public:
    EntryTables(Color::Array const& rows, EntryType type, EntryValue const& value)
    {
        for (unsigned int column = 0; column < 3; ++column)
        {
            switch (type)
            {
            case EntryType::Byte:
                _fill(column, rows, [&](float v) { return static_cast<std::uint8_t>(value(v)); });
                break;
            case EntryType::Short:
                _fill(column, rows, [&](float v) { return static_cast<std::uint16_t>(value(v)); });
                break;
            case EntryType::Half:
                _fill(column, rows, [&](float v) { return half(value(v)).bits(); });
                break;
            case EntryType::Float:
                _fill(column, rows, value);
                break;
            }
            if (column > 0 && m_columns[column] == m_columns[0])
                m_columns[column] = {};
        }
    }

    void const* operator[](unsigned int column) const
    {
        return m_columns[column].empty() ? m_columns[0].data() : m_columns[column].data();
    }

private:
    // One entry more than there are rows repeats the last one.
    template <class Convert>
    void _fill(unsigned int column, Color::Array const& rows, Convert const& convert)
    {
        using Entry = decltype(convert(0.0F));
        unsigned int const lastRow = rows.getDimension() - 1;
        std::vector<std::byte>& bytes = m_columns[column];
        bytes.resize((std::size_t{lastRow} + 2) * sizeof(Entry));
        for (unsigned int i = 0; i <= lastRow + 1; ++i)
        {
            Entry const entry = convert(rows.get(3 * std::min(i, lastRow) + column));
            std::memcpy(bytes.data() + i * sizeof entry, &entry, sizeof entry);
        }
    }

    std::array<std::vector<std::byte>, 3> m_columns;
};

TableKernel kernelOf(RowRule rule, EntryType type)
{
    switch (rule)
    {
    case RowRule::LookUp:
    {
        static constexpr TableKernel kKernels[] = {TableKernel::LookUpByte, TableKernel::LookUpShort, TableKernel::LookUpHalf,
                                                   TableKernel::LookUpFloat};
        return kKernels[static_cast<int>(type)];
    }
    case RowRule::Interpolate:
        return TableKernel::InterpolateRows;
    case RowRule::HalfCode:
        break;
    }
    return TableKernel::InterpolateHalfs;
}

TableKernel hueAdjustKernelOf(RowRule rule, bool takesHalfCodes)
{
    switch (rule)
    {
    case RowRule::LookUp:
        return takesHalfCodes ? TableKernel::LookUpHalfCodesHueAdjust : TableKernel::LookUpHueAdjust;
    case RowRule::Interpolate:
        return TableKernel::InterpolateRowsHueAdjust;
    case RowRule::HalfCode:
        break;
    }
    return TableKernel::InterpolateHalfsHueAdjust;
}

class Lut1DTableRenderer : public VirtualRenderer
{
public:
    // Rows are the operator's, or those of the table that it was resampled into.
    Lut1DTableRenderer(Lut1DOp const& op, Color::Array const& rows)
        : VirtualRenderer(op),
          m_kind(_kindOf(op)),
          m_inputDepth(op.getInputBitDepth()),
          m_outputDepth(op.getOutputBitDepth()),
          m_rule(_ruleOf(op)),
          m_isHueAdjusted(op.getHueAdjust() != Lut1DOp::HueAdjust::None),
          m_precision(m_isHueAdjusted ? EntryType::Float : entryTypeOf(m_outputDepth)),
          m_entryType(m_rule == RowRule::LookUp ? m_precision : EntryType::Float),
          m_tables(rows, m_entryType, EntryValue(m_outputDepth, m_precision)),
          m_function(getTableKernel(m_isHueAdjusted ? hueAdjustKernelOf(m_rule, m_inputDepth == Tavrin::BIT_DEPTH_16f)
                                                    : kernelOf(m_rule, m_entryType))),
          m_parameters{{m_tables[0], m_tables[1], m_tables[2]},
                       isInterpolated(op) ? 1.0F / Color::Op::getValueStepSize(op.getInputBitDepth(), rows.getDimension()) : 0.0F,
                       static_cast<float>(rows.getDimension() - 1),
                       Tavrin::getBitDepthMaxValue(op.getOutputBitDepth()) / Tavrin::getBitDepthMaxValue(op.getInputBitDepth())}
    {
    }

    RendererKind getOpType() const override { return m_kind; }
    LineKernel prepareLine(LineParameters&) const override
    {
        LineKernel kernel = makeLineKernel(m_function, m_parameters);
        kernel.isChannelwise = !m_isHueAdjusted;
        return kernel;
    }
    bool takesCodes() const override { return m_rule == RowRule::LookUp; }

    Lut1DParameters const* getDirectEntries(BitDepth input, BitDepth output) const override
    {
        return takesCodes() && !m_isHueAdjusted && input == m_inputDepth && output == m_outputDepth ? &m_parameters : nullptr;
    }

private:
    static RowRule _ruleOf(Lut1DOp const& op)
    {
        if (!isInterpolated(op))
            return RowRule::LookUp;
        return op.isInputHalfDomain() ? RowRule::HalfCode : RowRule::Interpolate;
    }

    static RendererKind _kindOf(Lut1DOp const& op)
    {
        if (op.getHueAdjust() != Lut1DOp::HueAdjust::None)
            return op.isInputHalfDomain() ? RendererKind::Lut1DRendererHalfCodeHueAdjust : RendererKind::Lut1DRendererHueAdjust;
        return op.isInputHalfDomain() ? RendererKind::Lut1DRendererHalfCode : RendererKind::Lut1DRenderer;
    }

    RendererKind m_kind;
    BitDepth m_inputDepth;
    BitDepth m_outputDepth;
    RowRule m_rule;
    bool m_isHueAdjusted;
    EntryType m_precision;
    EntryType m_entryType;
    EntryTables m_tables;
    BlockFunction m_function;
    Lut1DParameters m_parameters;
};

} // namespace

void Lut1DRenderer::addAlgorithm(Lut1DOp const& op, TransformProcessor& processor)
{
    checkLut1D(op);
    std::unique_ptr<Lut1DOp> const composed = resampled(op);
    processor.append(std::make_unique<Lut1DTableRenderer>(op, composed ? composed->getArray() : op.getArray()));
}

} // namespace Rendering
