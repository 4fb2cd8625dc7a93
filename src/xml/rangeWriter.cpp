// Writes <Range>.
#include "xml/ctfVocabulary.h"
#include "xml/opWriters.h"

namespace Color::Xml::Writer
{

namespace
{

class RangeWriter : public TypedOpWriter<RangeOp>
{
public:
    using TypedOpWriter::TypedOpWriter;

protected:
    // Limits come in pairs, of input and output.
    void _writeContent() const override
    {
        bool const hasMinimum = !op().minIsEmpty();
        bool const hasMaximum = !op().maxIsEmpty();
        _writeLimit(hasMinimum, TAG_MIN_IN_VALUE, op().getMinInString());
        _writeLimit(hasMaximum, TAG_MAX_IN_VALUE, op().getMaxInString());
        _writeLimit(hasMinimum, TAG_MIN_OUT_VALUE, op().getMinOutString());
        _writeLimit(hasMaximum, TAG_MAX_OUT_VALUE, op().getMaxOutString());
    }

private:
    void _writeLimit(bool isSet, char const* tag, std::string const& text) const
    {
        if (isSet)
        {
            getFormatter().writeContentTag(tag, text);
        }
    }
};

} // namespace

std::unique_ptr<OpWriter> createWriter(Formatter& formatter, RangeOp const& op)
{
    return std::make_unique<RangeWriter>(formatter, op);
}

} // namespace Color::Xml::Writer
