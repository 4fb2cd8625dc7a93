// Processors of OpenColorIO: built, run and read operator by operator.
#include "ocio/opUtil.h"

#include "support/tableFiles.h"
#include "support/temporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>
#include <vector>

using namespace Color::OpUtil;
using testing::ElementsAre;
using testing::HasSubstr;

namespace
{

using Pixels = std::vector<float>;

// RGBA pixels through a processor of one operator.
template <class Create, class Operator>
Pixels run(Create create, Operator const& op, Pixels pixels)
{
    Processor processor;
    create(processor, op);
    processor.finalize();
    processor.apply(pixels.data(), static_cast<unsigned int>(pixels.size() / 4), 1, 4);
    return pixels;
}

auto nearly(std::vector<double> const& values)
{
    std::vector<testing::Matcher<float>> matchers;
    for (double const value : values)
        matchers.push_back(
            testing::FloatNear(static_cast<float>(value), static_cast<float>(2e-6 * std::max(1.0, std::abs(value)))));
    return testing::ElementsAreArray(matchers);
}

Lut1D risingLut(Direction direction)
{
    Lut1D lut;
    lut.luts = {std::vector<float>{0.0F, 20.0F, 100.0F}, {0.0F, 50.0F, 100.0F}, {0.0F, 80.0F, 100.0F}};
    lut.to = {255.0F, 255.0F, 255.0F};
    lut.direction = direction;
    return lut;
}

class Processors : public testing::Test
{
protected:
    void SetUp() override
    {
        if (!isAvailable())
            GTEST_SKIP() << "this build has no OpenColorIO";
    }
};

} // namespace

TEST_F(Processors, Scale)
{
    EXPECT_THAT(run(createScaleOp, std::array{2.0F, 0.5F, -1.0F, 255.0F}, {1.0F, 1.0F, 1.0F, 1.0F}),
                ElementsAre(2.0F, 0.5F, -1.0F, 255.0F));
}

TEST_F(Processors, MultiplyByAMatrixRowByRowAndOffset)
{
    Matrix matrix;
    matrix.matrix = {1, 2, 0, 0, 0, 1, 4, 0, 8, 0, 1, 0, 0, 0, 16, 1};
    matrix.offsets = {0.5F, 0.0F, -0.5F, 0.25F};
    EXPECT_THAT(run(createMatrixOffsetOp, matrix, {1.0F, 2.0F, 3.0F, 4.0F}), ElementsAre(5.5F, 14.0F, 10.5F, 52.25F));
}

TEST_F(Processors, InvertAMatrix)
{
    Matrix matrix;
    matrix.matrix = {2, 0, 0, 0, 0, 4, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1};
    matrix.offsets = {1.0F, 0.0F, 0.0F, 0.0F};
    matrix.direction = Direction::Inverse;
    EXPECT_THAT(run(createMatrixOffsetOp, matrix, {5.0F, 2.0F, 3.0F, 1.0F}), ElementsAre(2.0F, 0.5F, 3.0F, 1.0F));
}

TEST_F(Processors, RaiseToPowersAndClampBelowZero)
{
    Exponent const powers{{2.0F, 0.5F, 3.0F, 1.5F}, Direction::Forward};
    EXPECT_THAT(run(createExponentOp, powers, {1.5F, 2.0F, -0.5F, 4.0F}), nearly({2.25, std::sqrt(2.0), 0.0, 8.0}));
    EXPECT_THAT(run(createExponentOp, Exponent{powers.exponents, Direction::Inverse}, {2.25F, 2.0F, 8.0F, 8.0F}),
                nearly({1.5, 4.0, 2.0, 4.0}));
}

