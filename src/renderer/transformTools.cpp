// Work on a whole operator list before it is rendered.
#include "renderer/transformTools.h"

#include "renderer/CPURenderer.h"
#include "transform/matrixOp.h"
#include "utils/errorMessage.h"

namespace Color::TransformTools
{

void optimize(std::shared_ptr<Transform>&, Tavrin::OptimizerFlags) {}

void setIntermediateBitdepth(BitDepth depth, std::shared_ptr<Transform>& transform)
{
    if (transform == nullptr)
        throw failure(ErrorIds::kRendererTransformNull, Module::kRenderer);
    OpList& ops = transform->getOps();
    if (ops.empty())
        throw failure(ErrorIds::kRendererTransformEmpty, Module::kRenderer);
    for (unsigned int i = 0; i < ops.size(); ++i)
    {
        if (i > 0)
            ops.get(i).setInputBitDepth(depth);
        if (i + 1 < ops.size())
            ops.get(i).setOutputBitDepth(depth);
    }
}

void evalTransform(float const* source, float* destination, unsigned int count, std::shared_ptr<Transform>& transform)
{
    setIntermediateBitdepth(Tavrin::BIT_DEPTH_32f, transform);
    transform->setInputBitDepth(Tavrin::BIT_DEPTH_32f);
    transform->setOutputBitDepth(Tavrin::BIT_DEPTH_32f);
    Rendering::CPURenderer renderer;
    renderer.finalize(transform, Tavrin::PF_RGB_32f, Tavrin::PF_RGB_32f);
    renderer.apply(source, destination, Tavrin::ROI(0, 0, count, 1), 0, 0);
}

namespace
{

// Brings values of a depth to the scale of 0 to 1, and back.
void appendScale(Transform& chain, float value)
{
    chain.getOps().append(MatrixOp::createDiagonalMatrix(Tavrin::BIT_DEPTH_32f, Tavrin::BIT_DEPTH_32f, value));
}

void checkJoint(Op const& first, Op const& second)
{
    if (first.getOutputBitDepth() != second.getInputBitDepth())
        throw failure(ErrorIds::kOpDepthMismatch, Module::kOpList, first.getMeaningfullIdentifier(),
                      second.getMeaningfullIdentifier());
}

Descriptions joined(Descriptions const& first, Descriptions const& second)
{
    Descriptions both = first;
    both += second;
    return both;
}

// Whether the first table's own rows are the samples, and else how many rows of which depth are.
struct Grid
{
    unsigned int size;
    BitDepth depth;
};

Grid gridOf(Lut1DOp const& first, ComposeMethod method)
{
    switch (method)
    {
    case ComposeMethod::FirstGrid:
        break;
    case ComposeMethod::IdealGrid:
        return {Lut1DOp::getLutIdealSize(first.getInputBitDepth(), first.getHalfFlags()), first.getInputBitDepth()};
    case ComposeMethod::FullGrid:
        return {static_cast<unsigned int>(Tavrin::getBitDepthValueRange(Tavrin::BIT_DEPTH_16i)) + 1, Tavrin::BIT_DEPTH_16i};
    }
    return {0, Tavrin::BIT_DEPTH_16i};
}

} // namespace

std::unique_ptr<Lut1DOp> compose(Lut1DOp const& first, Lut1DOp const& second, ComposeMethod method)
{
    checkJoint(first, second);
    auto chain = std::make_shared<Transform>();
    Grid const grid = gridOf(first, method);
    bool const keepsGrid = first.isInputHalfDomain() || first.getArray().getDimension() >= grid.size;
    Lut1DOp const wider(grid.depth, Tavrin::BIT_DEPTH_32f, first.getId(), first.getName(), first.getDescriptions(),
                        first.getInterpolation(), first.getHalfFlags(), keepsGrid ? 0 : grid.size);
    Lut1DOp const& domain = keepsGrid ? first : wider;
    if (keepsGrid)
        appendScale(*chain, 1.0F / Tavrin::getBitDepthValueRange(first.getOutputBitDepth()));
    else
        chain->getOps().append(first.clone());
    chain->getOps().append(second.clone());
    appendScale(*chain, Tavrin::getBitDepthValueRange(second.getOutputBitDepth()));

    unsigned int const dimension = domain.getArray().getDimension();
    auto result = std::make_unique<Lut1DOp>(
        first.getInputBitDepth(), second.getOutputBitDepth(), first.getId() + second.getId(), first.getName() + second.getName(),
        joined(first.getDescriptions(), second.getDescriptions()), Lut1DOp::InterpolationAlgo::Linear,
        first.getHalfFlags() & Tavrin::HALF_FLAGS_INPUT_HALF_DOMAIN, dimension);
    result->getArray().resize(dimension, 3);
    evalTransform(domain.getArray().getValues().data(), result->getArray().getValues().data(), dimension, chain);
    result->setBypass(first.getBypass());
    return result;
}

} // namespace Color::TransformTools
