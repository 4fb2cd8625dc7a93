// The renderers of exposure and contrast: to the bit against the formulas, within a derived bound against their meaning, and values
// that change between two pictures.
#include "renderer/kernelHarness.h"
#include "renderer/polynomialModel.h"

#include "transform/exposureContrastOp.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace RendererHarness;
using Color::DynamicProperty;
using Color::ExposureContrastOp;
using testing::ElementsAre;
using Style = ExposureContrastOp::Style;
using Tavrin::BIT_DEPTH_32f;

namespace
{

struct Settings
{
    double exposure = 0.0;
    double contrast = 1.0;
    double pivot = 0.18;
};

ExposureContrastOp ec(Style style, Settings const& settings)
{
    ExposureContrastOp op(BIT_DEPTH_32f, BIT_DEPTH_32f, style);
    op.getExposure()->setValue(settings.exposure);
    op.getContrast()->setValue(settings.contrast);
    op.setPivot(settings.pivot);
    return op;
}

// One pixel of code values.
struct Model
{
    Style style;
    Settings settings;
    float inRange = 1.0F;
    float outRange = 1.0F;

    RGBA operator()(RGBA v) const
    {
        for (unsigned int c = 0; c < 3; ++c)
            v[c] = style == Style::Log ? logarithmic(v[c]) : linear(v[c]);
        v[3] = v[3] * (outRange / inRange);
        return v;
    }

private:
    double pivot() const { return settings.pivot >= 0.001 ? settings.pivot : 0.001F; }
    float contrast() const
    {
        float const c = static_cast<float>(settings.contrast);
        return c < 0.001F ? 0.001F : c;
    }

    float linear(float in) const
    {
        double p = pivot();
        float e = std::pow(2.0F, static_cast<float>(settings.exposure));
        if (style == Style::Video)
        {
            p = std::pow(static_cast<float>(p), 0.5464481F);
            e = std::pow(e, 0.5464481F);
        }
        float const a = e / static_cast<float>(inRange * p);
        float const b = static_cast<float>(outRange * p);
        return contrast() == 1.0F ? in * a * b : PolynomialModel::power(in * a, contrast()) * b;
    }

    float logarithmic(float in) const
    {
        double q = std::log10(pivot() / 0.9) * 0.29325513196480935 + 0.6695992179863147;
        if (q < 0.0)
            q = 0.0;
        float const pivotIn = static_cast<float>(inRange * q);
        float const pivotOut = static_cast<float>(outRange * q);
        float const slope = contrast() * (outRange / inRange);
        float const shift = static_cast<float>(0.3010299956639812 * settings.exposure * 0.29325513196480935 * inRange) - pivotIn;
        float const bias = shift * slope + pivotOut;
        return in * slope + bias;
    }
};

Settings const kSettings[] = {{0.7, 1.3, 0.18}, {-1.5, 1.0, 0.25}, {0.0, 0.0, 0.0001}, {2.0, -3.0, 0.5}, {0.25, 0.6, 1.0}};

float grey(ExposureContrastOp const& op, float value)
{
    return render(op, {value, value, value, 1.0F})[0];
}

} // namespace

// Whose power is not a number either, except for what is not above 0.
TEST(ExposureContrastRenderer, TakesAContrastThatIsNotANumberAsItIs)
{
    ExposureContrastOp const op = ec(Style::Linear, {0.0, std::nan(""), 0.18});
    forEveryTarget(
        [&]
        {
            std::vector<float> const out = render(op, {0.5F, 0.0F, -1.0F, 1.0F, 2.0F, std::nanf(""), 1.0F, 1.0F});
            expectSameFloats({NAN, 0.0F, 0.0F, 1.0F, NAN, 0.0F, NAN, 1.0F}, out);
        });
}

TEST(ExposureContrastRenderer, TheKindFollowsFromTheStyle)
{
    EXPECT_THAT(kindsOf(ec(Style::Video, kSettings[0])), ElementsAre(RendererKind::ECVideoRenderer));
    EXPECT_THAT(kindsOf(ec(Style::Log, kSettings[0])), ElementsAre(RendererKind::ECLogarithmicRenderer));
    EXPECT_THAT(kindsOf(ec(Style::Linear, kSettings[0])), ElementsAre(RendererKind::ECLinearRenderer));
}

TEST(ExposureContrastRenderer, FollowsTheFormulasOnEveryInstructionSet)
{
    for (Style const style : {Style::Video, Style::Log, Style::Linear})
    {
        for (Settings const& settings : kSettings)
        {
            SCOPED_TRACE(testing::Message() << ExposureContrastOp::getStyleName(style) << ' ' << settings.exposure << ' '
                                            << settings.contrast);
            ExposureContrastOp const op = ec(style, settings);
            expectEveryTargetToMatch(op, Model{style, settings});
        }
    }
}