TEST_F(Processors, TakeLogarithmsThereAndBack)
{
    Log log;
    log.k = {0.25F, 0.5F, 1.0F};
    log.m = {2.0F, 1.0F, 1.0F};
    log.b = {0.5F, 0.0F, 0.0F};
    log.kb = {0.75F, 0.0F, 0.25F};
    EXPECT_THAT(run(createLogOp, log, {0.25F, 100.0F, 0.1F, 0.5F}), nearly({0.75, 1.0, -0.75, 0.5}));
    log.direction = Direction::Inverse;
    EXPECT_THAT(run(createLogOp, log, {0.75F, 1.0F, -0.75F, 0.5F}), nearly({0.25, 100.0, 0.1, 0.5}));
    log.base = 2.0F;
    EXPECT_THAT(run(createLogOp, log, {1.0F, 1.0F, 1.25F, 0.5F}), nearly({0.75, 4.0, 2.0, 0.5}));
}

TEST_F(Processors, LookUpInATableOverItsDomain)
{
    EXPECT_THAT(run(createLut1DOp, risingLut(Direction::Forward), {127.5F, 255.0F, 63.75F, 9.0F}),
                nearly({20.0, 100.0, 40.0, 9.0}));
    EXPECT_THAT(run(createLut1DOp, risingLut(Direction::Forward), {-1.0F, 300.0F, 0.0F, -9.0F}), nearly({0.0, 100.0, 0.0, -9.0}));
}

TEST_F(Processors, LookUpInATableBackwards)
{
    EXPECT_THAT(run(createLut1DOp, risingLut(Direction::Inverse), {20.0F, 100.0F, 40.0F, 9.0F}),
                nearly({127.5, 255.0, 63.75, 9.0}));
    EXPECT_THAT(run(createLut1DOp, risingLut(Direction::Inverse), {-5.0F, 200.0F, 90.0F, 9.0F}), nearly({0.0, 255.0, 191.25, 9.0}));
}

TEST_F(Processors, LookUpInACubeWithRedFastest)
{
    Lut3D lut;
    lut.sizes = {2, 2, 2};
    lut.to = {10.0F, 10.0F, 10.0F};
    for (int i = 0; i < 8; ++i)
        for (int const value : {i & 1, 10 * (i >> 1 & 1), 100 * (i >> 2 & 1)})
            lut.lut.push_back(static_cast<float>(value));
    for (Interpolation const interpolation : {Interpolation::Linear, Interpolation::Tetrahedral, Interpolation::Unknown})
    {
        lut.interpolation = interpolation;
        EXPECT_THAT(run(createLut3DOp, lut, {10.0F, 5.0F, 2.5F, 7.0F}), nearly({1.0, 5.0, 25.0, 7.0}));
    }
}

TEST_F(Processors, ApplyColourDecisions)
{
    Cdl cdl;
    cdl.slope = {2.0, 1.0, 0.5};
    cdl.offset = {0.0, 0.25, 0.0};
    cdl.power = {1.0, 1.0, 2.0};
    // Without a change of saturation.
    EXPECT_THAT(run(buildCDLOp, cdl, {0.75F, 0.5F, 1.0F, 3.0F}), nearly({1.0, 0.75, 0.25, 3.0}));
    cdl.clamps = false;
    EXPECT_THAT(run(buildCDLOp, cdl, {0.75F, 0.5F, 1.0F, 3.0F}), nearly({1.5, 0.75, 0.25, 3.0}));
    cdl.direction = Direction::Inverse;
    EXPECT_THAT(run(buildCDLOp, cdl, {1.5F, 0.75F, 0.25F, 3.0F}), nearly({0.75, 0.5, 1.0, 3.0}));
}

TEST_F(Processors, RunTheirOperatorsInOrderOnThreeChannelsToo)
{
    Processor processor;
    createScaleOp(processor, {2.0F, 2.0F, 2.0F, 1.0F});
    createExponentOp(processor, {{2.0F, 2.0F, 2.0F, 1.0F}, Direction::Forward});
    processor.finalize();
    Pixels rgb{1.0F, 2.0F, 3.0F, 0.5F, 0.25F, 0.0F};
    processor.apply(rgb.data(), 1, 2, 3);
    EXPECT_THAT(rgb, nearly({4.0, 16.0, 36.0, 1.0, 0.25, 0.0}));
}

