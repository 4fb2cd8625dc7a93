// Models of transforms built without a file.
#include "transform/transformFactory.h"

#include "transform/matrixOp.h"
#include "utils/errorMessage.h"
#include "utils/utils.h"

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
    auto transform = newTransform();
    transform->getOps().append(op.release());
    return transform;
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
