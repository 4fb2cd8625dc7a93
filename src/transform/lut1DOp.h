// A one-dimensional table with a column each for red, green and blue.
#ifndef TAVRIN_TRANSFORM_LUT_1D_OP_H
#define TAVRIN_TRANSFORM_LUT_1D_OP_H

#include "transform/array.h"
#include "transform/indexMapping.h"
#include "transform/op.h"

#include <memory>
#include <string>

namespace Color
{

using Tavrin::HalfFlags;

// Rows are spaced evenly over the input depth, or stand one for each half bit pattern (half domain). Values are in the scale of
// the output depth, so that a change of that depth multiplies them.
class Lut1DOp : public TypedOp<Lut1DOp, Op::OpType::Lut1DOp>
{
public:
    enum class InterpolationAlgo : unsigned int
    {
        Default = 0,
        Linear = 1,
        Cubic = 2
    };

    // What happens to the middle channel after the look-up: nothing, or its place between the other two is kept.
    enum class HueAdjust : unsigned int
    {
        None = 0,
        Dw3 = 1
    };

    // Rows of red, green and blue: row i, component c is value i * 3 + c. There are three columns even when the number of colour
    // components is 1.
    class Lut3by1DArray : public Array
    {
    public:
        // Identities.
        Lut3by1DArray(BitDepth outDepth, HalfFlags halfFlags, unsigned int dimension);
        Lut3by1DArray(BitDepth inDepth, BitDepth outDepth, HalfFlags halfFlags);

        unsigned int getNumValues() const override;
        // Half-domain tables to one unit in the last place of a half, others to a millionth of the depth's range.
        bool isIdentity(HalfFlags halfFlags, BitDepth outDepth) const;

    private:
        void _fill(HalfFlags halfFlags, BitDepth outDepth);
        bool _isHalfIdentity(BitDepth outDepth) const;
        bool _isLinearIdentity(BitDepth outDepth) const;
    };

    // The rows that a half domain asks for.
    static constexpr unsigned int kHalfDomainDimension = 65536;
    // The most rows that a caller or a file may ask for. Tables that are indexed by pixels need 65536.
    static constexpr unsigned int kMaxDimension = 1U << 20U;

    // Identities. The first one is 32f to 32f; the second one has the ideal size for its input depth.
    explicit Lut1DOp(unsigned int dimension);
    Lut1DOp(BitDepth in, BitDepth out, std::string const& id, std::string const& name, Descriptions const& descriptions,
            InterpolationAlgo interpolation, HalfFlags halfFlags);
    Lut1DOp(BitDepth in, BitDepth out, std::string const& id, std::string const& name, Descriptions const& descriptions,
            InterpolationAlgo interpolation, HalfFlags halfFlags, unsigned int dimension);

    // "linear" and "cubic", exactly; anything else, null too, is the default.
    static InterpolationAlgo getInterpolation(char const* name);
    // "default" for every other value.
    static char const* getInterpolationName(InterpolationAlgo interpolation);
    // "none" for every other value.
    static char const* getHueAdjustName(HueAdjust hueAdjust);
    // Rows that give every code of the input depth a row of its own; 65536 for a half domain and for float depths.
    static unsigned int getLutIdealSize(BitDepth inDepth, HalfFlags halfFlags);
    // The value of the half whose bit pattern is the number: its fraction and everything above 16 bits are dropped.
    static float rawHalfToFloat(double number);

    void setOutputBitDepth(BitDepth depth) override;
    void validate() const override;
    // Looks at the table alone.
    bool isIdentity() const override;
    bool operator==(Op const& other) const override;
    // A table with a hue adjustment has none.
    void inverse(OpList& list) const override;
    float getMinimumVersion() const override;

    InterpolationAlgo getInterpolation() const { return m_interpolation; }
    void setInterpolation(InterpolationAlgo interpolation) { m_interpolation = interpolation; }
    HueAdjust getHueAdjust() const { return m_hueAdjust; }
    void setHueAdjust(HueAdjust hueAdjust) { m_hueAdjust = hueAdjust; }

    // The flags say how the table is to be read; setting them leaves the table alone.
    HalfFlags getHalfFlags() const { return m_halfFlags; }
    bool isInputHalfDomain() const { return (m_halfFlags & Tavrin::HALF_FLAGS_INPUT_HALF_DOMAIN) != 0; }
    bool isOutputRawHalfs() const { return (m_halfFlags & Tavrin::HALF_FLAGS_OUTPUT_RAW_HALFS) != 0; }
    void setInputHalfDomain(bool on) { _setHalfFlag(Tavrin::HALF_FLAGS_INPUT_HALF_DOMAIN, on); }
    void setOutputRawHalfs(bool on) { _setHalfFlag(Tavrin::HALF_FLAGS_OUTPUT_RAW_HALFS, on); }

    Lut3by1DArray const& getArray() const { return m_array; }
    Lut3by1DArray& getArray() { return m_array; }
    IndexMapping const& getIndexMapping() const { return m_indexMapping; }
    IndexMapping& getIndexMapping() { return m_indexMapping; }

    // Whether the raw value of a pixel of that depth is a row number.
    bool mayLookup(BitDepth depth) const;
    // An identity table over every value that a pixel of that depth can take, to be composed with this table.
    std::unique_ptr<Lut1DOp> makeLookupDomain(BitDepth depth) const;

private:
    void _setHalfFlag(HalfFlags flag, bool on) { m_halfFlags = on ? m_halfFlags | flag : m_halfFlags & ~flag; }

    InterpolationAlgo m_interpolation;
    Lut3by1DArray m_array;
    IndexMapping m_indexMapping{0};
    HalfFlags m_halfFlags;
    HueAdjust m_hueAdjust = HueAdjust::None;
};

} // namespace Color

#endif
