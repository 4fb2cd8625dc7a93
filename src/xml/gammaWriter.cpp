// Writes <Gamma>.
#include "xml/opWriters.h"
#include "xml/paramsWriter.h"
#include "xml/styledOpWriter.h"

namespace Color::Xml::Writer
{

namespace
{

class GammaWriter : public StyledOpWriter<GammaOp, GammaOp::GammaStyle, &GammaOp::getGammaStyleName, &GammaOp::getGammaStyle>
{
public:
    using StyledOpWriter::StyledOpWriter;

    // Parameters of alpha came with this version.
    float getMinimumVersion() const override
    {
        return op().isAlphaComponentIdentity() ? StyledOpWriter::getMinimumVersion() : 1.5F;
    }

protected:
    // An offset comes with the styles that have one. Alpha is left out where older versions can do without it.
    void _writeContent() const override
    {
        static constexpr char const* kNames[] = {ATTR_GAMMA, ATTR_OFFSET};
        if (op().isNonChannelDependent())
        {
            writeParams(getFormatter(), TAG_GAMMA_PARAMS, kNames, op().getRedParams());
        }
        else if (op().isAlphaComponentIdentity())
        {
            writeChannelParams(getFormatter(), TAG_GAMMA_PARAMS, kNames,
                               {op().getRedParams(), op().getGreenParams(), op().getBlueParams()});
        }
        else
        {
            writeChannelParams(getFormatter(), TAG_GAMMA_PARAMS, kNames,
                               {op().getRedParams(), op().getGreenParams(), op().getBlueParams(), op().getAlphaParams()});
        }
    }
};

} // namespace

std::unique_ptr<OpWriter> createWriter(Formatter& formatter, GammaOp const& op)
{
    return std::make_unique<GammaWriter>(formatter, op);
}

} // namespace Color::Xml::Writer
