// Writes <Log>.
#include "xml/opWriters.h"
#include "xml/paramsWriter.h"
#include "xml/styledOpWriter.h"

namespace Color::Xml::Writer
{

namespace
{

class LogWriter : public StyledOpWriter<LogOp, LogOp::LogStyle, &LogOp::getLogStyleName, &LogOp::getLogStyle>
{
public:
    using StyledOpWriter::StyledOpWriter;

protected:
    void _writeContent() const override
    {
        if (!LogOp::hasParameters(op().getLogStyle()))
        {
            return;
        }
        if (op().allComponentsEqual())
        {
            writeParams(getFormatter(), TAG_LOG_PARAMS, ATTRS_LOG_PARAMS, op().getRedParams());
        }
        else
        {
            writeChannelParams(getFormatter(), TAG_LOG_PARAMS, ATTRS_LOG_PARAMS,
                               {op().getRedParams(), op().getGrnParams(), op().getBluParams()});
        }
    }
};

} // namespace

std::unique_ptr<OpWriter> createWriter(Formatter& formatter, LogOp const& op)
{
    return std::make_unique<LogWriter>(formatter, op);
}

} // namespace Color::Xml::Writer
