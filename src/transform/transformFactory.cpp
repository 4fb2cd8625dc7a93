// Models of transforms built without a file.
#include "transform/transformFactory.h"

#include "transform/ditherOp.h"
#include "transform/exposureContrastOp.h"
#include "transform/lut3DOp.h"
#include "transform/matrixOp.h"
#include "transform/referenceOp.h"
#include "transform/tableOp.h"
#include "utils/errorMessage.h"
#include "utils/utils.h"

#include <algorithm>

namespace Color
{

namespace
{

// What transforms and operators from callers' values are called.
constexpr char const* kNoName = "none";

std::shared_ptr<Transform> newTransform()
{
    return std::make_shared<Transform>(Utils::generateUUID(), kNoName, Descriptions(), "", "");
}

std::shared_ptr<Transform> newTransform(std::unique_ptr<Op> op)
{
    auto transform = newTransform();
    transform->getOps().append(op.release());
    return transform;
}

std::shared_ptr<Transform> newReference(std::unique_ptr<ReferenceOp> op)
{
    op->validate();
    return newTransform(std::move(op));
}

// A table spans its input depth from its first entry to its last, so it has two at least.
void requireTwoEntries(unsigned int size)
{
    if (size == 0)
        throw failure(ErrorIds::kArrayEmpty, Module::kTransform);
    if (size == 1)
        throw failure(ErrorIds::kArrayIllegal, Module::kTransform);
}

// Half floats as they are, with dynamic exposure and contrast.
std::shared_ptr<Transform> createStockRawTransform()
{
    auto control =
        std::make_unique<ExposureContrastOp>(Tavrin::BIT_DEPTH_16f, Tavrin::BIT_DEPTH_16f, ExposureContrastOp::Style::Linear);
    control->setId(Utils::generateUUID());
    control->setName(kNoName);
    control->setPivot(1.0);
    control->getExposure()->setDynamic(true);
    control->getContrast()->setDynamic(true);

    auto transform = newTransform(std::move(control));
    transform->setName("Stock Raw Transform");
    transform->getDescriptions() += "Identity transform with linear dynamic exposure contrast controls.";
    transform->getOps().append(
        new MatrixOp(Tavrin::BIT_DEPTH_16f, Tavrin::BIT_DEPTH_16f, Utils::generateUUID(), "identity", Descriptions()));
    return transform;
}

} // namespace

std::shared_ptr<Transform> CreateMatrixTransform(BitDepth in, BitDepth out, float const* matrix, float const* offsets,
                                                 bool hasAlpha)
{
    auto op = std::make_unique<MatrixOp>(in, out, Utils::generateUUID(), kNoName, Descriptions());
    if (hasAlpha)
    {
        op->setRGBAValues(matrix);
        op->getOffsets().setRGBAValues(offsets);
    }
    else
    {
        op->setRGBValues(matrix);
        op->getOffsets().setRGBValues(offsets);
    }
    return newTransform(std::move(op));
}

template <class Value>
std::shared_ptr<Transform> Create1DLutTransform(BitDepth in, BitDepth out, unsigned int size, Value const* red, Value const* green,
                                                Value const* blue, HalfFlags halfFlags)
{
    requireTwoEntries(size);
    if (size > Lut1DOp::kMaxDimension)
        throw failure(ErrorIds::kArrayIllegal, Module::kLut1D);
    auto op = std::make_unique<Lut1DOp>(in, out, Utils::generateUUID(), kNoName, Descriptions(),
                                        Lut1DOp::InterpolationAlgo::Default, halfFlags, size);
    auto value = op->getArray().getValues().begin();
    for (unsigned int row = 0; row < size; ++row)
    {
        for (Value const* column : {red, green, blue})
            *value++ = op->isOutputRawHalfs() ? Lut1DOp::rawHalfToFloat(column[row]) : static_cast<float>(column[row]);
    }
    return newTransform(std::move(op));
}

template <class Value>
std::shared_ptr<Transform> Create3DLutTransform(BitDepth in, BitDepth out, unsigned int gridSize, Value const* values)
{
    requireTwoEntries(gridSize);
    if (gridSize > Lut3DOp::maxSupportedDimension)
        throw failure(ErrorIds::kLut3DTooLarge, Module::kLut3D, gridSize, Lut3DOp::maxSupportedDimension);
    auto op = std::make_unique<Lut3DOp>(in, out, Utils::generateUUID(), kNoName, Descriptions(),
                                        Lut3DOp::InterpolationAlgo::Default, gridSize);
    std::transform(values, values + op->getArray().getNumValues(), op->getArray().getValues().begin(),
                   [](Value value) { return static_cast<float>(value); });
    return newTransform(std::move(op));
}

#define TAVRIN_TABLE_FACTORIES(Value)                                                                                      \
    template std::shared_ptr<Transform> Create1DLutTransform(BitDepth, BitDepth, unsigned int, Value const*, Value const*, \
                                                             Value const*, HalfFlags);                                     \
    template std::shared_ptr<Transform> Create3DLutTransform(BitDepth, BitDepth, unsigned int, Value const*);
TAVRIN_TABLE_FACTORIES(unsigned short)
TAVRIN_TABLE_FACTORIES(unsigned int)
TAVRIN_TABLE_FACTORIES(float)
#undef TAVRIN_TABLE_FACTORIES

std::shared_ptr<Transform> CreateDitherTransform(BitDepth in, BitDepth out, BitDepth ditherDepth)
{
    auto op = std::make_unique<DitherOp>(in, out, ditherDepth);
    op->setId(Utils::generateUUID());
    op->setName(kNoName);
    return newTransform(std::move(op));
}

std::shared_ptr<Transform> CreateReferenceTransformFromPath(BitDepth in, BitDepth out, std::string const& path,
                                                            Tavrin::BasePath basePath)
{
    return newReference(std::make_unique<ReferenceOp>(in, out, kNoName, "", Descriptions(), path, basePath));
}

std::shared_ptr<Transform> CreateReferenceTransformFromAlias(BitDepth in, BitDepth out, std::string const& alias)
{
    return newReference(std::make_unique<ReferenceOp>(in, out, kNoName, "", Descriptions(), alias));
}

std::shared_ptr<Transform> createStockTransform(Tavrin::StockTransform type)
{
    if (type != Tavrin::STOCK_TRANSFORM_RAW)
    {
        throw failure(ErrorIds::kInvalidParameter, Module::kLibrary);
    }
    return createStockRawTransform();
}

std::shared_ptr<Transform> concatenateTransforms(std::shared_ptr<Transform> const& first, std::shared_ptr<Transform> const& second)
{
    if (first == nullptr || second == nullptr)
        throw failure(ErrorIds::kConcatenateNull, Module::kLut1D);
    auto transform = first->clone(Transform::CloneType::Plain);
    transform->setId(Utils::generateUUID());
    transform->append(*second);
    transform->setOutputDescriptor(second->getOutputDescriptor());
    return transform;
}

} // namespace Color
