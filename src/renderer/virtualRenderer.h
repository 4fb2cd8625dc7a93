// One operator, ready to run over pixels.
#ifndef TAVRIN_RENDERER_VIRTUAL_RENDERER_H
#define TAVRIN_RENDERER_VIRTUAL_RENDERER_H

#include "renderer/block.h"
#include "renderer/elementArithmetic.h"
#include "transform/op.h"

#include <tavrin/vocabulary.h>

#include <cstddef>
#include <cstring>
#include <memory>
#include <optional>
#include <type_traits>
#include <utility>
#include <vector>

namespace Rendering
{

enum class RendererKind : unsigned int
{
#define TAVRIN_RENDERER_KIND(number, name) name = number,
#include "renderer/rendererKinds.def"
#undef TAVRIN_RENDERER_KIND
};

// The number of kinds. A kind is known by its class's name.
inline constexpr unsigned int kRendererKinds = 37;
char const* getRendererKindName(RendererKind kind);

// What parameters do to the elements of a line of so many channels from some place on; nothing where channels differ.
using ElementArithmeticFunction = std::optional<ElementArithmetic> (*)(void const* parameters, unsigned int channels,
                                                                       ImagePosition position);

// Arithmetic with its parameters, for a line of pixels, or for a few short ones.
struct LineKernel
{
    BlockFunction function;
    void const* parameters;
    // Alpha comes out as it goes in.
    bool keepsAlpha = false;
    // Each channel follows from itself alone, wherever the pixel stands.
    bool isChannelwise = false;
    // Takes no more time than a look-up of its results.
    bool isCheap = false;
    // Null where channels are never alike.
    ElementArithmeticFunction elementArithmetic = nullptr;
};

// Parameters may tell that they keep alpha, that channels do not know each other, that there is little to do, or what they do to
// elements; of those that do not the contrary is taken.
template <class Parameters>
LineKernel makeLineKernel(BlockFunction function, Parameters const& parameters)
{
    LineKernel kernel{function, &parameters};
    if constexpr (requires { parameters.keepsAlpha(); })
        kernel.keepsAlpha = parameters.keepsAlpha();
    if constexpr (requires { Parameters::kIsChannelwise; })
        kernel.isChannelwise = true;
    if constexpr (requires { Parameters::kIsCheap; })
        kernel.isCheap = true;
    if constexpr (requires { parameters.getElementArithmetic(0U, ImagePosition()); })
        kernel.elementArithmetic = [](void const* p, unsigned int channels, ImagePosition position)
        { return static_cast<Parameters const*>(p)->getElementArithmetic(channels, position); };
    return kernel;
}

// Room for parameters that hold for those lines only, since they follow from dynamic values.
class LineParameters
{
public:
    // Puts a copy into the room and returns it.
    template <class Parameters>
    Parameters const& hold(Parameters const& parameters)
    {
        static_assert(sizeof(Parameters) <= sizeof m_bytes && std::is_trivially_copyable_v<Parameters>);
        // Of other bits are other parameters. NOLINTNEXTLINE(bugprone-suspicious-memory-comparison)
        m_isOther = m_size != sizeof parameters || std::memcmp(m_bytes, &parameters, sizeof parameters) != 0;
        m_size = sizeof parameters;
        return *::new (static_cast<void*>(m_bytes)) Parameters(parameters);
    }

    // Whether nothing was ever put there.
    bool isEmpty() const { return m_size == 0; }

    // Whether the last copy differed from the one before, if there was one since this was asked.
    bool takeChange() { return std::exchange(m_isOther, false); }

private:
    alignas(16) std::byte m_bytes[256];
    std::size_t m_size = 0;
    bool m_isOther = false;
};

struct Lut1DParameters;

// Holds an operator's parameters in the form that the pixel loops want. Built once by finalize and read-only afterwards, except for
// the dynamic properties that it shares with its operator.
class VirtualRenderer
{
public:
    // The operator need not outlive the renderer.
    explicit VirtualRenderer(Color::Op const& op) : m_bypass(op.getBypass()) {}
    VirtualRenderer(VirtualRenderer const&) = delete;
    VirtualRenderer& operator=(VirtualRenderer const&) = delete;
    virtual ~VirtualRenderer() = default;

    virtual RendererKind getOpType() const = 0;

    // What runs over the next line, or over the next few that are rendered together. Dynamic values are read here and hold for all
    // of them.
    virtual LineKernel prepareLine(LineParameters& room) const = 0;

    // Whether colours are wanted as codes, as a table that they index does, and not as values. Only the first renderer is asked.
    virtual bool takesCodes() const;

    // Tables with a row for every code of the one depth, if their entries are just what pixels of the other store. When the
    // renderer is the only one, they go straight from the tables into the destination, and its kernel has nothing to do. Null if
    // there are none.
    virtual Lut1DParameters const* getDirectEntries(Tavrin::BitDepth input, Tavrin::BitDepth output) const;

    // Whether colours and alpha follow from each other.
    virtual bool mixesAlpha() const;

    // Whether pixels follow from where they stand in the image, so that a block has to hold those of one line.
    virtual bool dependsOnPosition() const;

    // Whether the next line is only to change its depth.
    bool isBypassed() const { return m_bypass->getValue(); }

private:
    std::shared_ptr<Color::BypassDynamicProperty> m_bypass;
};

// The renderers of one transform, in order.
class TransformProcessor
{
public:
    void append(std::unique_ptr<VirtualRenderer> renderer) { m_renderers.push_back(std::move(renderer)); }
    void clear() { m_renderers.clear(); }
    std::size_t size() const { return m_renderers.size(); }
    bool empty() const { return m_renderers.empty(); }
    VirtualRenderer const& operator[](std::size_t index) const { return *m_renderers[index]; }

private:
    std::vector<std::unique_ptr<VirtualRenderer>> m_renderers;
};

// A renderer whose parameters never change after finalize.
template <RendererKind kKind, class Parameters>
class StaticRenderer : public VirtualRenderer
{
public:
    StaticRenderer(Color::Op const& op, BlockFunction function, Parameters const& parameters)
        : VirtualRenderer(op), m_function(function), m_parameters(parameters)
    {
    }

    RendererKind getOpType() const override { return kKind; }
    LineKernel prepareLine(LineParameters&) const override { return makeLineKernel(m_function, m_parameters); }
    bool mixesAlpha() const override
    {
        return requires
        {
            Parameters::kMixesAlpha;
        };
    }

protected:
    Parameters const& getParameters() const { return m_parameters; }

private:
    BlockFunction m_function;
    Parameters m_parameters;
};

} // namespace Rendering

#endif
