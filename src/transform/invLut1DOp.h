// The inverse of a one-dimensional table.
#ifndef TAVRIN_TRANSFORM_INV_LUT_1D_OP_H
#define TAVRIN_TRANSFORM_INV_LUT_1D_OP_H

#include "transform/lut1DOp.h"

#include <array>

namespace Color
{

// Holds the forward table, which it evaluates backwards: values are in the scale of the input depth.
class InvLut1DOp : public TypedOp<InvLut1DOp, Op::OpType::InvLut1DOp, Lut1DOp>
{
public:
    // Exact searches the table for every pixel; fast resamples the exact inverse into a forward table once.
    enum class InvStyle : unsigned int
    {
        Exact = 0,
        Fast = 1
    };

    // What a search needs to know about a column. Rows before startDomain and after endDomain repeat the values at these rows.
    struct ComponentProperties
    {
        bool isIncreasing = false;
        unsigned int startDomain = 0;
        unsigned int endDomain = 0;
    };

    // Two rows, 32f to 32f; whoever fills the table calls initializeFromLut1D.
    InvLut1DOp();
    // Depths exchanged. Throws for a half domain.
    explicit InvLut1DOp(Lut1DOp const& forward);

    // "exact" and "fast" in any case; throws on anything else.
    static InvStyle getInvStyle(char const* name);
    // Empty for every other value.
    static char const* getInvStyleName(InvStyle style);

    // Multiplies the table.
    void setInputBitDepth(BitDepth depth) override;
    // Leaves the table alone.
    void setOutputBitDepth(BitDepth depth) override;
    // Appends a forward table of the values held here, which are monotonic.
    void inverse(OpList& list) const override;

    InvStyle getInvStyle() const { return m_invStyle; }
    void setInvStyle(InvStyle style) { m_invStyle = style; }

    // One record per colour component, of zeros until initializeFromLut1D.
    std::array<ComponentProperties, 3> const& getComponentProperties() const { return m_componentProperties; }
    // Whether values reach outside the range of the input depth.
    bool hasExtendedDomain() const;

    // Makes the columns monotonic and describes them; to be called once the table is complete. Throws for a half domain.
    void initializeFromLut1D();

private:
    void _prepareArray();
    ComponentProperties _prepareComponent(unsigned int component);

    InvStyle m_invStyle = InvStyle::Exact;
    std::array<ComponentProperties, 3> m_componentProperties{};
};

} // namespace Color

#endif