TEST(ExposureContrastRenderer, TakesTheRangesOfItsDepthsIntoItsConstants)
{
    for (Style const style : {Style::Video, Style::Log, Style::Linear})
    {
        SCOPED_TRACE(ExposureContrastOp::getStyleName(style));
        for (Settings const& settings : kSettings)
            expectScalesOfDepths(ec(style, settings),
                                 [=](float maxIn, float maxOut) {
                                     return Model{style, settings, maxIn, maxOut};
                                 });
    }
}

TEST(ExposureContrastRenderer, AStopDoublesLinearLight)
{
    float const out = grey(ec(Style::Linear, {1.0, 1.0, 0.18}), 0.375F);
    EXPECT_NEAR(out, 0.75, 0.75 * 4.0 * PolynomialModel::kRounding);
}

TEST(ExposureContrastRenderer, LinearContrastIsAPowerAroundThePivot)
{
    Settings const settings{0.5, 1.4, 0.18};
    ExposureContrastOp const op = ec(Style::Linear, settings);
    double const bound = PolynomialModel::powerError(1.4, 8.0) + (1.4 * 3.0 + 1.0) * PolynomialModel::kRounding;
    for (float x = 1.0F / 512.0F; x < 2.0F; x *= 1.125F)
    {
        double const expected = std::pow(x * std::exp2(0.5) / 0.18, 1.4) * 0.18;
        ASSERT_NEAR(grey(op, x) / expected, 1.0, bound) << x;
    }
}

// Video is linear light to the power of 1 / 1.83: the same correction there, seen through that encoding.
TEST(ExposureContrastRenderer, VideoWorksOnTheEncodedLight)
{
    ExposureContrastOp const op = ec(Style::Video, {0.5, 1.4, 0.18});
    double const bound = PolynomialModel::powerError(1.4, 8.0) + 12.0 * PolynomialModel::kRounding;
    for (float x = 1.0F / 512.0F; x < 2.0F; x *= 1.125F)
    {
        double const light = std::pow(static_cast<double>(x), 1.83);
        double const expected = std::pow(std::pow(light * std::exp2(0.5) / 0.18, 1.4) * 0.18, 1.0 / 1.83);
        ASSERT_NEAR(grey(op, x) / expected, 1.0, bound + 1e-6) << x; // 0.5464481 is 1 / 1.83 to seven digits
    }
}

TEST(ExposureContrastRenderer, LogShiftsByStopsAndTurnsAroundThePivot)
{
    double const stop = 0.3010299956639812 * 0.29325513196480935; // log10(2) times the slope of the encoding
    double const pivot = std::log10(0.18 / 0.9) * 0.29325513196480935 + 0.6695992179863147;
    ExposureContrastOp const op = ec(Style::Log, {0.5, 1.4, 0.18});
    for (float x = 0.0F; x <= 1.0F; x += 0.0625F)
        ASSERT_NEAR(grey(op, x), (x + 0.5 * stop - pivot) * 1.4 + pivot, 4.0 * PolynomialModel::kRounding) << x;
}

TEST(ExposureContrastRenderer, ThePivotStaysWhereItIs)
{
    for (double const contrast : {0.5, 1.0, 2.0})
    {
        EXPECT_NEAR(grey(ec(Style::Linear, {0.0, contrast, 0.25}), 0.25F), 0.25, 0.25 * PolynomialModel::powerError(contrast, 1.0));
        float const video = static_cast<float>(std::pow(0.25, 1.0 / 1.83));
        EXPECT_NEAR(grey(ec(Style::Video, {0.0, contrast, 0.25}), video), video, PolynomialModel::powerError(contrast, 1.0));
    }
}

TEST(ExposureContrastRenderer, AContrastBelowAThousandthIsOne)
{
    for (Style const style : {Style::Video, Style::Log, Style::Linear})
    {
        for (float const x : {0.1F, 0.5F, 2.0F})
        {
            float const least = grey(ec(style, {0.3, static_cast<double>(0.001F), 0.18}), x);
            EXPECT_EQ(grey(ec(style, {0.3, 0.0, 0.18}), x), least);
            EXPECT_EQ(grey(ec(style, {0.3, -5.0, 0.18}), x), least);
        }
    }
}

TEST(ExposureContrastRenderer, AContrastOfOneIsNoPowerAtAll)
{
    EXPECT_LT(grey(ec(Style::Linear, {1.0, 1.0, 0.18}), -0.25F), -0.49F) << "a power would make it 0";
    EXPECT_EQ(grey(ec(Style::Linear, {1.0, 1.5, 0.18}), -0.25F), 0.0F);
}

