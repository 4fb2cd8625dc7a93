// Dither and stock transforms from factories, and how dither, gamut map and hue vector are displayed, through the public interface.
#include "contentRecorder.h"

#include <gmock/gmock.h>

#include <cstdint>
#include <string>
#include <vector>

using namespace Tavrin;
using testing::Contains;
using testing::ElementsAre;
using testing::IsSupersetOf;

namespace
{

TransformPtr load(std::string const& operators)
{
    TransformPtr transform;
    std::string const text = "<?xml version='1.0'?><ProcessList version='1.4' id='a'>" + operators + "</ProcessList>";
    TavStatus const status = loadColorTransformFromBuffer(text.c_str(), transform);
    EXPECT_TRUE(status) << status.getErrorMessage();
    return transform;
}

// Values that are at rest stay changeable.
void finalizeFor(TransformPtr const& transform, PixelFormat in, PixelFormat out)
{
    OptimizerFlags const flags = OPTIMIZER_DEFAULT_THRESHOLD | OPTIMIZER_KEEP_DYNAMIC;
    ASSERT_TRUE(transform->finalize(in, out, RENDERER_CPU, flags, RESOLVE_BROADCAST_MONITOR));
}

} // namespace

TEST(CreateDitherTransform, GivesOneDitherWithNames)
{
    TransformPtr transform;
    ASSERT_TRUE(CreateDitherTransform(BIT_DEPTH_16i, BIT_DEPTH_8i, BIT_DEPTH_8i, transform));
    EXPECT_STREQ(transform->getName(), "none");
    EXPECT_EQ(std::string(transform->getId()).size(), 36U);
    EXPECT_EQ(transform->getInputBitDepth(), BIT_DEPTH_16i);
    EXPECT_EQ(transform->getOutputBitDepth(), BIT_DEPTH_8i);
    DisplayedOp const dither = displayedOp(transform);
    EXPECT_EQ(dither.name, "Dither");
    EXPECT_THAT(dither.common, Contains("Name: none"));
    EXPECT_THAT(dither.own, ElementsAre());
}

TEST(CreateDitherTransform, GivesNewIdsEachTime)
{
    TransformPtr first;
    TransformPtr second;
    ASSERT_TRUE(CreateDitherTransform(BIT_DEPTH_16i, BIT_DEPTH_8i, BIT_DEPTH_8i, first));
    ASSERT_TRUE(CreateDitherTransform(BIT_DEPTH_16i, BIT_DEPTH_8i, BIT_DEPTH_8i, second));
    EXPECT_STRNE(first->getId(), second->getId());
}

TEST(CreateDitherTransform, RefusesMissingDepthsAndLeavesTheHandle)
{
    TransformPtr transform;
    TavStatus const status = CreateDitherTransform(BIT_DEPTH_16i, BIT_DEPTH_8i, BIT_DEPTH_UNKNOWN, transform);
    EXPECT_EQ(status.getErrorCode(), 0x210001U);
    EXPECT_STREQ(status.getErrorMessage(), "'DitherBitDepth' attribute missing in Dither");
    EXPECT_FALSE(transform);
    EXPECT_EQ(CreateDitherTransform(BIT_DEPTH_UNKNOWN, BIT_DEPTH_8i, BIT_DEPTH_8i, transform).getErrorCode(), 0x210001U);
}

// Between two codes, each place of the pattern decides for one of them; over its 256 places the mean is the value.
TEST(CreateDitherTransform, RendersNoiseWhoseMeanIsTheValue)
{
    TransformPtr transform;
    ASSERT_TRUE(CreateDitherTransform(BIT_DEPTH_16i, BIT_DEPTH_8i, BIT_DEPTH_8i, transform));
    finalizeFor(transform, PF_RGB_16i, PF_RGB_8i);
    std::vector<std::uint16_t> const in(16 * 16 * 3, 257 * 30 + 128); // a hair below 30.5
    std::vector<std::uint8_t> out(in.size());
    ASSERT_TRUE(transform->applyCPU(in.data(), ROI(0, 0, 16, 16), out.data()));
    unsigned int sum = 0;
    for (std::uint8_t const code : out)
    {
        ASSERT_TRUE(code == 30 || code == 31);
        sum += code;
    }
    EXPECT_NEAR(sum / double(out.size()), 30.0 + 128.0 / 257.0, 0.5 / 256);
}

