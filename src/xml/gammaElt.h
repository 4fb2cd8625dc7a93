// The element <Gamma>, and that of its parameters.
#ifndef TAVRIN_XML_GAMMA_ELT_H
#define TAVRIN_XML_GAMMA_ELT_H

#include "transform/gammaOp.h"
#include "xml/paramsElt.h"
#include "xml/styledOpElt.h"

#include <memory>
#include <string>

namespace Color::Xml::Reader
{

// Versions up to 1.4: alpha has no parameters of its own and gets those of an identity.
class GammaElt : public StyledOpElt<GammaOp, GammaOp::GammaStyle, &GammaOp::getGammaStyle, &GammaOp::setGammaStyle>
{
public:
    void end() override;
    virtual std::unique_ptr<Element> createGammaParamsElt(std::string const& name, ContainerElt* parent, unsigned int line,
                                                          std::string const& file) const;

protected:
    void setIdentityAlpha();
};

// From version 1.5: alpha may have parameters.
class GammaElt_1_5 : public GammaElt
{
public:
    void end() override;
    std::unique_ptr<Element> createGammaParamsElt(std::string const& name, ContainerElt* parent, unsigned int line,
                                                  std::string const& file) const override;
};

// <GammaParams>: gamma, and an offset for the styles with a toe.
class GammaParamsElt : public ParamsElt
{
public:
    // The parent is a GammaElt.
    using ParamsElt::ParamsElt;

protected:
    std::vector<Param> getParams() const override;
    std::string getStyleName() const override;
    char const* getChannels() const override { return "RGB"; }
    void setParams(std::optional<unsigned int> channel, Values const& values) override;
};

class GammaParamsElt_1_5 : public GammaParamsElt
{
public:
    using GammaParamsElt::GammaParamsElt;

protected:
    char const* getChannels() const override { return "RGBA"; }
};

} // namespace Color::Xml::Reader

#endif
