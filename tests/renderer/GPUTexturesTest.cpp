// The tables that operators hand to an adaptor as textures.
#include "renderer/GPURenderer.h"
#include "renderer/ditherOpUtil.h"
#include "support/failure.h"
#include "support/recordingAdaptor.h"
#include "transform/ops.h"
#include "transform/tableValues.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <numeric>
#include <vector>

using namespace Rendering;
using namespace Color;
using namespace Tavrin;
using testing::ElementsAre;
using testing::HasSubstr;

namespace
{

// What becomes of one operator.
class Textures : public testing::Test
{
protected:
    RecordingAdaptor& adaptor() { return *m_adaptor; }
    std::vector<RecordingAdaptor::Texture> const& textures() const { return m_adaptor->textures; }

    void finalize(Op const& op)
    {
        auto transform = std::make_shared<Color::Transform>();
        transform->getOps().append(op.clone());
        GPURenderer renderer;
        renderer.setGPUAdaptor(m_handle);
        renderer.finalize(transform);
    }

private:
    RecordingAdaptor* m_adaptor = new RecordingAdaptor;
    GPUAdaptorPtr m_handle{m_adaptor};
};

// Row i of the three columns holds i, 1000 + i and 2000 + i.
Lut1DOp countingTable(unsigned int rows)
{
    Lut1DOp op(rows);
    for (unsigned int i = 0; i < rows; ++i)
    {
        for (unsigned int c = 0; c < 3; ++c)
            op.getArray().set(3 * i + c, static_cast<float>(1000 * c + i));
    }
    return op;
}

std::vector<float> counted(float first, std::size_t count)
{
    std::vector<float> values(count);
    std::iota(values.begin(), values.end(), first);
    return values;
}

TEST_F(Textures, AShortTableGoesInOneRowForEachColumn)
{
    finalize(countingTable(256));
    ASSERT_EQ(textures().size(), 3U);
    char const* const names[] = {"red_0Sampler", "green_0Sampler", "blue_0Sampler"};
    for (unsigned int c = 0; c < 3; ++c)
    {
        EXPECT_EQ(textures()[c].name, names[c]);
        EXPECT_EQ(textures()[c].width, 256U);
        EXPECT_EQ(textures()[c].values, counted(1000.0F * static_cast<float>(c), 256));
    }
}

TEST_F(Textures, ATableOfOneColumnGoesInOneTexture)
{
    Lut1DOp op = countingTable(256);
    op.getArray().setNumColorComponents(1);
    // Values are read three a row, however many columns count.
    op.getArray().getValues() = countingTable(256).getArray().getValues();
    finalize(op);
    ASSERT_EQ(textures().size(), 1U);
    EXPECT_EQ(textures()[0].name, "red_0Sampler");
    EXPECT_EQ(textures()[0].values, counted(0.0F, 256));
}

TEST_F(Textures, ValuesArePartsOfTheOutputsFullSignal)
{
    Lut1DOp op(BIT_DEPTH_8i, BIT_DEPTH_10i, "", "", {}, Lut1DOp::InterpolationAlgo::Linear, HALF_FLAGS_NONE, 256);
    op.getArray().set(0, 1023.0F);
    op.getArray().set(3, 341.0F);
    op.getArray().set(6, kInfinity);
    op.getArray().set(9, kNaN);
    finalize(op);
    EXPECT_EQ(textures()[0].values[0], 1.0F);
    EXPECT_EQ(textures()[0].values[1], 341.0F / 1023.0F);
    EXPECT_EQ(textures()[0].values[2], std::numeric_limits<float>::max());
    EXPECT_EQ(textures()[0].values[3], 0.0F);
}

TEST_F(Textures, ATableOf255RowsIsResampledTo4096AndOneOf256IsNot)
{
    adaptor().widestTexture = 4096;
    Lut1DOp few(255);
    for (float& value : few.getArray().getValues())
        value = value * value;
    finalize(few);
    ASSERT_EQ(textures()[0].values.size(), 4096U);
    // Row 1000 of 4095 lies between rows 62 and 63 of 254, whose values are the squares of their numbers.
    double const place = 1000.0 / 4095.0 * 254.0;
    double const below = std::pow(62.0 / 254.0, 2.0);
    double const above = std::pow(63.0 / 254.0, 2.0);
    EXPECT_NEAR(textures()[0].values[1000], below + (above - below) * (place - 62.0), 1e-6);

    finalize(Lut1DOp(256));
    EXPECT_EQ(textures()[0].values.size(), 256U);
}

// Rows start at 0, 1023, 2046 and 3069; the last four values open a fifth row, which the last value fills.
TEST_F(Textures, ALongTableIsFoldedToRowsThatOverlapByOne)
{
    finalize(countingTable(4096));
    RecordingAdaptor::Texture const& texture = textures()[0];
    EXPECT_EQ(texture.width, 1024U);
    EXPECT_EQ(texture.height, 5U);
    ASSERT_EQ(texture.values.size(), 5U * 1024U);
    std::vector<float> expected;
    for (unsigned int row = 0; row < 4; ++row)
    {
        std::vector<float> const values = counted(1023.0F * static_cast<float>(row), 1024);
        expected.insert(expected.end(), values.begin(), values.end());
    }
    for (float const value : {4092.0F, 4093.0F, 4094.0F, 4095.0F})
        expected.push_back(value);
    expected.resize(5U * 1024U, 4095.0F);
    EXPECT_EQ(texture.values, expected);
}

// The values behind the last full row give way to the fill.
TEST_F(Textures, ALastRowThatWouldJustBeFullIsNotWritten)
{
    adaptor().answeredSize = RecordingAdaptor::Size{129, 3};
    finalize(countingTable(384)); // three times 128
    std::vector<float> expected = counted(0.0F, 129);
    std::vector<float> const second = counted(128.0F, 129);
    expected.insert(expected.end(), second.begin(), second.end());
    expected.resize(std::size_t{3} * 129, 383.0F);
    EXPECT_EQ(textures()[0].values, expected);
}

TEST_F(Textures, TheFirstRowIsWrittenHoweverWideATextureIs)
{
    adaptor().answeredSize = RecordingAdaptor::Size{300, 2};
    finalize(countingTable(256));
    // The one row is 256 long, and so is the rest that follows it.
    std::vector<float> expected = counted(0.0F, 256);
    std::vector<float> const rest = counted(0.0F, 256);
    expected.insert(expected.end(), rest.begin(), rest.end());
    expected.resize(600, 255.0F);
    EXPECT_EQ(textures()[0].values, expected);
}

TEST_F(Textures, RowsOfOneValueAreRefused)
{
    for (unsigned int const width : {0U, 1U})
    {
        adaptor().answeredSize = RecordingAdaptor::Size{width, 4096};
        EXPECT_EQ(failureOf([this] { finalize(Lut1DOp(4096)); }),
                  (Failure{0x830001, "Failure on fragment shader program compilation: Unsupported texture width"}));
    }
}

TEST_F(Textures, AHalfDomainInOneRowKeepsItsTwoDimensionalText)
{
    adaptor().answeredSize = RecordingAdaptor::Size{65536, 1};
    finalize(Lut1DOp(BIT_DEPTH_32f, BIT_DEPTH_32f, "", "", {}, Lut1DOp::InterpolationAlgo::Linear, HALF_FLAGS_INPUT_HALF_DOMAIN));
    EXPECT_EQ(textures()[0].height, 0U);
    EXPECT_EQ(textures()[0].values.size(), 65536U);
    EXPECT_THAT(adaptor().texts.shaderHeader, HasSubstr("uniform sampler2D red_0Sampler;\n"));
    EXPECT_THAT(adaptor().texts.helperMethods, HasSubstr("retVal.y = floor(dep / 65535.0);"));
    EXPECT_THAT(adaptor().texts.processing, HasSubstr("texture2D(red_0Sampler, computePosition_0(outColor.r)).r"));
}

// The inverse of a square is a root.
TEST_F(Textures, AnInverseGoesAsTheForwardTableThatComesCloseToIt)
{
    adaptor().widestTexture = 4096;
    Lut1DOp forward(1024);
    for (float& value : forward.getArray().getValues())
        value = value * value;
    InvLut1DOp inverse(forward);
    inverse.setName("root");
    for (auto const style : {InvLut1DOp::InvStyle::Exact, InvLut1DOp::InvStyle::Fast})
    {
        inverse.setInvStyle(style);
        finalize(inverse);
        ASSERT_EQ(textures().size(), 3U);
        ASSERT_EQ(textures()[2].values.size(), 4096U);
        EXPECT_NEAR(textures()[2].values[1024], std::sqrt(1024.0 / 4095.0), 1e-6);
        EXPECT_THAT(adaptor().texts.processing, HasSubstr("// Step 0: Inverse LUT 1D: root [32f => 32f]"));
    }
}

TEST_F(Textures, AnInverseBeyondItsRangeGoesWithAHalfDomain)
{
    Lut1DOp forward(1024);
    forward.getArray().scale(2.0F);
    finalize(InvLut1DOp(forward));
    EXPECT_THAT(adaptor().texts.helperMethods, HasSubstr("HALF_MAX"));
    EXPECT_EQ(textures()[0].height, 65U); // 65536 values in rows of 1024 that overlap by one
}

TEST_F(Textures, ResamplingKeepsTheSwitchOfTheOperator)
{
    Lut1DOp op(4);
    op.setBypass(std::make_shared<BypassDynamicProperty>(false, true));
    finalize(op);
    ASSERT_EQ(adaptor().uniforms.size(), 1U);
    EXPECT_EQ(adaptor().uniforms[0].value, op.getBypass()->getAddress());
    EXPECT_THAT(adaptor().texts.processing, HasSubstr("if(Bypass_0!=1.0)"));
}

TEST_F(Textures, ACubeGoesInStoredOrderWithTheFilterOfItsInterpolation)
{
    using Interpolation = Lut3DOp::InterpolationAlgo;
    for (auto const& [interpolation, linear] :
         {std::pair(Interpolation::Default, true), std::pair(Interpolation::Trilinear, true),
          std::pair(Interpolation::Tetrahedral, false), std::pair(Interpolation::FourPointTetrahedral, true)})
    {
        Lut3DOp op(BIT_DEPTH_32f, BIT_DEPTH_8i, "", "", {}, interpolation, 2);
        op.getArray().set(1, 51.0F);
        op.getArray().set(2, kInfinity);
        finalize(op);
        ASSERT_EQ(textures().size(), 1U);
        EXPECT_EQ(textures()[0].name, "lut3d_0Sampler");
        EXPECT_EQ(textures()[0].width, 2U);
        EXPECT_EQ(textures()[0].linear, linear);
        std::vector<float> expected;
        for (float const value : op.getArray().getValues())
            expected.push_back(value / 255.0F);
        expected[2] = std::numeric_limits<float>::max();
        EXPECT_EQ(textures()[0].values, expected);
    }
}

TEST_F(Textures, AMaskHasNoiseOfOneStepOfItsDepth)
{
    for (auto const& [depth, bits] : {std::pair(BIT_DEPTH_8i, 8), std::pair(BIT_DEPTH_10i, 10), std::pair(BIT_DEPTH_12i, 12)})
    {
        finalize(DitherOp(BIT_DEPTH_32f, BIT_DEPTH_32f, depth));
        ASSERT_EQ(textures().size(), 1U) << bits;
        EXPECT_EQ(textures()[0].name, "bayer_0Sampler");
        std::vector<float> const& values = textures()[0].values;
        ASSERT_EQ(values.size(), 256U);
        // Each of 256 evenly spaced values once, around zero, in the order of Bayer's matrix.
        std::vector<std::uint16_t> const& numbers = DitherOpUtil::getIntBayerMatrix(16);
        for (std::size_t i = 0; i < values.size(); ++i)
            EXPECT_EQ(values[i], std::ldexp((numbers[i] + 0.5) / 256.0 - 0.5, -bits)) << i;
    }
}

// No dither adds noise for a float depth; the step is told all the same.
TEST(DitherStep, IsAPowerOfTwoByTheDepthsBits)
{
    EXPECT_EQ(DitherOpUtil::getStep(BIT_DEPTH_8i), 1.0F / 256.0F);
    EXPECT_EQ(DitherOpUtil::getStep(BIT_DEPTH_16i), 1.0F / 65536.0F);
    EXPECT_EQ(DitherOpUtil::getStep(BIT_DEPTH_16f), 1.0F / 1024.0F);
    EXPECT_EQ(DitherOpUtil::getStep(BIT_DEPTH_32f), std::ldexp(1.0F, -32));
}

TEST_F(Textures, AMaskHasToFitOneRow)
{
    adaptor().answeredSize = RecordingAdaptor::Size{128, 2};
    EXPECT_EQ(failureOf([this] { finalize(DitherOp(BIT_DEPTH_32f, BIT_DEPTH_32f, BIT_DEPTH_8i)); }),
              (Failure{0x830001, "Failure on fragment shader program compilation: Unsupported bayer matrix size"}));
}

TEST_F(Textures, AMaskIsAsWideAsTheAdaptorSays)
{
    adaptor().answeredSize = RecordingAdaptor::Size{512, 1};
    finalize(DitherOp(BIT_DEPTH_32f, BIT_DEPTH_32f, BIT_DEPTH_8i));
    EXPECT_EQ(textures()[0].values.size(), 512U);
    EXPECT_THAT(adaptor().texts.processing, HasSubstr("float lookup = (dep.y * 16. + dep.x) / 512.;"));
}

TEST_F(Textures, ADitherWithoutNoiseHasNone)
{
    finalize(DitherOp(BIT_DEPTH_8i, BIT_DEPTH_8i, BIT_DEPTH_8i));
    EXPECT_TRUE(textures().empty());
}

} // namespace
