// The element <Log>, and that of its parameters.
#include "xml/logElt.h"

#include "xml/ctfVocabulary.h"

namespace Color::Xml::Reader
{

std::vector<ParamsElt::Param> LogParamsElt::getParams() const
{
    return needed(ATTRS_LOG_PARAMS);
}

std::string LogParamsElt::getStyleName() const
{
    return LogOp::getLogStyleName(parentAs<LogElt>().op().getLogStyle());
}

void LogParamsElt::setParams(std::optional<unsigned int> channel, Values const& values)
{
    using Set = void (LogOp::*)(LogOp::Params const&);
    static constexpr Set kSetters[] = {&LogOp::setRedParams, &LogOp::setGrnParams, &LogOp::setBluParams};
    LogOp& op = parentAs<LogElt>().op();
    if (channel)
        (op.*kSetters[*channel])(values);
    else
        op.setParams(values);
}

} // namespace Color::Xml::Reader
