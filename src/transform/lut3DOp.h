// A three-dimensional table over red, green and blue on a cubic grid.
#ifndef TAVRIN_TRANSFORM_LUT_3D_OP_H
#define TAVRIN_TRANSFORM_LUT_3D_OP_H

#include "transform/array.h"
#include "transform/indexMapping.h"
#include "transform/op.h"

#include <string>

namespace Color
{

// Grid points are spaced evenly over the input depth; values are in the scale of the output depth. There is no inverse.
class Lut3DOp : public TypedOp<Lut3DOp, Op::OpType::Lut3DOp>
{
public:
    enum class InterpolationAlgo : unsigned int
    {
        Default = 0,
        Trilinear = 1,
        Tetrahedral = 2,
        FourPointTetrahedral = 3
    };

    // Blue varies fastest and red slowest: the entry (r, g, b) of red, green and blue starts at
    // ((r * dimension + g) * dimension + b) * 3.
    class Lut3DArray : public Array
    {
    public:
        // An identity.
        Lut3DArray(BitDepth outDepth, unsigned int dimension);
        // Dimension, component count and values of any array.
        using Array::operator=;

        unsigned int getNumValues() const override;
        // To 0.0001 of a code value, whatever the depth.
        bool isIdentity(BitDepth outDepth) const;

    private:
        void _fill(BitDepth outDepth);
    };

    // Grid points per axis that a valid operator has at most.
    static constexpr unsigned int maxSupportedDimension = 129;

    // Identities. The first one is 32f to 32f.
    explicit Lut3DOp(unsigned int dimension);
    Lut3DOp(BitDepth in, BitDepth out, std::string const& id, std::string const& name, Descriptions const& descriptions,
            InterpolationAlgo interpolation, unsigned int dimension);

    // "trilinear", "tetrahedral" and "4pt tetrahedral", exactly; anything else, null too, is the default.
    static InterpolationAlgo getInterpolation(char const* name);
    // "default" for every other value.
    static char const* getInterpolationName(InterpolationAlgo interpolation);

    void setOutputBitDepth(BitDepth depth) override;
    void validate() const override;
    bool isIdentity() const override;
    bool operator==(Op const& other) const override;

    InterpolationAlgo getInterpolation() const { return m_interpolation; }
    void setInterpolation(InterpolationAlgo interpolation) { m_interpolation = interpolation; }

    Lut3DArray const& getArray() const { return m_array; }
    Lut3DArray& getArray() { return m_array; }
    IndexMapping const& getIndexMapping() const { return m_indexMapping; }
    IndexMapping& getIndexMapping() { return m_indexMapping; }

private:
    InterpolationAlgo m_interpolation;
    Lut3DArray m_array;
    IndexMapping m_indexMapping{0};
};

} // namespace Color

#endif