TEST(ExposureContrastRenderer, APivotWithoutAPlaceInTheLogEncodingIsZero)
{
    // log10(0.001 / 0.9) * 0.293 + 0.67 is -0.197.
    ExposureContrastOp const op = ec(Style::Log, {0.0, 2.0, 0.001});
    EXPECT_EQ(grey(op, 0.25F), 0.5F);
    EXPECT_EQ(grey(op, 0.0F), 0.0F);
}

TEST(ExposureContrastRenderer, ScalesAlphaByTheDepthsAlone)
{
    std::vector<unsigned char> const in = {0, 0, 0, 51};
    std::vector<float> const out =
        renderAs<unsigned char, float>(ec(Style::Video, kSettings[0]), Tavrin::PF_RGBA_8i, Tavrin::PF_RGBA_32f, in, 1);
    EXPECT_NEAR(out[3], 0.2, 0.2 * 2.0 * PolynomialModel::kRounding);
}

namespace
{

// A renderer of one operator whose values can change.
class DynamicExposureContrast : public testing::Test
{
protected:
    DynamicExposureContrast() : m_transform(transformOf({&dynamicOp()})) {}

    float render(Rendering::CPURenderer& renderer) const
    {
        std::vector<float> const in = {0.25F, 0.25F, 0.25F, 1.0F};
        std::vector<float> out(4);
        renderer.apply(in.data(), out.data(), Rendering::ROI(0, 0, 1, 1), 0, 0);
        return out[0];
    }

    void set(DynamicProperty::Ids id, DynamicProperty::Value const& value)
    {
        m_transform->getOps().setDynamicProperty({id, value});
    }

    std::shared_ptr<Color::Transform> m_transform;

private:
    static ExposureContrastOp const& dynamicOp()
    {
        static ExposureContrastOp op = ec(Style::Linear, {});
        op.getExposure()->setDynamic(true);
        op.getContrast()->setDynamic(true);
        op.getBypass()->setDynamic(true);
        op.getExposure()->setValue(0.0);
        op.getContrast()->setValue(1.0);
        op.getBypass()->setValue(false);
        return op;
    }
};

} // namespace

TEST_F(DynamicExposureContrast, TheNextPictureSeesANewValueWithoutFinalize)
{
    Rendering::CPURenderer renderer = rendererOf(m_transform, Tavrin::PF_RGBA_32f, Tavrin::PF_RGBA_32f);
    EXPECT_NEAR(render(renderer), 0.25, 1e-7);
    set(DynamicProperty::EXPOSURE, 1.0);
    EXPECT_NEAR(render(renderer), 0.5, 1e-6);
    set(DynamicProperty::CONTRAST, 2.0);
    EXPECT_NEAR(render(renderer) / (std::pow(0.5 / 0.18, 2.0) * 0.18), 1.0, PolynomialModel::powerError(2.0, 2.0) + 1e-6);
    set(DynamicProperty::CONTRAST, 1.0);
    set(DynamicProperty::EXPOSURE, 0.0);
    EXPECT_NEAR(render(renderer), 0.25, 1e-7);
}

TEST_F(DynamicExposureContrast, BypassSwitchesTheOperatorOffAndOn)
{
    set(DynamicProperty::EXPOSURE, 1.0);
    Rendering::CPURenderer renderer = rendererOf(m_transform, Tavrin::PF_RGBA_32f, Tavrin::PF_RGBA_32f);
    EXPECT_NEAR(render(renderer), 0.5, 1e-6);
    set(DynamicProperty::BYPASS, true);
    EXPECT_EQ(render(renderer), 0.25F);
    set(DynamicProperty::BYPASS, false);
    EXPECT_NEAR(render(renderer), 0.5, 1e-6);
}

TEST_F(DynamicExposureContrast, AValueSetOnACloneReachesTheRenderersOfBoth)
{
    std::shared_ptr<Color::Transform> const clone = transformOf({&m_transform->getOps().get(0)});
    Rendering::CPURenderer first = rendererOf(m_transform, Tavrin::PF_RGBA_32f, Tavrin::PF_RGBA_32f);
    Rendering::CPURenderer second = rendererOf(clone, Tavrin::PF_RGBA_32f, Tavrin::PF_RGBA_32f);
    clone->getOps().setDynamicProperty({DynamicProperty::EXPOSURE, 2.0});
    EXPECT_NEAR(render(first), 1.0, 1e-6);
    EXPECT_EQ(render(first), render(second));
}
