// Renderers of the 3D table: one aligned copy of the grid, interpolated in cubes or in tetrahedra.
#include "renderer/CPULut3DOp.h"

#include "renderer/kernelsTables.h"
#include "renderer/opRenderers.h"
#include "transform/lut3DOp.h"
#include "utils/errorMessage.h"
#include "utils/logger.h"
#include "utils/numerics.h"
#include "utils/utils.h"

#include <memory>
#include <new>

namespace Rendering
{

namespace
{

using Color::Lut3DOp;

struct AlignedFree
{
    void operator()(float* memory) const { Foundation::Utils::alignedFree(memory); }
};

using AlignedFloats = std::unique_ptr<float[], AlignedFree>;

void checkLut3D(Lut3DOp const& op)
{
    if (op.getInterpolation() != Lut3DOp::InterpolationAlgo::FourPointTetrahedral)
        return;
    Color::ErrorMessage const message = Color::errorMessage(Color::ErrorIds::kRendererAttributeIllegal, Color::Module::kCpuRenderer,
                                                            op.getMeaningfullIdentifier(), "Interpolation");
    Color::Logger::log(Color::LOG_DEBUG, "%s", message.getDetailedMessage().c_str());
}

// Four floats an entry, so that one load fetches it.
AlignedFloats makeOptLut(Color::Array const& grid)
{
    std::size_t const entries = grid.getValues().size() / 3;
    constexpr std::size_t kAlignment = 64;
    AlignedFloats optLut(static_cast<float*>(Foundation::Utils::alignedMalloc(4 * sizeof(float) * entries, kAlignment)));
    if (optLut == nullptr)
        throw std::bad_alloc();
    float const* from = grid.getValues().data();
    for (float* to = optLut.get(); to != optLut.get() + 4 * entries; to += 4, from += 3)
    {
        for (unsigned int c = 0; c < 3; ++c)
            to[c] = Foundation::Numerics::sanitizeFloat(from[c]);
        to[3] = 0.0F;
    }
    return optLut;
}

template <RendererKind kKind>
class GridRenderer : public VirtualRenderer
{
public:
    GridRenderer(Lut3DOp const& op, TableKernel kernel)
        : VirtualRenderer(op),
          m_function(getTableKernel(kernel)),
          m_optLut(makeOptLut(op.getArray())),
          m_parameters{m_optLut.get(), static_cast<std::int32_t>(op.getArray().getDimension()),
                       1.0F / Color::Op::getValueStepSize(op.getInputBitDepth(), op.getArray().getDimension()),
                       static_cast<float>(op.getArray().getDimension() - 1),
                       Tavrin::getBitDepthMaxValue(op.getOutputBitDepth()) / Tavrin::getBitDepthMaxValue(op.getInputBitDepth())}
    {
    }

    RendererKind getOpType() const override { return kKind; }
    LineKernel prepareLine(LineParameters&) const override { return makeLineKernel(m_function, m_parameters); }

private:
    BlockFunction m_function;
    AlignedFloats m_optLut;
    Lut3DParameters m_parameters;
};

} // namespace

void Lut3DRenderer::addAlgorithm(Lut3DOp const& op, TransformProcessor& processor)
{
    checkLut3D(op);
    if (op.getInterpolation() == Lut3DOp::InterpolationAlgo::Tetrahedral)
        processor.append(std::make_unique<GridRenderer<RendererKind::Lut3DTetrahedralRenderer>>(op, TableKernel::Tetrahedral));
    else
        processor.append(std::make_unique<GridRenderer<RendererKind::Lut3DRenderer>>(op, TableKernel::Trilinear));
}

} // namespace Rendering
