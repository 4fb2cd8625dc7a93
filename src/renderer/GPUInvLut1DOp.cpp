// Shader text and textures of an inverse 1D table: those of a forward table that comes close to it, whatever the inverse's style.
#include "renderer/GPULut1DOp.h"
#include "renderer/GPUOps.h"
#include "renderer/invLutUtil.h"

namespace Rendering
{

// Comments name the inverse, all else is the forward table's.
class GPUInvLut1DOp : public TypedGPUOp<Color::InvLut1DOp>
{
public:
    GPUInvLut1DOp(Tavrin::GPUAdaptorPtr const& adaptor, Color::InvLut1DOp const& op, unsigned int index)
        : TypedGPUOp(adaptor, op, index), m_fastLut(InvLutUtil::makeFastLut1D(op, true)), m_delegate(adaptor, *m_fastLut, index)
    {
    }

protected:
    void _addAttributeTextToShaderProgram(std::string& text) override { m_delegate._addAttributeTextToShaderProgram(text); }
    void _addHelperMethodTextToShaderProgram(std::string& text) override { m_delegate._addHelperMethodTextToShaderProgram(text); }
    void _addProcessingTextToShaderProgram(std::string& text) override { m_delegate._addProcessingTextToShaderProgram(text); }
    void _addResources() override { m_delegate._addResources(); }

private:
    std::unique_ptr<Color::Lut1DOp> m_fastLut;
    GPULut1DOp m_delegate;
};

std::unique_ptr<GPUOp> makeGPUOp(Tavrin::GPUAdaptorPtr const& adaptor, Color::InvLut1DOp const& op, unsigned int index)
{
    return std::make_unique<GPUInvLut1DOp>(adaptor, op, index);
}

} // namespace Rendering
