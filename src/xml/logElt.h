// The element <Log>, and that of its parameters.
#ifndef TAVRIN_XML_LOG_ELT_H
#define TAVRIN_XML_LOG_ELT_H

#include "transform/logOp.h"
#include "xml/paramsElt.h"
#include "xml/styledOpElt.h"

namespace Color::Xml::Reader
{

class LogElt : public StyledOpElt<LogOp, LogOp::LogStyle, &LogOp::getLogStyle, &LogOp::setLogStyle>
{
};

// <LogParams>: the five numbers of the film model.
class LogParamsElt : public ParamsElt
{
public:
    // The parent is a LogElt.
    using ParamsElt::ParamsElt;

protected:
    std::vector<Param> getParams() const override;
    std::string getStyleName() const override;
    char const* getChannels() const override { return "RGB"; }
    void setParams(std::optional<unsigned int> channel, Values const& values) override;
};

} // namespace Color::Xml::Reader

#endif
