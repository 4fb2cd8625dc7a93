// Writes <Matrix>, without the rows and columns that say nothing.
#include "xml/arrayWriter.h"
#include "xml/opWriters.h"

#include <bit>
#include <cstdint>

namespace Color::Xml::Writer
{

namespace
{

class MatrixWriter : public TypedOpWriter<MatrixOp>
{
public:
    using TypedOpWriter::TypedOpWriter;

protected:
    void _writeContent() const override
    {
        unsigned int const channels = op().hasAlpha() || _hasAlphaOffset() ? 4 : 3;
        bool const hasOffsets = op().getOffsets().isNotNull();
        unsigned int const columns = hasOffsets ? channels + 1 : channels;
        MatrixOp::MatrixArray const& array = op().getArray();
        std::vector<float> values;
        for (unsigned int row = 0; row < channels; ++row)
        {
            float const* const first = &array.getValues()[row * array.getDimension()];
            values.insert(values.end(), first, first + channels);
            if (hasOffsets)
            {
                values.push_back(op().getOffsets()[row]);
            }
        }
        // Coefficients are no code values, so that they are printed like floats at any depth.
        writeArray(getFormatter(), {channels, columns, channels}, values, columns, Tavrin::BIT_DEPTH_32f);
    }

private:
    // Decided by its bits, like all offsets.
    bool _hasAlphaOffset() const { return std::bit_cast<std::uint32_t>(op().getOffsets()[3]) != 0; }
};

} // namespace

std::unique_ptr<OpWriter> createWriter(Formatter& formatter, MatrixOp const& op)
{
    return std::make_unique<MatrixWriter>(formatter, op);
}

} // namespace Color::Xml::Writer
