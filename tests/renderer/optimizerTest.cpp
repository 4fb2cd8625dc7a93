// The optimizer's rules, its actions and their priorities, and how far flags and environment let it go.
#include "renderer/optimizer.h"
#include "renderer/rendererHarness.h"
#include "support/failure.h"
#include "support/scopedEnvironment.h"
#include "transform/ops.h"
#include "transform/testOps.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

using namespace Color;
using namespace Tavrin;
using namespace Color::TransformTools;
using RendererHarness::transformOf;
using testing::ElementsAre;

namespace
{

using TransformPointer = std::shared_ptr<Color::Transform>;
using OpPointers = std::vector<Op const*>;
using Names = std::vector<std::string>;

constexpr OptimizerFlags kEverything = 1;

Failure const kNullAction{0x810006, "Attempt to apply Null optimizer action"};

// ---------------------------------------------------------------- operators

MatrixOp scale(float factor, BitDepth in = BIT_DEPTH_32f, BitDepth out = BIT_DEPTH_32f)
{
    MatrixOp matrix(in, out, "", "", Descriptions());
    for (unsigned int channel = 0; channel < 4; ++channel)
        matrix.setArrayValue(channel * 5, factor * getBitDepthMaxValue(out) / getBitDepthMaxValue(in));
    return matrix;
}

GammaOp gamma(double exponent)
{
    return {BIT_DEPTH_32f, BIT_DEPTH_32f, "",         "",        Descriptions(), GammaOp::GammaStyle::BasicFwd,
            {exponent},    {exponent},    {exponent}, {exponent}};
}

RangeOp clamp(double low = 0.0, double high = 1.0)
{
    return {BIT_DEPTH_32f, BIT_DEPTH_32f, low, high, low, high};
}

RangeOp rangeWithoutLimits()
{
    double const none = RangeOp::emptyValue();
    return {BIT_DEPTH_32f, BIT_DEPTH_32f, none, none, none, none};
}

// Not an identity: twice the input.
Lut1DOp doubling(unsigned int rows, HalfFlags flags = HALF_FLAGS_NONE)
{
    Lut1DOp table(BIT_DEPTH_32f, BIT_DEPTH_32f, "", "", Descriptions(), Lut1DOp::InterpolationAlgo::Linear, flags, rows);
    table.getArray().scale(2.0F);
    return table;
}

Lut1DOp hueAdjusted(unsigned int rows)
{
    Lut1DOp table = doubling(rows);
    table.setHueAdjust(Lut1DOp::HueAdjust::Dw3);
    return table;
}

Lut1DOp halfDomain()
{
    return doubling(65536, HALF_FLAGS_INPUT_HALF_DOMAIN);
}

ExposureContrastOp dynamicExposure(double exposure)
{
    ExposureContrastOp op;
    op.getExposure()->setValue(exposure);
    op.getExposure()->setDynamic(true);
    return op;
}

template <class Operator>
Operator bypassed(Operator op, bool isDynamic = false)
{
    op.setBypass(bypass(true, isDynamic));
    return op;
}

// With a switch that is off.
template <class Operator>
Operator switchable(Operator op)
{
    op.setBypass(bypass(false, true));
    return op;
}

// ---------------------------------------------------------------- what is left

Names namesOf(TransformPointer const& transform)
{
    Names names;
    for (unsigned int i = 0; i < transform->getOps().size(); ++i)
        names.push_back(transform->getOps().get(i).getOpTypeName());
    return names;
}

TransformPointer optimized(OpPointers const& ops, OptimizerFlags flags)
{
    TransformPointer transform = transformOf(ops);
    optimize(transform, flags, OptimizerOverrides());
    return transform;
}

Names left(OpPointers const& ops, OptimizerFlags flags)
{
    return namesOf(optimized(ops, flags));
}

Failure failureOfOptimizing(OpPointers const& ops, OptimizerFlags flags)
{
    return failureOf([&] { optimized(ops, flags); });
}

OptimActionType actionAt(OpPointers const& ops, int index = 0, bool keepDynamic = false)
{
    return OptimAction::nextAction(transformOf(ops)->getOps(), index, keepDynamic).type;
}

OptimAction bestAction(OpPointers const& ops, bool keepDynamic = false)
{
    OptimAction action;
    action.findAction(transformOf(ops), keepDynamic);
    return action;
}

void expectAction(OptimAction const& action, OptimActionType type, unsigned int index, unsigned int priority)
{
    EXPECT_EQ(action.type, type);
    EXPECT_EQ(action.index, index);
    EXPECT_EQ(action.priority, priority);
}

// ---------------------------------------------------------------- rules

TEST(OptimAction, BeginsAsNone)
{
    expectAction(OptimAction(), OptimActionType::None, 0, 0);
}

TEST(OptimAction, FindsNothingInAnEmptyList)
{
    expectAction(bestAction({}), OptimActionType::None, 0, 0);
}

TEST(OptimAction, HasThePriorityOfItsType)
{
    MatrixOp const matrix = scale(2);
    MatrixOp const identity;
    RangeOp const range = clamp();
    Lut1DOp const table = doubling(4);
    Lut3DOp const grid(2);
    expectAction(bestAction({&matrix, &identity}), OptimActionType::Remove, 1, 100);
    expectAction(bestAction({&range, &table}), OptimActionType::DropClamp, 0, 99);
    expectAction(bestAction({&matrix, &matrix}), OptimActionType::ComposeMatrices, 0, 95);
    expectAction(bestAction({&table, &table}), OptimActionType::ComposeLut1Ds, 0, 75);
    expectAction(bestAction({&grid, &grid}), OptimActionType::ComposeLut3Ds, 0, 45);
    expectAction(bestAction({&matrix, &table, &grid}), OptimActionType::None, 0, 0);
}

TEST(OptimAction, IsTheBestOneInTheListAndTheFirstOfEquals)
{
    MatrixOp const matrix = scale(2);
    MatrixOp const identity;
    Lut1DOp const table = doubling(4);
    Lut3DOp const grid(2);
    expectAction(bestAction({&grid, &grid, &table, &table, &matrix, &matrix}), OptimActionType::ComposeMatrices, 4, 95);
    expectAction(bestAction({&grid, &grid, &table, &table, &table}), OptimActionType::ComposeLut1Ds, 2, 75);
    expectAction(bestAction({&matrix, &matrix, &table, &matrix, &matrix}), OptimActionType::ComposeMatrices, 0, 95);
    expectAction(bestAction({&matrix, &matrix, &identity}), OptimActionType::Remove, 2, 100);
}

TEST(OptimAction, IsTheFirstDroppedClampEvenWhereARemovalFollows)
{
    RangeOp const range = clamp();
    Lut1DOp const table = doubling(4);
    MatrixOp const identity;
    expectAction(bestAction({&range, &table, &identity}), OptimActionType::DropClamp, 0, 99);
}

TEST(OptimAction, RemovesABypassedOperatorWhereverItStands)
{
    MatrixOp const matrix = bypassed(scale(2));
    Lut3DOp const grid = bypassed(Lut3DOp(2));
    EXPECT_EQ(actionAt({&matrix}), OptimActionType::Remove);
    EXPECT_EQ(actionAt({&grid, &matrix}), OptimActionType::Remove);
    EXPECT_EQ(actionAt({&grid, &matrix}, 1), OptimActionType::Remove);
}

TEST(OptimAction, RemovesAnOperatorWhoseSwitchIsOnUnlessDynamicOnesAreKept)
{
    MatrixOp const matrix = bypassed(scale(2), true);
    EXPECT_EQ(actionAt({&matrix}, 0, false), OptimActionType::Remove);
    EXPECT_EQ(actionAt({&matrix}, 0, true), OptimActionType::None);
}

TEST(OptimAction, RemovesIdentities)
{
    MatrixOp const matrix = scale(2);
    GammaOp const gammaOfOne = gamma(1.0);
    RangeOp const nothing = rangeWithoutLimits();
    Lut1DOp const identityTable(7);
    ExposureContrastOp const atRest;
    for (Op const* op : OpPointers{&gammaOfOne, &nothing, &identityTable, &atRest})
        EXPECT_EQ(actionAt({&matrix, op}, 1), OptimActionType::Remove) << op->getOpTypeName();
    GammaOp const curve = gamma(1.5);
    RangeOp const limits = clamp();
    EXPECT_EQ(actionAt({&matrix, &curve}, 1), OptimActionType::None);
    EXPECT_EQ(actionAt({&matrix, &limits}, 1), OptimActionType::None);
}

TEST(OptimAction, LeavesALoneMatrixAndALoneRangeThatDoNothing)
{
    MatrixOp const identity;
    RangeOp const nothing = rangeWithoutLimits();
    EXPECT_EQ(actionAt({&identity}), OptimActionType::None);
    EXPECT_EQ(actionAt({&nothing}), OptimActionType::None);
    EXPECT_EQ(actionAt({&nothing, &identity}), OptimActionType::Remove);
}

TEST(OptimAction, RemovesLoneIdentitiesOfOtherTypes)
{
    GammaOp const gammaOfOne = gamma(1.0);
    Lut1DOp const identityTable(7);
    EXPECT_EQ(actionAt({&gammaOfOne}), OptimActionType::Remove);
    EXPECT_EQ(actionAt({&identityTable}), OptimActionType::Remove);
}

TEST(OptimAction, NeverTakesAGridForAnIdentity)
{
    Lut3DOp const identity(2);
    MatrixOp const matrix = scale(2);
    EXPECT_EQ(actionAt({&identity}), OptimActionType::None);
    EXPECT_EQ(actionAt({&identity, &matrix}), OptimActionType::None);
}

TEST(OptimAction, RemovesADynamicIdentityUnlessDynamicOnesAreKept)
{
    MatrixOp const matrix = scale(2);
    ExposureContrastOp const atRest = dynamicExposure(0.0);
    EXPECT_EQ(actionAt({&matrix, &atRest}, 1, false), OptimActionType::Remove);
    EXPECT_EQ(actionAt({&matrix, &atRest}, 1, true), OptimActionType::None);
}

TEST(OptimAction, DropsARangeThatOnlyClampsBeforeWhatClamps)
{
    RangeOp const range = clamp(0.2, 0.8);
    Lut1DOp const table = doubling(4);
    Lut3DOp const grid(2);
    RangeOp const narrow = clamp(0.1, 0.9);
    for (Op const* next : OpPointers{&table, &grid, &narrow})
        EXPECT_EQ(actionAt({&range, next}), OptimActionType::DropClamp) << next->getOpTypeName();
}

TEST(OptimAction, KeepsAClampBeforeWhatDoesNotClamp)
{
    RangeOp const range = clamp();
    Lut1DOp const half = halfDomain();
    InvLut1DOp const inverse(doubling(4));
    RangeOp const wide = clamp(-1.0, 1.0);
    RangeOp const oneSided(BIT_DEPTH_32f, BIT_DEPTH_32f, 0.0, RangeOp::emptyValue(), 0.0, RangeOp::emptyValue());
    MatrixOp const matrix = scale(2);
    for (Op const* next : OpPointers{&half, &inverse, &wide, &oneSided, &matrix})
        EXPECT_EQ(actionAt({&range, next}), OptimActionType::None) << next->getOpTypeName();
}

TEST(OptimAction, KeepsARangeThatScalesBeforeATable)
{
    RangeOp const stretch(BIT_DEPTH_32f, BIT_DEPTH_32f, 0.25, 0.75, 0.0, 1.0);
    RangeOp const shift(BIT_DEPTH_32f, BIT_DEPTH_32f, 0.0, 1.0, 0.25, 1.25);
    Lut1DOp const table = doubling(4);
    EXPECT_EQ(actionAt({&stretch, &table}), OptimActionType::None);
    EXPECT_EQ(actionAt({&shift, &table}), OptimActionType::None);
}

// A clamp that also changes the depth is no more than a clamp.
TEST(OptimAction, DropsAClampBetweenDepths)
{
    RangeOp const range(BIT_DEPTH_8i, BIT_DEPTH_32f, 0.0, 255.0, 0.0, 1.0);
    Lut1DOp const table = doubling(4);
    EXPECT_EQ(actionAt({&range, &table}), OptimActionType::DropClamp);
}

TEST(OptimAction, ComposesTablesWithoutHueAdjustmentAndNoInverseOnes)
{
    Lut1DOp const table = doubling(4);
    Lut1DOp const half = halfDomain();
    Lut1DOp const adjusted = hueAdjusted(4);
    InvLut1DOp const inverse(doubling(4));
    EXPECT_EQ(actionAt({&table, &half}), OptimActionType::ComposeLut1Ds);
    EXPECT_EQ(actionAt({&half, &table}), OptimActionType::ComposeLut1Ds);
    EXPECT_EQ(actionAt({&adjusted, &table}), OptimActionType::None);
    EXPECT_EQ(actionAt({&table, &adjusted}), OptimActionType::None);
    EXPECT_EQ(actionAt({&inverse, &table}), OptimActionType::None);
    EXPECT_EQ(actionAt({&table, &inverse}), OptimActionType::None);
    EXPECT_EQ(actionAt({&inverse, &inverse}), OptimActionType::None);
}

TEST(OptimAction, ComposesNothingOfTwoKinds)
{
    MatrixOp const matrix = scale(2);
    Lut1DOp const table = doubling(4);
    Lut3DOp const grid(2);
    EXPECT_EQ(actionAt({&matrix, &table}), OptimActionType::None);
    EXPECT_EQ(actionAt({&table, &grid}), OptimActionType::None);
    EXPECT_EQ(actionAt({&grid, &matrix}), OptimActionType::None);
}

TEST(OptimAction, KeepsDynamicOperatorsApartFromOthersWhereTheyAreKept)
{
    MatrixOp const matrix = scale(2);
    MatrixOp const dynamic = switchable(scale(3));
    RangeOp const range = clamp();
    Lut3DOp const dynamicGrid = switchable(Lut3DOp(2));
    for (bool const keep : {false, true})
    {
        EXPECT_EQ(actionAt({&matrix, &dynamic}, 0, keep), keep ? OptimActionType::None : OptimActionType::ComposeMatrices);
        EXPECT_EQ(actionAt({&dynamic, &matrix}, 0, keep), keep ? OptimActionType::None : OptimActionType::ComposeMatrices);
        EXPECT_EQ(actionAt({&range, &dynamicGrid}, 0, keep), keep ? OptimActionType::None : OptimActionType::DropClamp);
        EXPECT_EQ(actionAt({&dynamic, &dynamic}, 0, keep), OptimActionType::ComposeMatrices);
        EXPECT_EQ(actionAt({&matrix, &matrix}, 0, keep), OptimActionType::ComposeMatrices);
    }
}

TEST(OptimAction, RefusesAnIndexOutsideTheList)
{
    MatrixOp const matrix = scale(2);
    EXPECT_EQ(failureOf([&] { actionAt({&matrix}, 1); }), (Failure{0x260006, "Index 1 out of range"}));
}

TEST(CheckForPair, AsksForBothTypesInOrder)
{
    MatrixOp const matrix = scale(2);
    Lut1DOp const table = doubling(4);
    TransformPointer const transform = transformOf({&matrix, &table});
    OpList const& ops = transform->getOps();
    EXPECT_TRUE(checkForPair(ops, 0, Op::OpType::MatrixOp, Op::OpType::Lut1DOp));
    EXPECT_FALSE(checkForPair(ops, 0, Op::OpType::Lut1DOp, Op::OpType::MatrixOp));
    EXPECT_FALSE(checkForPair(ops, 0, Op::OpType::MatrixOp, Op::OpType::MatrixOp));
    EXPECT_FALSE(checkForPair(ops, 1, Op::OpType::Lut1DOp, Op::OpType::Lut1DOp));
}

// ---------------------------------------------------------------- actions

TEST(ApplyAction, ThrowsWhenItIsNone)
{
    MatrixOp const matrix = scale(2);
    TransformPointer transform = transformOf({&matrix});
    OptimAction action;
    EXPECT_EQ(failureOf([&] { action.applyAction(transform); }), kNullAction);
}

TEST(ApplyAction, IsNoneAfterwards)
{
    MatrixOp const matrix = scale(2);
    TransformPointer transform = transformOf({&matrix, &matrix});
    OptimAction action;
    action.findAction(transform, false);
    action.applyAction(transform);
    expectAction(action, OptimActionType::None, 0, 0);
    EXPECT_THAT(namesOf(transform), ElementsAre("Matrix"));
}

TEST(Optimize, TurnsALoneOperatorThatDoesNothingIntoAMatrixBetweenItsDepths)
{
    GammaOp nothing = gamma(1.0);
    nothing.setId("id");
    nothing.setName("name");
    nothing.getDescriptions() += "text";
    nothing.setInputBitDepth(BIT_DEPTH_8i);
    nothing.setOutputBitDepth(BIT_DEPTH_16f);
    TransformPointer const transform = optimized({&nothing}, kEverything);
    EXPECT_TRUE(areEqual(transform->getOps().get(0), MatrixOp(BIT_DEPTH_8i, BIT_DEPTH_16f, "", "", Descriptions())));
}

TEST(Optimize, LetsTheNextOperatorTakeTheDepthBeforeARemovedOne)
{
    MatrixOp const first = scale(2, BIT_DEPTH_32f, BIT_DEPTH_8i);
    MatrixOp const identity = scale(1, BIT_DEPTH_8i, BIT_DEPTH_16i);
    Lut1DOp last = doubling(4);
    last.setInputBitDepth(BIT_DEPTH_16i);
    TransformPointer const transform = optimized({&first, &identity, &last}, 100);
    EXPECT_THAT(namesOf(transform), ElementsAre("Matrix", "LUT 1D"));
    EXPECT_EQ(transform->getOps().get(1).getInputBitDepth(), BIT_DEPTH_8i);
}

TEST(Optimize, TurnsAnIdentityTableIntoTheClampThatItIs)
{
    Lut1DOp const table(BIT_DEPTH_8i, BIT_DEPTH_10i, "id", "name", Descriptions(), Lut1DOp::InterpolationAlgo::Linear,
                        HALF_FLAGS_NONE, 256);
    RangeOp const expected(BIT_DEPTH_8i, BIT_DEPTH_10i, 0.0, 255.0, 0.0, 1023.0);
    TransformPointer const transform = optimized({&table}, 100);
    ASSERT_EQ(transform->getOps().size(), 1U);
    EXPECT_TRUE(areEqual(transform->getOps().get(0), expected));
}

TEST(Optimize, TurnsBypassedTablesIntoClamps)
{
    Lut1DOp const table = bypassed(doubling(4));
    Lut3DOp const grid = bypassed(Lut3DOp(2));
    InvLut1DOp const inverse = bypassed(InvLut1DOp(doubling(4)));
    MatrixOp const matrix = scale(2);
    for (Op const* op : OpPointers{&table, &grid, &inverse})
    {
        TransformPointer const transform = optimized({&matrix, op, &matrix}, 100);
        EXPECT_THAT(namesOf(transform), ElementsAre("Matrix", "Range", "Matrix")) << op->getOpTypeName();
        EXPECT_TRUE(areEqual(transform->getOps().get(1), clamp())) << op->getOpTypeName();
    }
}

TEST(Optimize, DoesNotMergeMatricesAcrossAnIdentityTable)
{
    MatrixOp const matrix = scale(2);
    Lut1DOp const identity(7);
    EXPECT_THAT(left({&matrix, &identity, &matrix}, kEverything), ElementsAre("Matrix", "Range", "Matrix"));
}

TEST(Optimize, DropsTheClampOfAnIdentityTableBeforeATable)
{
    MatrixOp const matrix = scale(2);
    Lut1DOp const identity(7);
    Lut3DOp const grid(2);
    EXPECT_THAT(left({&matrix, &identity, &grid}, 99), ElementsAre("Matrix", "LUT 3D"));
}

TEST(Optimize, RemovesTheProductOfMatricesThatUndoEachOther)
{
    MatrixOp const twice = scale(2);
    MatrixOp const half = scale(0.5F);
    GammaOp const curve = gamma(1.5);
    EXPECT_THAT(left({&twice, &half, &curve}, 90), ElementsAre("Gamma"));
    EXPECT_THAT(left({&twice, &half}, 90), ElementsAre("Matrix"));
}

TEST(Optimize, MergesMatricesWithOffsetsInTheirOrder)
{
    MatrixOp first = scale(2);
    first.setOffsetValue(0, 0.5F);
    MatrixOp second = scale(3);
    second.setOffsetValue(0, 0.25F);
    MatrixOp const third = scale(0.5F);
    TransformPointer const transform = optimized({&first, &second, &third}, 95);
    ASSERT_THAT(namesOf(transform), ElementsAre("Matrix"));
    auto const& matrix = static_cast<MatrixOp const&>(transform->getOps().get(0));
    EXPECT_EQ(matrix.getArray().get(0), 3.0F);
    EXPECT_EQ(matrix.getOffsetValue(0), 0.875F);
}

TEST(Optimize, GivesMergedOperatorsTheSwitchOfTheFirst)
{
    MatrixOp const matrix = switchable(scale(2));
    Lut1DOp const table = switchable(doubling(4));
    Lut3DOp const grid = switchable(Lut3DOp(2));
    for (Op const* op : OpPointers{&matrix, &table, &grid})
    {
        std::unique_ptr<Op> const second(op->clone());
        second->setBypass(bypass(false, true));
        TransformPointer const transform = optimized({op, second.get()}, kEverything);
        ASSERT_EQ(transform->getOps().size(), 1U);
        EXPECT_EQ(transform->getOps().get(0).getBypass(), op->getBypass()) << op->getOpTypeName();
    }
}

// ---------------------------------------------------------------- thresholds

TEST(Optimize, DoesEachActionFromItsPriorityOnDownwards)
{
    MatrixOp const matrix = scale(2);
    MatrixOp const identity;
    RangeOp const range = clamp();
    Lut1DOp const table = doubling(4);
    Lut3DOp const grid(2);
    OpPointers const all{&identity, &range, &grid, &grid, &table, &table, &matrix, &matrix};
    struct
    {
        OptimizerFlags lowest;
        unsigned int size;
    } const steps[] = {{101, 8}, {100, 7}, {99, 6}, {95, 5}, {75, 4}, {45, 3}};
    for (std::size_t i = 0; i < std::size(steps); ++i)
    {
        EXPECT_EQ(left(all, steps[i].lowest).size(), steps[i].size) << steps[i].lowest;
        OptimizerFlags const nextLowest = i + 1 < std::size(steps) ? steps[i + 1].lowest : 0;
        EXPECT_EQ(left(all, nextLowest + 1).size(), steps[i].size) << nextLowest + 1;
    }
}

TEST(Optimize, MergesMatricesButNoTablesByDefault)
{
    MatrixOp const matrix = scale(2);
    Lut1DOp const table = doubling(4);
    EXPECT_THAT(left({&matrix, &matrix, &table, &table}, OPTIMIZER_DEFAULT_THRESHOLD), ElementsAre("Matrix", "LUT 1D", "LUT 1D"));
}

TEST(Optimize, MergesTablesIntoOneOf65536Rows)
{
    Lut1DOp const first = doubling(4);
    Lut1DOp const second = doubling(10);
    TransformPointer const transform = optimized({&first, &second}, 75);
    ASSERT_THAT(namesOf(transform), ElementsAre("LUT 1D"));
    EXPECT_EQ(static_cast<Lut1DOp const&>(transform->getOps().get(0)).getArray().getDimension(), 65536U);
}

TEST(Optimize, MergesGridsIntoTheLargerOne)
{
    Lut3DOp const small(3);
    Lut3DOp const large(5);
    for (OpPointers const& ops : {OpPointers{&small, &large}, OpPointers{&large, &small}})
    {
        TransformPointer const transform = optimized(ops, 45);
        ASSERT_THAT(namesOf(transform), ElementsAre("LUT 3D"));
        EXPECT_EQ(static_cast<Lut3DOp const&>(transform->getOps().get(0)).getArray().getDimension(), 5U);
    }
}

TEST(Optimize, FailsAtAThresholdOfZeroWhenNothingIsLeftToDo)
{
    MatrixOp const matrix = scale(2);
    EXPECT_EQ(failureOfOptimizing({&matrix}, 0), kNullAction);
    EXPECT_EQ(failureOfOptimizing({&matrix, &matrix}, 0), kNullAction);
    EXPECT_EQ(failureOfOptimizing({&matrix}, OPTIMIZER_KEEP_DYNAMIC), kNullAction);
    EXPECT_EQ(failureOfOptimizing({}, 0), kNullAction);
}

TEST(Optimize, LeavesABypassedOperatorForTheRendererToRefuseAboveAHundred)
{
    MatrixOp const matrix = bypassed(scale(2));
    Lut1DOp const table = doubling(4);
    EXPECT_THAT(left({&matrix, &table}, 100), ElementsAre("LUT 1D"));
    TransformPointer const transform = optimized({&matrix, &table}, 101);
    EXPECT_THAT(namesOf(transform), ElementsAre("Matrix", "LUT 1D"));
    EXPECT_EQ(failureOf([&] { RendererHarness::rendererOf(transform, PF_RGBA_32f, PF_RGBA_32f); }),
              (Failure{0x810008, "Unfinalized transform"}));
}

TEST(Optimize, TakesTheTopBitOfTheFlagsForKeepingDynamicOperators)
{
    MatrixOp const matrix = scale(2);
    ExposureContrastOp const exposure = dynamicExposure(1.0);
    ExposureContrastOp const atRest = dynamicExposure(0.0);
    EXPECT_THAT(left({&matrix, &exposure, &matrix}, OPTIMIZER_KEEP_DYNAMIC | 90),
                ElementsAre("Matrix", "Exposure/Contrast", "Matrix"));
    EXPECT_THAT(left({&matrix, &atRest, &matrix}, OPTIMIZER_KEEP_DYNAMIC | 90),
                ElementsAre("Matrix", "Exposure/Contrast", "Matrix"));
    EXPECT_THAT(left({&matrix, &atRest, &matrix}, 90), ElementsAre("Matrix"));
    // The bit is no part of the threshold.
    EXPECT_THAT(left({&matrix, &matrix}, OPTIMIZER_KEEP_DYNAMIC | 90), ElementsAre("Matrix"));
}

// ---------------------------------------------------------------- validation

// 16i codes meet floats: no rule is about that.
TransformPointer withBadJoint(bool withIdentity)
{
    GammaOp const curve = gamma(1.5);
    GammaOp const other = gamma(2.0);
    MatrixOp const identity;
    TransformPointer const transform = withIdentity ? transformOf({&identity, &curve}) : transformOf({&curve});
    GammaOp codes = other;
    codes.setInputBitDepth(BIT_DEPTH_16i);
    transform->getOps() += transformOf({&codes})->getOps();
    return transform;
}

TEST(Optimize, ValidatesWhatItChanged)
{
    TransformPointer transform = withBadJoint(true);
    EXPECT_EQ(failureOf([&] { optimize(transform, 90, OptimizerOverrides()); }),
              (Failure{0x26000a, "Bit depth mismatch between op 'Gamma' and op 'Gamma': "
                                 "Transform optimization failed; Validation failure"}));
}

TEST(Optimize, DoesNotValidateWhatItLeftAlone)
{
    TransformPointer transform = withBadJoint(false);
    EXPECT_EQ(failureOf([&] { optimize(transform, 90, OptimizerOverrides()); }), Failure());
    TransformPointer simplifiable = withBadJoint(true);
    EXPECT_EQ(failureOf([&] { optimize(simplifiable, 101, OptimizerOverrides()); }), Failure());
    EXPECT_EQ(simplifiable->getOps().size(), 3U);
}

TEST(Optimize, RefusesToMergeAcrossABadJoint)
{
    MatrixOp const matrix = scale(2);
    MatrixOp const codes = scale(2, BIT_DEPTH_16i, BIT_DEPTH_32f);
    TransformPointer transform = transformOf({&matrix});
    transform->getOps() += transformOf({&codes})->getOps();
    EXPECT_EQ(failureOf([&] { optimize(transform, 90, OptimizerOverrides()); }),
              (Failure{0x26000a, "Bit depth mismatch between op 'Matrix' and op 'Matrix'"}));
}

// ---------------------------------------------------------------- environment

TEST(OptimizerOverrides, ReplaceTheThreshold)
{
    MatrixOp const matrix = scale(2);
    MatrixOp const identity;
    auto const sizeWith = [&](long threshold, OptimizerFlags flags)
    {
        TransformPointer transform = transformOf({&matrix, &matrix, &identity});
        optimize(transform, flags, {threshold, -1});
        return transform->getOps().size();
    };
    EXPECT_EQ(sizeWith(101, 1), 3U);
    EXPECT_EQ(sizeWith(96, 1), 2U);
    EXPECT_EQ(sizeWith(1, 101), 1U);
    EXPECT_EQ(sizeWith(0x100000001, 1), 3U);
    EXPECT_EQ(sizeWith(-1, 101), 3U);
    EXPECT_EQ(sizeWith(-5, 90), 1U);
    EXPECT_EQ(failureOf([&] { sizeWith(0, 90); }), kNullAction);
}

TEST(OptimizerOverrides, ReplaceTheKeepDynamicBit)
{
    MatrixOp const matrix = scale(2);
    MatrixOp const dynamic = switchable(scale(3));
    auto const sizeWith = [&](long keepDynamic, OptimizerFlags flags)
    {
        TransformPointer transform = transformOf({&matrix, &dynamic});
        optimize(transform, flags, {-1, keepDynamic});
        return transform->getOps().size();
    };
    EXPECT_EQ(sizeWith(1, 90), 2U);
    EXPECT_EQ(sizeWith(7, 90), 2U);
    EXPECT_EQ(sizeWith(0, 90 | OPTIMIZER_KEEP_DYNAMIC), 1U);
    EXPECT_EQ(sizeWith(-1, 90 | OPTIMIZER_KEEP_DYNAMIC), 2U);
    EXPECT_EQ(sizeWith(-1, 90), 1U);
}

TEST(OptimizerOverrides, AreReadFromTheEnvironmentAsDecimalNumbers)
{
    struct
    {
        char const* text;
        long number;
    } const cases[] = {{"101", 101}, {"0", 0}, {"-1", -1}, {" 45 and more", 45}, {"0x10", 0}, {"none", 0}, {"", 0}};
    for (auto const& entry : cases)
    {
        ScopedEnvironment const value("TAVRIN_OPTIMIZER_VALUE", entry.text);
        ScopedEnvironment const keep("TAVRIN_OPTIMIZER_KEEP_DYNAMIC_OPS", "1");
        OptimizerOverrides const overrides = OptimizerOverrides::fromEnvironment();
        EXPECT_EQ(overrides.threshold, entry.number) << entry.text;
        EXPECT_EQ(overrides.keepDynamic, 1) << entry.text;
    }
}

TEST(OptimizerOverrides, SayNothingWithoutAVariable)
{
    ScopedEnvironment const value("TAVRIN_OPTIMIZER_VALUE", "");
    ScopedEnvironment const keep("TAVRIN_OPTIMIZER_KEEP_DYNAMIC_OPS", "");
    ::unsetenv("TAVRIN_OPTIMIZER_VALUE");
    ::unsetenv("TAVRIN_OPTIMIZER_KEEP_DYNAMIC_OPS");
    OptimizerOverrides const overrides = OptimizerOverrides::fromEnvironment();
    EXPECT_EQ(overrides.threshold, -1);
    EXPECT_EQ(overrides.keepDynamic, -1);
}

TEST(OptimizerOverrides, AreThoseOfTheTimeOfLoading)
{
    MatrixOp const matrix = scale(2);
    TransformPointer transform = transformOf({&matrix, &matrix});
    ScopedEnvironment const value("TAVRIN_OPTIMIZER_VALUE", "101");
    optimize(transform, 90);
    EXPECT_EQ(transform->getOps().size(), 1U);
}

} // namespace
