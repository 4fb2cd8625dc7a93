// What callers see of the optimizer: which flags do what, what stays changeable, and which pixels come out.
#include "contentRecorder.h"
#include "support/scopedEnvironment.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

using namespace Tavrin;
using testing::ElementsAre;
using testing::FloatNear;
using testing::Pointwise;

namespace
{

// The kinds of the renderers in their order.
Lines renderersOf(TransformPtr const& transform, OptimizerFlags flags = OPTIMIZER_DEFAULT_THRESHOLD)
{
    Recorder recorder;
    EXPECT_EQ(told(extractOptimizedContent(transform, PF_RGBA_32f, PF_RGBA_32f, flags, recorder)), kGood);
    return valuesOf("Renderer", recorder.lines());
}

Told toldByFinalize(TransformPtr const& transform, OptimizerFlags flags)
{
    return told(transform->finalize(PF_RGBA_32f, PF_RGBA_32f, RENDERER_CPU, flags, RESOLVE_BROADCAST_MONITOR));
}

Pixels renderedWith(OptimizerFlags flags, TransformPtr const& transform, Pixels const& pixel)
{
    EXPECT_EQ(toldByFinalize(transform, flags), kGood);
    return render(transform, pixel);
}

std::string const kIdentityTable = "<LUT1D inBitDepth='32f' outBitDepth='32f'>\n<Array dim='2 1'>\n0\n1\n</Array>\n</LUT1D>\n";
std::string const kHalvingTable = "<LUT1D inBitDepth='32f' outBitDepth='32f'>\n<Array dim='2 1'>\n0\n0.5\n</Array>\n</LUT1D>\n";

std::string exposure(std::string const& stops)
{
    return "<ExposureContrast inBitDepth='32f' outBitDepth='32f' style='linear'>\n<ECParams exposure='" + stops +
           "' contrast='1' pivot='0.18'/>\n<DynamicParameter param='EXPOSURE'/>\n</ExposureContrast>\n";
}

TEST(Optimizer, RendersALoneIdentityMatrixAsAScale)
{
    EXPECT_THAT(renderersOf(scaleBy(1.0F)), ElementsAre("ScaleRenderer"));
}

TEST(Optimizer, MergesMatricesByDefaultAndNoTables)
{
    EXPECT_THAT(renderersOf(fromText(document(doubling() + doubling() + kHalvingTable + kHalvingTable))),
                ElementsAre("ScaleRenderer", "Lut1DRenderer", "Lut1DRenderer"));
}

TEST(Optimizer, MergesTablesToo)
{
    TransformPtr const transform = fromText(document(doubling() + kHalvingTable + kHalvingTable));
    EXPECT_THAT(renderersOf(transform, 75), ElementsAre("ScaleRenderer", "Lut1DRenderer"));
    // Twice a quarter, clamped to the tables' domain in between; values between rows are rounded.
    Pixels const in{0.125F, 0.25F, 0.75F, 0.5F};
    for (OptimizerFlags const flags : {101U, 90U, 75U, 45U})
        EXPECT_THAT(renderedWith(flags, transform, in), Pointwise(FloatNear(0x1p-24F), Pixels{0.0625F, 0.125F, 0.25F, 0.5F}))
            << flags;
}

TEST(Optimizer, LeavesTheClampOfAnIdentityTable)
{
    TransformPtr const transform = fromText(document(doubling() + kIdentityTable + doubling()));
    EXPECT_THAT(renderersOf(transform), ElementsAre("ScaleRenderer", "RangeMinMaxRenderer", "ScaleRenderer"));
    Pixels const in{-0.25F, 0.25F, 0.75F, 0.5F};
    for (OptimizerFlags const flags : {101U, 90U})
        EXPECT_THAT(renderedWith(flags, transform, in), ElementsAre(0.0F, 1.0F, 2.0F, 0.5F)) << flags;
}

TEST(Optimizer, KeepsAnExposureChangeableThatIsAtRestWhereDynamicOperatorsAreKept)
{
    TransformPtr const transform = fromText(document(doubling() + exposure("0") + doubling()));
    Pixels const in{0.125F, 0.25F, 0.5F, 0.5F};
    EXPECT_THAT(renderersOf(transform), ElementsAre("ScaleRenderer"));
    EXPECT_THAT(renderersOf(transform, 90 | OPTIMIZER_KEEP_DYNAMIC),
                ElementsAre("ScaleRenderer", "ECLinearRenderer", "ScaleRenderer"));

    ASSERT_EQ(toldByFinalize(transform, 90 | OPTIMIZER_KEEP_DYNAMIC), kGood);
    ASSERT_EQ(told(transform->setDynamicProperty(DynamicProperty(DynamicProperty::EXPOSURE, 1.0))), kGood);
    EXPECT_THAT(render(transform, in), ElementsAre(1.0F, 2.0F, 4.0F, 0.5F));
}

TEST(Optimizer, KeepsASwitchWorkingThatIsOffWhereDynamicOperatorsAreKept)
{
    TransformPtr const transform = fromText(document(doubling() + doubling("", "<DynamicParameter param='LOOK_SWITCH' />")));
    Pixels const in{0.125F, 0.25F, 0.5F, 0.5F};
    ASSERT_EQ(toldByFinalize(transform, 90 | OPTIMIZER_KEEP_DYNAMIC), kGood);
    EXPECT_THAT(render(transform, in), ElementsAre(0.5F, 1.0F, 2.0F, 0.5F));
    ASSERT_EQ(told(transform->setDynamicProperty(DynamicProperty(DynamicProperty::BYPASS, true))), kGood);
    EXPECT_THAT(render(transform, in), ElementsAre(0.25F, 0.5F, 1.0F, 0.5F));
}

// The merged matrix has the switch of the first of the two.
TEST(Optimizer, LetsTheSwitchOfTheFirstBypassBothMatricesOtherwise)
{
    TransformPtr const transform = fromText(document(doubling("", "<DynamicParameter param='LOOK_SWITCH' />") + doubling()));
    Pixels const in{0.125F, 0.25F, 0.5F, 0.5F};
    ASSERT_EQ(toldByFinalize(transform, 90), kGood);
    EXPECT_THAT(render(transform, in), ElementsAre(0.5F, 1.0F, 2.0F, 0.5F));
    ASSERT_EQ(told(transform->setDynamicProperty(DynamicProperty(DynamicProperty::BYPASS, true))), kGood);
    EXPECT_EQ(render(transform, in), in);
}

TEST(Optimizer, FailsAtAThresholdOfZeroAndLeavesNoRenderer)
{
    TransformPtr const transform = scaleBy(2.0F);
    ASSERT_EQ(toldByFinalize(transform, 90), kGood);
    EXPECT_EQ(toldByFinalize(transform, 0), kNullAction);
    EXPECT_EQ(render(transform, {0.5F, 0.5F, 0.5F, 0.5F}), Pixels());
}

// Bypassed for good, an operator is gone before the optimizer comes.
TEST(Optimizer, LeavesABypassedOperatorOutAtAnyThreshold)
{
    TransformPtr const transform = fromText(document(doubling() + doubling("bypass='true'")));
    for (OptimizerFlags const flags : {1U, 90U, 100U, 101U})
        EXPECT_THAT(renderedWith(flags, transform, {0.125F, 0.25F, 0.5F, 0.5F}), ElementsAre(0.25F, 0.5F, 1.0F, 0.5F)) << flags;
}

TEST(Optimizer, TakesNoNoticeOfAnEnvironmentThatChangesAfterLoading)
{
    ScopedEnvironment const threshold("TAVRIN_OPTIMIZER_VALUE", "101");
    ScopedEnvironment const keepDynamic("TAVRIN_OPTIMIZER_KEEP_DYNAMIC_OPS", "1");
    EXPECT_THAT(renderersOf(fromText(document(doubling() + exposure("0") + doubling()))), ElementsAre("ScaleRenderer"));
}

} // namespace
