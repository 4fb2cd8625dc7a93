// The matrix: depths, identity, inverse, composition. Expected values are worked out by hand, in numbers that floats hold exactly
// where nothing else is said.
#include "transform/matrixOp.h"
#include "support/failure.h"
#include "transform/opList.h"
#include "transform/testOps.h"

#include <gmock/gmock.h>

#include <limits>
#include <vector>

using namespace Color;
using namespace Tavrin;
using testing::ElementsAre;
using testing::FloatEq;

namespace
{

constexpr float kNaN = std::numeric_limits<float>::quiet_NaN();

constexpr float kUnit[16] = {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1};
constexpr float kCounting[16] = {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16};
constexpr float kOffsets[4] = {1, 2, 3, 4};

MatrixOp matrix(BitDepth in, BitDepth out)
{
    return MatrixOp(in, out, "id", "name", Descriptions());
}

MatrixOp diagonal(BitDepth in, BitDepth out, float value)
{
    MatrixOp op = matrix(in, out);
    for (unsigned int i = 0; i < 16; i += 5)
        op.setArrayValue(i, value);
    return op;
}

MatrixOp withValues(float const* values, float const* offsets = nullptr)
{
    MatrixOp op = matrix(BIT_DEPTH_32f, BIT_DEPTH_32f);
    op.setRGBAValues(values);
    if (offsets != nullptr)
        op.getOffsets().setRGBAValues(offsets);
    return op;
}

std::vector<float> offsetsOf(MatrixOp const& op)
{
    return {op.getOffsets().getValues(), op.getOffsets().getValues() + 4};
}

std::vector<float> const& valuesOf(MatrixOp const& op)
{
    return op.getArray().getValues();
}

// The operator that inverse appends, alone in its list.
MatrixOp inverseOf(MatrixOp const& op)
{
    OpList list;
    op.inverse(list);
    return dynamic_cast<MatrixOp const&>(list.get(0));
}

TEST(MatrixOp, StartsAsAnIdentityBetweenFloats)
{
    MatrixOp const op;
    EXPECT_EQ(op.getInputBitDepth(), BIT_DEPTH_32f);
    EXPECT_EQ(op.getOutputBitDepth(), BIT_DEPTH_32f);
    EXPECT_EQ(op.getId(), "");
    EXPECT_EQ(op.getName(), "");
    EXPECT_EQ(op.getOpType(), Op::OpType::MatrixOp);
    EXPECT_EQ(op.getOpTypeName(), "Matrix");
    EXPECT_EQ(op.getArray().getDimension(), 4U);
    EXPECT_EQ(op.getArray().getNumColorComponents(), 4U);
    EXPECT_THAT(valuesOf(op), testing::ElementsAreArray(kUnit));
    EXPECT_THAT(offsetsOf(op), ElementsAre(0, 0, 0, 0));
    EXPECT_TRUE(op.isNoop());
}

TEST(MatrixOp, StartsAsTheIdentityThatItsDepthsMean)
{
    MatrixOp const op = matrix(BIT_DEPTH_8i, BIT_DEPTH_32f);
    for (unsigned int i = 0; i < 16; ++i)
        EXPECT_EQ(op.getArray().get(i), i % 5 == 0 ? 1.0F / 255.0F : 0.0F);
    EXPECT_TRUE(op.isIdentity());
    EXPECT_FALSE(op.isNoop());
    EXPECT_EQ(op.getArray().getDepthScale(), 1.0F / 255.0F);
}

TEST(MatrixOp, MakesDiagonalMatrices)
{
    std::unique_ptr<MatrixOp> const op(MatrixOp::createDiagonalMatrix(BIT_DEPTH_8i, BIT_DEPTH_16f, 0.5F));
    EXPECT_EQ(op->getId(), "none");
    EXPECT_EQ(op->getName(), "Diagonal matrix");
    EXPECT_TRUE(op->getDescriptions().getList().empty());
    EXPECT_EQ(op->getInputBitDepth(), BIT_DEPTH_8i);
    EXPECT_EQ(op->getOutputBitDepth(), BIT_DEPTH_16f);
    for (unsigned int i = 0; i < 16; ++i)
        EXPECT_EQ(op->getArray().get(i), i % 5 == 0 ? 0.5F : 0.0F);
    EXPECT_FALSE(op->getOffsets().isNotNull());
}

TEST(MatrixOp, TakesColourValuesAndCarriesAlphaOver)
{
    MatrixOp op = matrix(BIT_DEPTH_8i, BIT_DEPTH_16i);
    op.setRGBAValues(kCounting);
    EXPECT_THAT(valuesOf(op), testing::ElementsAreArray(kCounting));
    op.setRGBValues(kCounting);
    EXPECT_THAT(valuesOf(op), ElementsAre(1, 2, 3, 0, 4, 5, 6, 0, 7, 8, 9, 0, 0, 0, 0, 257));
}

TEST(MatrixOp, TakesOffsets)
{
    MatrixOp op;
    op.getOffsets().setRGBAValues(kOffsets);
    EXPECT_THAT(offsetsOf(op), ElementsAre(1, 2, 3, 4));
    op.getOffsets().setRGBValues(kOffsets);
    EXPECT_THAT(offsetsOf(op), ElementsAre(1, 2, 3, 0));
    op.getOffsets().scale(2.0F);
    EXPECT_THAT(offsetsOf(op), ElementsAre(2, 4, 6, 0));
    op.setOffsetValue(3, 9.0F);
    EXPECT_EQ(op.getOffsetValue(3), 9.0F);
}

TEST(MatrixOp, RefusesNullOffsets)
{
    MatrixOp op;
    Failure const invalid{0x23000e, "Invalid matrix offsets values "};
    EXPECT_EQ(failureOf([&] { op.getOffsets().setRGBAValues(nullptr); }), invalid);
    EXPECT_EQ(failureOf([&] { op.getOffsets().setRGBValues(nullptr); }), invalid);
}

TEST(MatrixOp, RefusesOffsetIndicesBeyondTheArray)
{
    MatrixOp op = matrix(BIT_DEPTH_8i, BIT_DEPTH_8i);
    Failure const outOfRange{0x23000c, "name index offset '4' out of range"};
    EXPECT_EQ(failureOf([&] { op.setOffsetValue(4, 1.0F); }), outOfRange);
    EXPECT_EQ(failureOf([&] { op.getOffsetValue(4); }), outOfRange);

    op.getArray().resize(3, 3);
    EXPECT_EQ(failureOf([&] { op.setOffsetValue(3, 1.0F); }).id, 0x23000cU);
    EXPECT_EQ(failureOf([&] { op.setOffsetValue(2, 1.0F); }), Failure());
    op.getArray().resize(5, 4);
    EXPECT_EQ(failureOf([&] { op.setOffsetValue(4, 1.0F); }), outOfRange); // There are four offsets, whatever the array.
}

TEST(MatrixOp, OffsetsAreNullByTheirBytes)
{
    MatrixOp op;
    EXPECT_FALSE(op.getOffsets().isNotNull());
    op.setOffsetValue(1, -0.0F);
    EXPECT_TRUE(op.getOffsets().isNotNull());
    EXPECT_FALSE(op.getOffsets() == MatrixOp().getOffsets());
    EXPECT_FALSE(op.isIdentity());
    EXPECT_FALSE(areEqual(op, MatrixOp()));

    MatrixOp nan;
    nan.setOffsetValue(0, kNaN);
    EXPECT_TRUE(nan.getOffsets() == nan.getOffsets());
}

// Values are scaled by old maximum / new maximum; the offsets belong to the output.
TEST(MatrixOp, InputDepthRescalesTheArrayAlone)
{
    MatrixOp op = withValues(kUnit, kOffsets);
    op.setInputBitDepth(BIT_DEPTH_10i);
    EXPECT_EQ(op.getInputBitDepth(), BIT_DEPTH_10i);
    EXPECT_EQ(op.getArray().get(0), 1.0F / 1023.0F);
    EXPECT_EQ(op.getArray().get(15), 1.0F / 1023.0F);
    EXPECT_EQ(op.getArray().get(1), 0.0F);
    EXPECT_THAT(offsetsOf(op), ElementsAre(1, 2, 3, 4));
}

TEST(MatrixOp, OutputDepthRescalesArrayAndOffsets)
{
    MatrixOp op = withValues(kCounting, kOffsets);
    op.setOutputBitDepth(BIT_DEPTH_8i);
    EXPECT_EQ(op.getOutputBitDepth(), BIT_DEPTH_8i);
    EXPECT_EQ(op.getArray().get(1), 510.0F);
    EXPECT_EQ(op.getArray().get(15), 4080.0F);
    EXPECT_THAT(offsetsOf(op), ElementsAre(255, 510, 765, 1020));
    op.setOutputBitDepth(BIT_DEPTH_16i);
    EXPECT_EQ(op.getArray().get(1), 131070.0F);
    EXPECT_THAT(offsetsOf(op), ElementsAre(65535, 131070, 196605, 262140));
}

TEST(MatrixOp, StaysAnIdentityThroughDepthChanges)
{
    BitDepth const depths[] = {BIT_DEPTH_8i, BIT_DEPTH_10i, BIT_DEPTH_12i, BIT_DEPTH_16i, BIT_DEPTH_16f, BIT_DEPTH_32f};
    MatrixOp op;
    for (BitDepth const in : depths)
    {
        for (BitDepth const out : depths)
        {
            op.setInputBitDepth(in);
            op.setOutputBitDepth(out);
            EXPECT_TRUE(op.isIdentity()) << getBitDepthName(in) << " to " << getBitDepthName(out);
        }
    }
}

TEST(MatrixOp, IsAnIdentityWithinAMillionth)
{
    EXPECT_TRUE(diagonal(BIT_DEPTH_8i, BIT_DEPTH_8i, 1.0000005F).isIdentity());
    EXPECT_FALSE(diagonal(BIT_DEPTH_8i, BIT_DEPTH_8i, 1.00001F).isIdentity());
    EXPECT_FALSE(diagonal(BIT_DEPTH_8i, BIT_DEPTH_8i, 0.99999F).isIdentity());
    EXPECT_FALSE(diagonal(BIT_DEPTH_8i, BIT_DEPTH_8i, kNaN).isIdentity());
}

TEST(MatrixOp, BetweenDepthsMayBeAnIdentityAndStillDoSomething)
{
    MatrixOp const op = diagonal(BIT_DEPTH_8i, BIT_DEPTH_16i, 257.0F);
    EXPECT_TRUE(op.isIdentity());
    EXPECT_FALSE(op.isNoop());
    EXPECT_FALSE(diagonal(BIT_DEPTH_8i, BIT_DEPTH_16i, 1.0F).isIdentity());
}

TEST(MatrixOp, IsNoIdentityWithTheSmallestOffset)
{
    MatrixOp op;
    op.setOffsetValue(0, 1e-9F);
    EXPECT_FALSE(op.isIdentity());
}

TEST(MatrixOp, IsNoIdentityWithTheSmallestElementOffTheDiagonal)
{
    for (unsigned int i = 0; i < 16; ++i)
    {
        if (i % 5 == 0)
            continue;
        MatrixOp op;
        op.setArrayValue(i, 1e-30F);
        EXPECT_FALSE(op.isIdentity()) << i;
        EXPECT_FALSE(op.isDiagonal()) << i;
        EXPECT_FALSE(op.isEye()) << i;
        op.setArrayValue(i, kNaN);
        EXPECT_FALSE(op.isDiagonal()) << i;
        op.setArrayValue(i, -0.0F);
        EXPECT_TRUE(op.isIdentity()) << i;
        EXPECT_TRUE(op.isDiagonal()) << i;
    }
}

TEST(MatrixOp, IsDiagonalWhateverTheDiagonalAndOffsets)
{
    MatrixOp op = diagonal(BIT_DEPTH_8i, BIT_DEPTH_32f, kNaN);
    op.getOffsets().setRGBAValues(kOffsets);
    EXPECT_TRUE(op.isDiagonal());
}

TEST(MatrixOp, IsTheUnitMatrixWhateverTheDepthsAndOffsets)
{
    MatrixOp op = diagonal(BIT_DEPTH_8i, BIT_DEPTH_16i, 1.0F);
    op.getOffsets().setRGBAValues(kOffsets);
    EXPECT_TRUE(op.isEye());
    EXPECT_TRUE(op.getArray().isIdentity());
    EXPECT_FALSE(matrix(BIT_DEPTH_8i, BIT_DEPTH_16i).isEye());
    op.setArrayValue(15, 1.0000001F);
    EXPECT_FALSE(op.isEye());
}

TEST(MatrixOp, TouchesAlphaThroughItsColumnItsRowOrItsScale)
{
    for (unsigned int const i : {3U, 7U, 11U, 12U, 13U, 14U})
    {
        MatrixOp op;
        op.setArrayValue(i, 1e-30F);
        EXPECT_TRUE(op.hasAlpha()) << i;
        op.setArrayValue(i, kNaN);
        EXPECT_TRUE(op.hasAlpha()) << i;
    }
    MatrixOp op = matrix(BIT_DEPTH_8i, BIT_DEPTH_16i);
    EXPECT_FALSE(op.hasAlpha());
    op.setArrayValue(15, 257.0001F);
    EXPECT_FALSE(op.hasAlpha());
    op.setArrayValue(15, 257.001F);
    EXPECT_TRUE(op.hasAlpha());
}

TEST(MatrixOp, DoesNotTouchAlphaThroughColoursOrTheAlphaOffset)
{
    MatrixOp op;
    for (unsigned int const i : {0U, 1U, 2U, 4U, 5U, 6U, 8U, 9U, 10U})
        op.setArrayValue(i, 3.0F);
    op.setOffsetValue(3, 1.0F);
    EXPECT_FALSE(op.hasAlpha());
}

// [2 1; 0 4] has the inverse [1/2 -1/8; 0 1/4]; new offsets are the negated product of the inverse and the old ones.
TEST(MatrixOp, InverseSolvesForTheInput)
{
    MatrixOp op;
    op.setArrayValue(0, 2.0F);
    op.setArrayValue(1, 1.0F);
    op.setArrayValue(5, 4.0F);
    op.getOffsets().setRGBAValues(kOffsets);
    MatrixOp const inverse = inverseOf(op);
    EXPECT_THAT(valuesOf(inverse), ElementsAre(0.5F, -0.125F, 0, 0, 0, 0.25F, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1));
    EXPECT_THAT(offsetsOf(inverse), ElementsAre(-0.25F, -0.5F, -3.0F, -4.0F));
}

// Red and alpha change places: there is nothing to begin with on the diagonal.
TEST(MatrixOp, InverseFindsItsPivots)
{
    constexpr float kSwap[16] = {0, 0, 0, 1, 0, 1, 0, 0, 0, 0, 1, 0, 1, 0, 0, 0};
    EXPECT_THAT(valuesOf(inverseOf(withValues(kSwap))), testing::ElementsAreArray(kSwap));
}

TEST(MatrixOp, InverseSwapsDepthsAndDropsTextsAndBypass)
{
    MatrixOp op(BIT_DEPTH_8i, BIT_DEPTH_32f, "id", "name", Descriptions());
    op.getDescriptions() += "text";
    op.setBypass(bypass(true, true));
    MatrixOp const inverse = inverseOf(op);
    EXPECT_EQ(inverse.getInputBitDepth(), BIT_DEPTH_32f);
    EXPECT_EQ(inverse.getOutputBitDepth(), BIT_DEPTH_8i);
    EXPECT_EQ(inverse.getId(), "");
    EXPECT_EQ(inverse.getName(), "");
    EXPECT_TRUE(inverse.getDescriptions().getList().empty());
    EXPECT_FALSE(inverse.getBypass()->getValue());
    EXPECT_FALSE(inverse.getBypass()->isDynamic());
    EXPECT_THAT(inverse.getArray().get(0), FloatEq(255.0F));
    EXPECT_FALSE(inverse.getOffsets().isNotNull());
    EXPECT_TRUE(inverse.isIdentity());
}

// Rec. ITU-R BT.709 primaries to XYZ, with offsets. The product of the matrix and its inverse is a few units of 2^-24 off the unit
// matrix, less than the millionth that a composition forgives; its offsets are one sum and its negation.
TEST(MatrixOp, InverseUndoesTheMatrixWithinFloatNoise)
{
    constexpr float kToXyz[9] = {0.4124F, 0.3576F, 0.1805F, 0.2126F, 0.7152F, 0.0722F, 0.0193F, 0.1192F, 0.9505F};
    MatrixOp op = matrix(BIT_DEPTH_8i, BIT_DEPTH_32f);
    op.setRGBValues(kToXyz);
    constexpr float kSmallOffsets[4] = {0.1F, -0.2F, 0.3F, 0.4F};
    op.getOffsets().setRGBAValues(kSmallOffsets);

    MatrixOp const unit = op.compose(inverseOf(op));
    EXPECT_EQ(unit.getInputBitDepth(), BIT_DEPTH_8i);
    EXPECT_EQ(unit.getOutputBitDepth(), BIT_DEPTH_8i);
    EXPECT_TRUE(unit.isEye());
    EXPECT_THAT(offsetsOf(unit), ElementsAre(0, 0, 0, 0));
}

TEST(MatrixOp, InverseOfASingularMatrixIsTheIdentity)
{
    MatrixOp zero = diagonal(BIT_DEPTH_8i, BIT_DEPTH_32f, 0.0F);
    MatrixOp const inverse = inverseOf(zero);
    EXPECT_TRUE(inverse.isIdentity());
    EXPECT_EQ(inverse.getInputBitDepth(), BIT_DEPTH_32f);
    EXPECT_EQ(inverse.getOutputBitDepth(), BIT_DEPTH_8i);
    EXPECT_EQ(inverse.getArray().get(0), 255.0F);

    zero.getOffsets().setRGBAValues(kOffsets);
    EXPECT_THAT(offsetsOf(inverseOf(zero)), ElementsAre(-255.0F, -510.0F, -765.0F, -1020.0F));
}

// x -> 2x + (1 2 3 4), then red <- red + green, rest unchanged, + (1/2 ...): red <- 2r + 2g + 1 + 2 + 1/2.
TEST(MatrixOp, ComposesInTheOrderOfTheList)
{
    MatrixOp first = diagonal(BIT_DEPTH_32f, BIT_DEPTH_32f, 2.0F);
    first.getOffsets().setRGBAValues(kOffsets);
    MatrixOp second;
    second.setArrayValue(1, 1.0F);
    constexpr float kHalves[4] = {0.5F, 0.5F, 0.5F, 0.5F};
    second.getOffsets().setRGBAValues(kHalves);

    MatrixOp const both = first.compose(second);
    EXPECT_THAT(valuesOf(both), ElementsAre(2, 2, 0, 0, 0, 2, 0, 0, 0, 0, 2, 0, 0, 0, 0, 2));
    EXPECT_THAT(offsetsOf(both), ElementsAre(3.5F, 2.5F, 3.5F, 4.5F));

    MatrixOp const other = second.compose(first);
    EXPECT_THAT(valuesOf(other), ElementsAre(2, 2, 0, 0, 0, 2, 0, 0, 0, 0, 2, 0, 0, 0, 0, 2));
    EXPECT_THAT(offsetsOf(other), ElementsAre(2.0F, 3.0F, 4.0F, 5.0F));
}

TEST(MatrixOp, ComposeJoinsDepthsAndTexts)
{
    MatrixOp first(BIT_DEPTH_8i, BIT_DEPTH_10i, "id1", "name1", Descriptions());
    first.getDescriptions() += "text1";
    MatrixOp second(BIT_DEPTH_10i, BIT_DEPTH_16i, "id2", "name2", Descriptions());
    second.getDescriptions() += "text2";
    MatrixOp const both = first.compose(second);
    EXPECT_EQ(both.getInputBitDepth(), BIT_DEPTH_8i);
    EXPECT_EQ(both.getOutputBitDepth(), BIT_DEPTH_16i);
    EXPECT_EQ(both.getId(), "id1id2");
    EXPECT_EQ(both.getName(), "name1name2");
    EXPECT_THAT(both.getDescriptions().getList(), ElementsAre("text1", "text2"));
    EXPECT_TRUE(both.isIdentity());
}

TEST(MatrixOp, ComposeOfAScaleAndItsInverseIsExactlyTheUnitMatrix)
{
    MatrixOp const twice = diagonal(BIT_DEPTH_32f, BIT_DEPTH_32f, 2.0F);
    MatrixOp const half = diagonal(BIT_DEPTH_32f, BIT_DEPTH_32f, 0.5F);
    EXPECT_TRUE(twice.compose(half).isEye());
    // These are not inverse as floats: their product is a unit in the last place off.
    MatrixOp const many = diagonal(BIT_DEPTH_32f, BIT_DEPTH_32f, 41.0F);
    MatrixOp const few = diagonal(BIT_DEPTH_32f, BIT_DEPTH_32f, 1.0F / 41.0F);
    ASSERT_NE(41.0F * (1.0F / 41.0F), 1.0F);
    EXPECT_TRUE(many.compose(few).isEye());
}

TEST(MatrixOp, ComposeRefusesDepthsThatDoNotMeet)
{
    MatrixOp const first(BIT_DEPTH_8i, BIT_DEPTH_10i, "", "first", Descriptions());
    MatrixOp const second(BIT_DEPTH_8i, BIT_DEPTH_8i, "", "second", Descriptions());
    EXPECT_EQ(failureOf([&] { first.compose(second); }),
              (Failure{0x26000a, "Bit depth mismatch between op 'first' and op 'second'"}));
}

TEST(MatrixOp, ComposeRefusesArraysOfAnotherSize)
{
    MatrixOp const op;
    MatrixOp small;
    small.getArray().resize(3, 3);
    Failure const invalid{0x23000d, "Invalid matrix dimension for compose operation"};
    EXPECT_EQ(failureOf([&] { small.compose(op); }), invalid);
    EXPECT_EQ(failureOf([&] { op.compose(small); }), invalid);
}

// The tolerance is a millionth of the largest value.
TEST(MatrixOp, CleanUpSnapsValuesNearIntegers)
{
    MatrixOp op;
    op.setArrayValue(0, 0.9999995F);
    op.setArrayValue(1, 1e-8F);
    op.setArrayValue(2, 0.4999999F);
    op.setArrayValue(4, 0.99999F);
    op.setArrayValue(6, -1.0000005F);
    op.cleanUp(0.0F);
    EXPECT_THAT(valuesOf(op), ElementsAre(1.0F, 0.0F, 0.4999999F, 0, 0.99999F, 1, -1.0F, 0, 0, 0, 1, 0, 0, 0, 0, 1));
}

TEST(MatrixOp, CleanUpMeasuresNoiseByTheLargestValue)
{
    MatrixOp op;
    op.setArrayValue(0, -1000.0F);
    op.setArrayValue(1, 1.0005F);
    op.setArrayValue(2, 1.002F);
    op.cleanUp(0.0F);
    EXPECT_EQ(op.getArray().get(1), 1.0F);
    EXPECT_EQ(op.getArray().get(2), 1.002F);
}

// Everything is tiny, yet the tolerance is no less than 1e-4 times a millionth.
TEST(MatrixOp, CleanUpHasASmallestTolerance)
{
    MatrixOp op = diagonal(BIT_DEPTH_32f, BIT_DEPTH_32f, 5e-11F);
    op.setArrayValue(1, 2e-10F);
    op.setOffsetValue(0, 5e-11F);
    op.setOffsetValue(1, 2e-10F);
    op.cleanUp(0.0F);
    EXPECT_EQ(op.getArray().get(0), 0.0F);
    EXPECT_EQ(op.getArray().get(1), 2e-10F);
    EXPECT_THAT(offsetsOf(op), ElementsAre(0.0F, 2e-10F, 0.0F, 0.0F));
}

TEST(MatrixOp, CleanUpMeasuresOffsetsByTheGivenMagnitude)
{
    MatrixOp op;
    op.setOffsetValue(0, 2.00005F);
    op.setOffsetValue(1, 2.001F);
    op.cleanUp(100.0F);
    EXPECT_THAT(offsetsOf(op), ElementsAre(2.0F, 2.001F, 0.0F, 0.0F));
    op.setOffsetValue(0, 2.00005F);
    op.cleanUp(1.0F);
    EXPECT_EQ(op.getOffsetValue(0), 2.00005F);
}

// What cancels in a composition leaves noise of the size of what was cancelled: 100000.01 - 100000 is 0.0078 in floats.
TEST(MatrixOp, ComposeMeasuresOffsetNoiseBeforeOffsetsCancel)
{
    MatrixOp first;
    first.setOffsetValue(0, 100000.01F);
    MatrixOp second;
    second.setOffsetValue(0, -100000.0F);
    ASSERT_NE(100000.01F - 100000.0F, 0.0F);
    EXPECT_EQ(first.compose(second).getOffsetValue(0), 0.0F);
}

TEST(MatrixOp, ValidatesWhatItStartsWith)
{
    EXPECT_EQ(failureOf([] { matrix(BIT_DEPTH_8i, BIT_DEPTH_32f).validate(); }), Failure());
}

TEST(MatrixOp, ExpandsAThreeByThreeArrayWhenValidated)
{
    MatrixOp op = matrix(BIT_DEPTH_8i, BIT_DEPTH_16i);
    op.getArray().resize(3, 3);
    for (unsigned int i = 0; i < 9; ++i)
        op.setArrayValue(i, static_cast<float>(i + 1));
    op.validate();
    EXPECT_EQ(op.getArray().getDimension(), 4U);
    EXPECT_EQ(op.getArray().getNumColorComponents(), 4U);
    EXPECT_THAT(valuesOf(op), ElementsAre(1, 2, 3, 0, 4, 5, 6, 0, 7, 8, 9, 0, 0, 0, 0, 257));
}

TEST(MatrixOp, WithAnIllegalArrayIsInvalid)
{
    auto const validateResized = [](unsigned int dimension, unsigned int components)
    {
        MatrixOp op(BIT_DEPTH_8i, BIT_DEPTH_8i, "id", "x", Descriptions());
        op.getArray().resize(dimension, components);
        return failureOf([&] { op.validate(); });
    };
    Failure const illegal{0x210005, "Array content illegal: Array content for x illegal"};
    EXPECT_EQ(validateResized(0, 4), (Failure{0x210004, "Array content empty: Array content for x illegal"}));
    EXPECT_EQ(validateResized(2, 4), illegal);
    EXPECT_EQ(validateResized(5, 4), illegal);
    EXPECT_EQ(validateResized(4, 3), illegal);

    MatrixOp op(BIT_DEPTH_8i, BIT_DEPTH_8i, "id", "x", Descriptions());
    op.getArray().getValues().pop_back();
    EXPECT_EQ(failureOf([&] { op.validate(); }), illegal);
}

TEST(MatrixOp, WithoutADepthIsInvalidBeforeItsArrayIs)
{
    MatrixOp op(BIT_DEPTH_UNKNOWN, BIT_DEPTH_8i, "id", "x", Descriptions());
    op.getArray().resize(0, 4);
    EXPECT_EQ(failureOf([&] { op.validate(); }), (Failure{0x210001, "'InBitDepth' attribute missing in x"}));
}

TEST(MatrixOp, EqualityLooksAtArrayAndOffsets)
{
    MatrixOp const op = withValues(kCounting, kOffsets);
    EXPECT_TRUE(areEqual(op, withValues(kCounting, kOffsets)));
    EXPECT_FALSE(areEqual(op, withValues(kUnit, kOffsets)));
    EXPECT_FALSE(areEqual(op, withValues(kCounting)));
    EXPECT_FALSE(areEqual(op, PlainOp(BIT_DEPTH_32f, BIT_DEPTH_32f, "name")));
}

TEST(MatrixOp, IsNotEqualToAnOperatorOfAnotherTypeWithTheSameTexts)
{
    MatrixOp const op;
    EXPECT_FALSE(areEqual(op, PlainOp(BIT_DEPTH_32f, BIT_DEPTH_32f)));
}

} // namespace