TEST(Display, TellsTheStyleOfAGamutMap)
{
    EXPECT_THAT(displayedOp(load("<GamutMap inBitDepth='16f' outBitDepth='16f' style='DW3'/>")).own,
                ElementsAre("Gamut Map Style: dw3"));
}

TEST(Display, TellsStylesAndParametersOfAHueVector)
{
    EXPECT_THAT(displayedOp(load("<HueVector inBitDepth='16f' outBitDepth='16f' style='ych_rev'>"
                                 "<HueVecParams style='chroma' center='120' width='60.5' amount='1.25'/></HueVector>"))
                    .own,
                ElementsAre("Hue Vector Style: YCH_Rev", "Parameter Style: chroma", "Center:     120.0000", "Width:      60.5000",
                            "Amount:       1.2500"));
}

TEST(CreateStockTransform, RawIsAnIdentityWithExposureAndContrast)
{
    TransformPtr transform;
    ASSERT_TRUE(createStockTransform(STOCK_TRANSFORM_RAW, transform));
    EXPECT_STREQ(transform->getName(), "Stock Raw Transform");
    EXPECT_STREQ(transform->getDescriptions(), "Identity transform with linear dynamic exposure contrast controls.");
    EXPECT_EQ(std::string(transform->getId()).size(), 36U);
    EXPECT_EQ(transform->getInputBitDepth(), BIT_DEPTH_16f);
    EXPECT_EQ(transform->getOutputBitDepth(), BIT_DEPTH_16f);

    std::vector<DisplayedOp> const ops = displayedOps(transform);
    ASSERT_EQ(ops.size(), 2U);
    EXPECT_EQ(ops[0].name, "Exposure/Contrast");
    EXPECT_THAT(ops[0].own,
                IsSupersetOf({"E/C Style: linear", "Exposure:       0.0000", "Contrast:       1.0000", "Pivot:       1.0000"}));
    EXPECT_EQ(ops[1].name, "Matrix");
    EXPECT_THAT(ops[1].common, Contains("Name: identity"));
    EXPECT_THAT(ops[1].own, testing::SizeIs(4)) << "the rows of a matrix";
}

TEST(CreateStockTransform, ExposureAndContrastChangeWhileItRenders)
{
    TransformPtr transform;
    ASSERT_TRUE(createStockTransform(STOCK_TRANSFORM_RAW, transform));
    finalizeFor(transform, PF_RGB_32f, PF_RGB_32f);
    float const in[] = {0.25F, 0.5F, 1.0F};
    auto const rendered = [&]
    {
        std::vector<float> out(3);
        EXPECT_TRUE(transform->applyCPU(in, ROI(0, 0, 1, 1), out.data()));
        return out;
    };
    std::vector<float> const atRest = rendered();
    ASSERT_TRUE(transform->setDynamicProperty({DynamicProperty::EXPOSURE, 1.0}));
    std::vector<float> const brighter = rendered();
    ASSERT_TRUE(transform->setDynamicProperty({DynamicProperty::EXPOSURE, 0.0}));
    ASSERT_TRUE(transform->setDynamicProperty({DynamicProperty::CONTRAST, 2.0}));
    std::vector<float> const steeper = rendered();
    for (unsigned int c = 0; c < 3; ++c)
    {
        EXPECT_FLOAT_EQ(atRest[c], in[c]);
        EXPECT_NEAR(brighter[c], 2 * in[c], 2e-3F);
        EXPECT_NEAR(steeper[c], in[c] * in[c], 2e-3F) << "around a pivot of 1";
    }
}

TEST(CreateStockTransform, RefusesTypesThatThereAreNot)
{
    TransformPtr transform;
    EXPECT_EQ(createStockTransform(static_cast<StockTransform>(1), transform).getErrorCode(), 0x2020004U);
    EXPECT_FALSE(transform);
}
