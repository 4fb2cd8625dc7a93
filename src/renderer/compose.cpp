// Two operators of one kind as one. Tables are sampled through the renderer that pixels take.
#include "renderer/compose.h"

#include "renderer/transformTools.h"
#include "transform/tableOp.h"

namespace Color::TransformTools
{

namespace
{

// Brings values of a depth to the scale of 0 to 1, or back.
MatrixOp* scaleBy(float value)
{
    return MatrixOp::createDiagonalMatrix(Tavrin::BIT_DEPTH_32f, Tavrin::BIT_DEPTH_32f, value);
}

// Fills the result with what both tables make of samples: of a grid's values from 0 to 1, or, without a grid, of the values of the
// first table, which then has done its part. The result has a place for each sample.
template <class Table>
void sample(Table const& first, Table const& second, Table const* grid, Table& result)
{
    auto chain = std::make_shared<Transform>();
    OpList& ops = chain->getOps();
    ops.append(grid != nullptr ? first.clone() : scaleBy(1.0F / Tavrin::getBitDepthValueRange(first.getOutputBitDepth())));
    ops.append(second.clone());
    ops.append(scaleBy(Tavrin::getBitDepthValueRange(second.getOutputBitDepth())));

    Array::Values const& samples = (grid != nullptr ? *grid : first).getArray().getValues();
    auto const count = static_cast<unsigned int>(samples.size() / kTableComponents);
    evalTransform(samples.data(), result.getArray().getValues().data(), count, chain);
    result.setBypass(first.getBypass());
}

// A new grid with a row for each sample, as the method asks; null where the first table keeps its own.
std::unique_ptr<Lut1DOp> makeGrid(Lut1DOp const& first, ComposeMethod method)
{
    if (method == ComposeMethod::FirstGrid || first.isInputHalfDomain())
        return nullptr;
    BitDepth const depth = method == ComposeMethod::IdealGrid ? first.getInputBitDepth() : Tavrin::BIT_DEPTH_16i;
    if (first.getArray().getDimension() >= Lut1DOp::getLutIdealSize(depth, first.getHalfFlags()))
        return nullptr;
    return std::make_unique<Lut1DOp>(depth, Tavrin::BIT_DEPTH_32f, first.getId(), first.getName(), first.getDescriptions(),
                                     first.getInterpolation(), first.getHalfFlags());
}

// Null where the first table's own grid is no smaller than the second's.
std::unique_ptr<Lut3DOp> makeGrid(Lut3DOp const& first, Lut3DOp const& second)
{
    if (first.getArray().getDimension() >= second.getArray().getDimension())
        return nullptr;
    return std::make_unique<Lut3DOp>(first.getInputBitDepth(), Tavrin::BIT_DEPTH_32f, first.getId(), first.getName(),
                                     first.getDescriptions(), first.getInterpolation(), second.getArray().getDimension());
}

} // namespace

std::unique_ptr<MatrixOp> compose(MatrixOp const& first, MatrixOp const& second)
{
    return std::make_unique<MatrixOp>(first.compose(second));
}

std::unique_ptr<Lut1DOp> compose(Lut1DOp const& first, Lut1DOp const& second, ComposeMethod method)
{
    validateJoint(first, second);
    std::unique_ptr<Lut1DOp> const grid = makeGrid(first, method);
    auto result = std::make_unique<Lut1DOp>(
        first.getInputBitDepth(), second.getOutputBitDepth(), first.getId() + second.getId(), first.getName() + second.getName(),
        first.getDescriptions() + second.getDescriptions(), Lut1DOp::InterpolationAlgo::Linear,
        first.getHalfFlags() & Tavrin::HALF_FLAGS_INPUT_HALF_DOMAIN, (grid ? *grid : first).getArray().getDimension());
    sample(first, second, grid.get(), *result);
    return result;
}

std::unique_ptr<Lut3DOp> compose(Lut3DOp const& first, Lut3DOp const& second)
{
    validateJoint(first, second);
    std::unique_ptr<Lut3DOp> const grid = makeGrid(first, second);
    auto result = std::make_unique<Lut3DOp>(first.getInputBitDepth(), second.getOutputBitDepth(), first.getId() + second.getId(),
                                            first.getName() + second.getName(), first.getDescriptions() + second.getDescriptions(),
                                            first.getInterpolation(), (grid ? *grid : first).getArray().getDimension());
    sample(first, second, grid.get(), *result);
    return result;
}

} // namespace Color::TransformTools
