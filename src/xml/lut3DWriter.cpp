// Writes <LUT3D>.
#include "xml/arrayWriter.h"
#include "xml/ctfVocabulary.h"
#include "xml/opWriters.h"

namespace Color::Xml::Writer
{

namespace
{

class Lut3DWriter : public TypedOpWriter<Lut3DOp>
{
public:
    using TypedOpWriter::TypedOpWriter;

protected:
    void _getAttributes(Attributes& attributes) const override
    {
        OpWriter::_getAttributes(attributes);
        if (op().getInterpolation() != Lut3DOp::InterpolationAlgo::Default)
        {
            attributes.emplace_back(ATTR_INTERPOLATION, Lut3DOp::getInterpolationName(op().getInterpolation()));
        }
    }

    void _writeContent() const override
    {
        Array const& array = op().getArray();
        unsigned int const points = array.getDimension();
        unsigned int const components = array.getNumColorComponents();
        writeArray(getFormatter(), {points, points, points, components}, array.getValues(), components, op().getOutputBitDepth());
    }
};

} // namespace

std::unique_ptr<OpWriter> createWriter(Formatter& formatter, Lut3DOp const& op)
{
    return std::make_unique<Lut3DWriter>(formatter, op);
}

} // namespace Color::Xml::Writer