TEST_F(Processors, RefuseWhatOpenColorIOCanNotBuild)
{
    Processor singular;
    Matrix matrix;
    matrix.matrix.fill(0.0F);
    matrix.direction = Direction::Inverse;
    createMatrixOffsetOp(singular, matrix);
    EXPECT_THROW(singular.finalize(), Error);
    Processor unknown;
    unknown.append(Unknown());
    EXPECT_THROW(unknown.finalize(), Error);
}

TEST_F(Processors, OfFilesHoldTheirOperators)
{
    TemporaryFolder const folder;
    auto const processor = getFileProcessor(folder.write("a.spi1d", TableFiles::spi1d("0.0", "2.0")), Direction::Forward);
    ASSERT_EQ(getOperationsCount(*processor), 2U);
    ASSERT_EQ(getOpType(*processor, 0), OpType::Matrix);
    EXPECT_EQ(getMatrixOpProperties(*processor, 0)->matrix[0], 0.5F);
    ASSERT_EQ(getOpType(*processor, 1), OpType::Lut1D);
    Lut1D const& lut = *getLut1DOpProperties(*processor, 1);
    EXPECT_THAT(lut.luts[1], ElementsAre(0.1F, 0.25F, 0.5F, 0.75F, 0.8F));
    EXPECT_EQ(lut.interpolation, Interpolation::Linear);
    EXPECT_EQ(lut.direction, Direction::Forward);
}

TEST_F(Processors, OfFilesTellWhatIsWrongWithThem)
{
    try
    {
        getFileProcessor("/no/such/file.cube", Direction::Forward);
        FAIL() << "no error";
    }
    catch (Error const& error)
    {
        EXPECT_THAT(error.what(), HasSubstr("/no/such/file.cube"));
    }
    EXPECT_THROW(getCDLFromFile("/no/such/file.cdl", ""), Error);
}

TEST(ProcessorQueries, AreNullForOperatorsOfAnotherType)
{
    Processor processor;
    createExponentOp(processor, Exponent());
    EXPECT_NE(getExponentOpProperties(processor, 0), nullptr);
    EXPECT_EQ(getLut1DOpProperties(processor, 0), nullptr);
    EXPECT_EQ(getLut3DOpProperties(processor, 0), nullptr);
    EXPECT_EQ(getMatrixOpProperties(processor, 0), nullptr);
    EXPECT_EQ(getLogOpProperties(processor, 0), nullptr);
    EXPECT_EQ(getMoncurveOpProperties(processor, 0), nullptr);
    EXPECT_EQ(getRangeOpProperties(processor, 0), nullptr);
    EXPECT_EQ(getCDLOpProperties(processor, 0), nullptr);
    EXPECT_EQ(getExposureContrastOpProperties(processor, 0), nullptr);
}

TEST(ProcessorQueries, NumberTheTypes)
{
    Processor processor;
    for (Operation const& operation :
         {Operation(Lut1D()), Operation(Lut3D()), Operation(Matrix()), Operation(Log()), Operation(Exponent()), Operation(NoOp())})
        processor.append(operation);
    for (unsigned int i = 0; i < getOperationsCount(processor); ++i)
        EXPECT_EQ(static_cast<unsigned int>(getOpType(processor, i)), i + 1);
    EXPECT_THROW(getOpType(processor, 6), std::out_of_range);
}

TEST(ProcessorsOfABuildWithoutOpenColorIO, SaySo)
{
    if (isAvailable())
        GTEST_SKIP() << "this build has OpenColorIO";
    EXPECT_TRUE(getFileFormats().empty());
    Processor processor;
    EXPECT_THROW(processor.finalize(), Error);
    EXPECT_THROW(getFileProcessor("a.cube", Direction::Forward), Error);
    EXPECT_THROW(getCDLFromFile("a.cdl", ""), Error);
}
