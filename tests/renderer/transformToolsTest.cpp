// Work on a whole operator list before it is rendered.
#include "renderer/transformTools.h"
#include "support/failure.h"
#include "transform/matrixOp.h"

#include <gtest/gtest.h>

#include <memory>

using namespace Color;
using namespace Tavrin;

namespace
{

std::shared_ptr<Color::Transform> transformOfMatrices(unsigned int count)
{
    auto transform = std::make_shared<Color::Transform>();
    for (unsigned int i = 0; i < count; ++i)
        transform->getOps().append(new MatrixOp(BIT_DEPTH_8i, BIT_DEPTH_8i, "", "", Descriptions()));
    return transform;
}

TEST(SetIntermediateBitdepth, GivesEveryJoinTheDepthAndLeavesTheEnds)
{
    auto transform = transformOfMatrices(3);
    TransformTools::setIntermediateBitdepth(BIT_DEPTH_32f, transform);
    OpList const& ops = transform->getOps();
    EXPECT_EQ(ops.get(0).getInputBitDepth(), BIT_DEPTH_8i);
    EXPECT_EQ(ops.get(0).getOutputBitDepth(), BIT_DEPTH_32f);
    EXPECT_EQ(ops.get(1).getInputBitDepth(), BIT_DEPTH_32f);
    EXPECT_EQ(ops.get(1).getOutputBitDepth(), BIT_DEPTH_32f);
    EXPECT_EQ(ops.get(2).getInputBitDepth(), BIT_DEPTH_32f);
    EXPECT_EQ(ops.get(2).getOutputBitDepth(), BIT_DEPTH_8i);
    for (unsigned int i = 0; i < 3; ++i)
        EXPECT_TRUE(ops.get(i).isIdentity()) << i;
}

TEST(SetIntermediateBitdepth, LeavesALoneOperator)
{
    auto transform = transformOfMatrices(1);
    TransformTools::setIntermediateBitdepth(BIT_DEPTH_32f, transform);
    EXPECT_TRUE(transform->getOps().get(0) == transformOfMatrices(1)->getOps().get(0));
}

// Lists that were joined without an adjustment: 16i codes meet floats.
TEST(SetIntermediateBitdepth, MendsJoinsThatDoNotMeet)
{
    auto transform = std::make_shared<Color::Transform>();
    transform->getOps().append(new MatrixOp(BIT_DEPTH_8i, BIT_DEPTH_16i, "", "", Descriptions()));
    OpList other;
    other.append(new MatrixOp(BIT_DEPTH_32f, BIT_DEPTH_8i, "", "", Descriptions()));
    transform->getOps() += other;
    TransformTools::setIntermediateBitdepth(BIT_DEPTH_16f, transform);
    EXPECT_EQ(failureOf([&] { transform->validate(); }), Failure());
    EXPECT_EQ(transform->getOps().get(1).getInputBitDepth(), BIT_DEPTH_16f);
}

TEST(SetIntermediateBitdepth, RefusesNothing)
{
    std::shared_ptr<Color::Transform> null;
    EXPECT_EQ(failureOf([&] { TransformTools::setIntermediateBitdepth(BIT_DEPTH_32f, null); }),
              (Failure{0x810002, "Transform null"}));
    auto empty = transformOfMatrices(0);
    EXPECT_EQ(failureOf([&] { TransformTools::setIntermediateBitdepth(BIT_DEPTH_32f, empty); }),
              (Failure{0x810003, "Transform empty"}));
}

} // namespace
