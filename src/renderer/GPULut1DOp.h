// Shader text and textures of a 1D table.
#ifndef TAVRIN_RENDERER_GPU_LUT_1D_OP_H
#define TAVRIN_RENDERER_GPU_LUT_1D_OP_H

#include "renderer/GPUOp.h"
#include "transform/lut1DOp.h"

#include <memory>
#include <string>

namespace Rendering
{

// A table goes to the GPU in a texture for each column, in one row or folded to several, as the adaptor says. A table of few rows
// is resampled to many, since the filters of textures are not exact. Alpha is left alone.
class GPULut1DOp : public TypedGPUOp<Color::Lut1DOp>
{
public:
    GPULut1DOp(Tavrin::GPUAdaptorPtr const& adaptor, Color::Lut1DOp const& op, unsigned int index);

    // The resampled table, if there is one.
    Color::Op const& getOp() const override;

    // Open to those that put their own frame around them; textures come first, since the texts follow from their sizes.
    void _addAttributeTextToShaderProgram(std::string& text) override;
    void _addHelperMethodTextToShaderProgram(std::string& text) override;
    void _addProcessingTextToShaderProgram(std::string& text) override;
    void _addResources() override;

private:
    // Whether texels are found by a function, which gives two coordinates.
    bool _isFolded() const { return m_useTexture2D || m_halfDomain; }
    unsigned int _getDimension() const { return _getTypedOp().getArray().getDimension(); }
    // Of the sampler that a channel reads: there is one for all channels, or one for each.
    std::string _getSamplerName(unsigned int channel) const;
    unsigned int _getSamplerCount() const;
    void _addLookup(std::string& text) const;

    std::unique_ptr<Color::Lut1DOp> m_resampled;
    bool m_useTexture2D = false;
    bool m_halfDomain = false;
    bool m_singleLut = false;
    bool m_hueAdjust = false;
    unsigned int m_width = 0;
    unsigned int m_height = 0;
};

} // namespace Rendering

#endif
