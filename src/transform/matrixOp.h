// A 4 by 4 matrix on red, green, blue and alpha, with offsets.
#ifndef TAVRIN_TRANSFORM_MATRIX_OP_H
#define TAVRIN_TRANSFORM_MATRIX_OP_H

#include "transform/array.h"
#include "transform/op.h"

#include <array>

namespace Color
{

// out = array * in + offsets. The array is 4 by 4 with 4 colour components after validation.
class MatrixOp : public TypedOp<MatrixOp, Op::OpType::MatrixOp>
{
public:
    // Four numbers in the scale of the output depth.
    class Offsets
    {
    public:
        // Copies four values; throws on null.
        void setRGBAValues(float const* values);
        // Copies three values, alpha becomes 0; throws on null.
        void setRGBValues(float const* values);
        float const* getValues() const { return m_values.data(); }
        float operator[](unsigned int index) const { return m_values[index]; }
        float& operator[](unsigned int index) { return m_values[index]; }
        void scale(float factor);

        // By their bytes: a negative zero counts as not null.
        bool isNotNull() const;
        bool operator==(Offsets const& other) const;

    private:
        std::array<float, 4> m_values{};
    };

    // Row-major: value r * dimension + c multiplies input channel c into output channel r. Carries a copy of the operator's depths.
    class MatrixArray : public Array
    {
    public:
        // The depth-correct identity.
        MatrixArray(BitDepth in, BitDepth out, unsigned int dimension, unsigned int components);

        unsigned int getNumValues() const override;
        // Also expands an array of dimension 3 to dimension 4, on the spot; declared const for the sake of the operator's validate.
        void validate() const override;

        void setInputBitDepth(BitDepth depth);
        void setOutputBitDepth(BitDepth depth);
        // Exactly the unit matrix, whatever the depths.
        bool isIdentity() const;
        // Range of the output depth divided by range of the input depth.
        float getDepthScale() const;

    private:
        void _fill();
        void _expandFrom3x3To4x4();

        BitDepth m_inBitDepth;
        BitDepth m_outBitDepth;
    };

    // 32f to 32f, identity.
    MatrixOp();
    // The depth-correct identity.
    MatrixOp(BitDepth in, BitDepth out, std::string const& id, std::string const& name, Descriptions const& descriptions);
    // A new operator that the caller owns; all four diagonal entries have the value.
    static MatrixOp* createDiagonalMatrix(BitDepth in, BitDepth out, float value);

    void setInputBitDepth(BitDepth depth) override;
    void setOutputBitDepth(BitDepth depth) override;
    void validate() const override;
    bool isIdentity() const override;
    bool operator==(Op const& other) const override;
    void inverse(OpList& list) const override;

    MatrixArray const& getArray() const { return m_array; }
    MatrixArray& getArray() { return m_array; }
    Offsets const& getOffsets() const { return m_offsets; }
    Offsets& getOffsets() { return m_offsets; }

    // Sixteen values in row order.
    void setRGBAValues(float const* values);
    // Nine values in row order; alpha is carried over at the scale of the depths.
    void setRGBValues(float const* values);
    // Unchecked.
    void setArrayValue(unsigned int index, float value);
    void setOffsetValue(unsigned int index, float value);
    float getOffsetValue(unsigned int index) const;

    // Every element off the diagonal is exactly zero; offsets are not looked at.
    bool isDiagonal() const;
    // Exactly the unit matrix; offsets are not looked at.
    bool isEye() const;
    // Whether the array touches alpha; the alpha offset is not looked at.
    bool hasAlpha() const;

    // Snaps values to the integers that rounding noise of a composition moved them from.
    void cleanUp(float maxOffset);
    // This operator first, then the second one.
    MatrixOp compose(MatrixOp const& second) const;

private:
    void _requireOffsetIndex(unsigned int index) const;

    MatrixArray m_array;
    Offsets m_offsets;
};

} // namespace Color

#endif
