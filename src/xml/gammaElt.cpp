// The element <Gamma>, and that of its parameters.
#include "xml/gammaElt.h"

#include "xml/ctfVocabulary.h"

namespace Color::Xml::Reader
{

void GammaElt::end()
{
    setIdentityAlpha();
    OpElt::end();
}

std::unique_ptr<Element> GammaElt::createGammaParamsElt(std::string const& name, ContainerElt* parent, unsigned int line,
                                                        std::string const& file) const
{
    return std::make_unique<GammaParamsElt>(name, parent, line, file);
}

void GammaElt::setIdentityAlpha()
{
    op().setAlphaParams(GammaOp::getIdentityParameters(op().getGammaStyle()));
}

void GammaElt_1_5::end()
{
    if (op().getAlphaParams().empty()) // Red, green and blue stand alone.
        setIdentityAlpha();
    OpElt::end(); // NOLINT(bugprone-parent-virtual-call): GammaElt would overwrite the alpha that was read.
}

std::unique_ptr<Element> GammaElt_1_5::createGammaParamsElt(std::string const& name, ContainerElt* parent, unsigned int line,
                                                            std::string const& file) const
{
    return std::make_unique<GammaParamsElt_1_5>(name, parent, line, file);
}

std::vector<ParamsElt::Param> GammaParamsElt::getParams() const
{
    GammaOp::GammaStyle const style = parentAs<GammaElt>().op().getGammaStyle();
    bool const hasOffset = style == GammaOp::GammaStyle::MoncurveFwd || style == GammaOp::GammaStyle::MoncurveRev;
    return {{ATTR_GAMMA}, {ATTR_OFFSET, hasOffset}};
}

std::string GammaParamsElt::getStyleName() const
{
    return GammaOp::getGammaStyleName(parentAs<GammaElt>().op().getGammaStyle());
}

void GammaParamsElt::setParams(std::optional<unsigned int> channel, Values const& values)
{
    using Set = void (GammaOp::*)(GammaOp::Params const&);
    static constexpr Set kSetters[] = {&GammaOp::setRedParams, &GammaOp::setGreenParams, &GammaOp::setBlueParams,
                                       &GammaOp::setAlphaParams};
    GammaOp& op = parentAs<GammaElt>().op();
    if (channel)
        (op.*kSetters[*channel])(values);
    else
        op.setParams(values);
}

} // namespace Color::Xml::Reader
