// The colour decision's renderers: to the bit against the steps in single precision, and within a derived bound against the
// formula.
#include "renderer/kernelHarness.h"
#include "renderer/polynomialModel.h"

#include "renderer/CPUCDLOp.h"
#include "transform/CDLOp.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace RendererHarness;
using Color::CDLOp;
using testing::Each;
using testing::ElementsAre;
using testing::FloatEq;
using Style = CDLOp::CDLStyle;
using Numbers = CDLOp::ChannelParams;
using Tavrin::BIT_DEPTH_32f;

namespace
{

struct Decision
{
    Numbers slope{1.0};
    Numbers offset{0.0};
    Numbers power{1.0};
    double saturation = 1.0;
};

Decision const kDecision{{1.35, 1.1, 0.71}, {0.05, -0.23, 0.11}, {0.93, 0.81, 1.27}, 1.239};

CDLOp cdl(Style style, Decision const& d)
{
    return {BIT_DEPTH_32f, BIT_DEPTH_32f, "", "", {}, style, d.slope, d.offset, d.power, d.saturation};
}

// The steps on one pixel of code values, each rounded to single precision.
class Model
{
public:
    Model(Style style, Decision const& d, float maxIn = 1.0F, float maxOut = 1.0F)
        : m_style(style), m_inScale(1.0F / maxIn), m_outScale(maxOut), m_saturation(number(d.saturation))
    {
        for (unsigned int c = 0; c < 3; ++c)
        {
            m_slope[c] = number(d.slope[c]);
            m_offset[c] = isReverse() ? -static_cast<float>(d.offset[c]) : static_cast<float>(d.offset[c]);
            m_power[c] = number(d.power[c]);
        }
    }

    RGBA operator()(RGBA v)
    {
        m_v = {v[0] * m_inScale, v[1] * m_inScale, v[2] * m_inScale};
        switch (m_style)
        {
        case Style::V1_2Fwd:
            each(&Model::multiply), each(&Model::add), each(&Model::clamp), each(&Model::raise), saturate(), each(&Model::clamp);
            break;
        case Style::NoClampFwd:
            each(&Model::multiply), each(&Model::add), each(&Model::raiseOpen), saturate();
            break;
        case Style::V1_2Rev:
            each(&Model::clamp), saturate(), each(&Model::clamp), each(&Model::raise), each(&Model::add), each(&Model::multiply),
                each(&Model::clamp);
            break;
        case Style::NoClampRev:
            saturate(), each(&Model::raiseOpen), each(&Model::add), each(&Model::multiply);
            break;
        }
        return {m_v[0] * m_outScale, m_v[1] * m_outScale, m_v[2] * m_outScale, v[3] * (m_outScale * m_inScale)};
    }

private:
    bool isReverse() const { return m_style == Style::V1_2Rev || m_style == Style::NoClampRev; }

    float number(double value) const
    {
        float const f = static_cast<float>(value);
        return isReverse() ? 1.0F / (f > 0.01F ? f : 0.01F) : f;
    }

    void each(void (Model::*step)(float& v, unsigned int c) const)
    {
        for (unsigned int c = 0; c < 3; ++c)
            (this->*step)(m_v[c], c);
    }

    void multiply(float& v, unsigned int c) const { v = v * m_slope[c]; }
    void add(float& v, unsigned int c) const { v = v + m_offset[c]; }
    void clamp(float& v, unsigned int) const
    {
        v = v > 0.0F ? v : 0.0F;
        v = v < 1.0F ? v : 1.0F;
    }
    void raise(float& v, unsigned int c) const { v = PolynomialModel::power(v, m_power[c]); }
    void raiseOpen(float& v, unsigned int c) const { v = v < 0.0F ? v : PolynomialModel::power(v, m_power[c]); }
    void saturate()
    {
        float const redGreen = 0.2126F * m_v[0] + 0.7152F * m_v[1];
        float const luma = redGreen + (0.0722F * m_v[2] + 0.0F);
        for (float& v : m_v)
            v = luma + m_saturation * (v - luma);
    }

    Style m_style;
    float m_inScale, m_outScale, m_saturation;
    float m_slope[3], m_offset[3], m_power[3];
    std::array<float, 3> m_v{};
};

RGBA renderPixel(CDLOp const& op, RGBA const& in)
{
    std::vector<float> const out = render(op, {in.begin(), in.end()});
    return {out[0], out[1], out[2], out[3]};
}

} // namespace

TEST(CDLRenderer, TheKindFollowsFromTheStyle)
{
    EXPECT_THAT(kindsOf(cdl(Style::V1_2Fwd, kDecision)), ElementsAre(RendererKind::CDLRendererV1_2Fwd));
    EXPECT_THAT(kindsOf(cdl(Style::V1_2Rev, kDecision)), ElementsAre(RendererKind::CDLRendererV1_2Rev));
    EXPECT_THAT(kindsOf(cdl(Style::NoClampFwd, kDecision)), ElementsAre(RendererKind::CDLRendererNoClampFwd));
    EXPECT_THAT(kindsOf(cdl(Style::NoClampRev, kDecision)), ElementsAre(RendererKind::CDLRendererNoClampRev));
}

TEST(CDLRenderer, TakesTheStepsInOrderOnEveryInstructionSet)
{
    for (unsigned int style = 0; style < 4; ++style)
    {
        SCOPED_TRACE(CDLOp::getCDLStyleName(static_cast<Style>(style)));
        CDLOp const op = cdl(static_cast<Style>(style), kDecision);
        expectEveryTargetToMatch(op, Model(static_cast<Style>(style), kDecision));
    }
}

TEST(CDLRenderer, ScalesFromAndToTheCodesOfItsDepths)
{
    for (unsigned int i = 0; i < 4; ++i)
    {
        auto const style = static_cast<Style>(i);
        SCOPED_TRACE(CDLOp::getCDLStyleName(style));
        expectScalesOfDepths(cdl(style, kDecision),
                             [=](float maxIn, float maxOut) { return Model(style, kDecision, maxIn, maxOut); });
    }
}

// The formula of the American Society of Cinematographers, version 1.2: clamp(value * slope + offset) to the power, then saturation
// around the luma of ITU-R BT.709, and a clamp.
TEST(CDLRenderer, FollowsThePublishedFormulaWithinThePolynomialsError)
{
    std::vector<float> in;
    for (int i = 0; i <= 16 * 16 * 16; ++i)
        in.insert(in.end(), {static_cast<float>(i % 16) / 15.0F, static_cast<float>(i / 16 % 16) / 15.0F,
                             static_cast<float>(i / 256 % 16) / 15.0F, 0.5F});
    std::vector<float> const out = render(cdl(Style::V1_2Fwd, kDecision), in);
    // The saturation's sum of up to three values no larger than 1 weighs the power's error by its coefficients, which add up to
    // 1 + 2 * (saturation - 1) at most; the base is rounded three times.
    double const powerBound = PolynomialModel::powerError(1.27, 8.0) + 1.27 * 3.0 * PolynomialModel::kRounding;
    double const bound = powerBound * (1.0 + 2.0 * (kDecision.saturation - 1.0)) + 6.0 * PolynomialModel::kRounding;
    for (std::size_t i = 0; i < in.size(); i += 4)
    {
        double v[3];
        for (unsigned int c = 0; c < 3; ++c)
            v[c] = std::pow(std::clamp(in[i + c] * kDecision.slope[c] + kDecision.offset[c], 0.0, 1.0), kDecision.power[c]);
        double const luma = 0.2126 * v[0] + 0.7152 * v[1] + 0.0722 * v[2];
        for (unsigned int c = 0; c < 3; ++c)
            ASSERT_NEAR(out[i + c], std::clamp(luma + kDecision.saturation * (v[c] - luma), 0.0, 1.0), bound) << i << ' ' << c;
    }
}

TEST(CDLRenderer, ReverseUndoesForward)
{
    std::vector<float> in;
    for (int i = 0; i < 8 * 8 * 8; ++i)
        in.insert(in.end(), {0.25F + static_cast<float>(i % 8) / 16.0F, 0.25F + static_cast<float>(i / 8 % 8) / 16.0F,
                             0.25F + static_cast<float>(i / 64) / 16.0F, 1.0F});
    Decision const d{{0.9, 0.8, 0.95}, {0.02, 0.05, 0.01}, {1.2, 1.1, 0.9}, 0.9}; // No value leaves 0 to 1 on the way.
    // The power's error, spread by the saturation's reverse (up to 1 + 2 * 0.1 / 0.9 of it), raised to 1 / power, plus that
    // power's.
    double const forward = PolynomialModel::powerError(1.2, 3.0) * (1.0 + 2.0 * 0.1 / 0.9);
    double const bound = (forward / 0.9 / 0.16 + PolynomialModel::powerError(1.0 / 0.9, 3.0)) / 0.8;
    for (auto const& [there, back] : {std::pair{Style::V1_2Fwd, Style::V1_2Rev}, std::pair{Style::NoClampFwd, Style::NoClampRev}})
    {
        std::vector<float> const out = render(cdl(back, d), render(cdl(there, d), in));
        for (std::size_t i = 0; i < in.size(); ++i)
            ASSERT_NEAR(out[i], in[i], bound) << i;
    }
}

TEST(CDLRenderer, ClampsWhatOvershootsAfterThePowerAndAgainAfterTheSaturation)
{
    // 0.6 times 2 is 1.2, which becomes 1; green and blue stay at 0.5; saturation 2 takes red above 1 and the others below 0.5.
    Decision const d{{2, 1, 1}, {0, 0, 0}, {1, 1, 1}, 2};
    RGBA const out = renderPixel(cdl(Style::V1_2Fwd, d), {0.6F, 0.5F, 0.5F, 1.0F});
    double const luma = 0.2126 + 0.5 * (0.7152 + 0.0722);
    EXPECT_EQ(out[0], 1.0F);
    EXPECT_NEAR(out[1], 2.0 * 0.5 - luma, 3.0 * PolynomialModel::powerError(1.0, 1.0));
    RGBA const open = renderPixel(cdl(Style::NoClampFwd, d), {0.6F, 0.5F, 0.5F, 1.0F});
    EXPECT_GT(open[0], 1.4F);
}

TEST(CDLRenderer, TheOpenPowerKeepsNegativeValuesAndTheClampingOneDoesNot)
{
    Decision d;
    d.power = Numbers(2.0);
    EXPECT_THAT(renderPixel(cdl(Style::NoClampFwd, d), {-0.5F, -0.5F, -0.5F, 1.0F}), ElementsAre(-0.5F, -0.5F, -0.5F, 1.0F));
    EXPECT_THAT(renderPixel(cdl(Style::V1_2Fwd, d), {-0.5F, -0.5F, -0.5F, 1.0F}), ElementsAre(0.0F, 0.0F, 0.0F, 1.0F));
}

TEST(CDLRenderer, NaNBecomesZeroWhereThereAreClamps)
{
    EXPECT_THAT(renderPixel(cdl(Style::V1_2Fwd, kDecision), {NAN, NAN, NAN, 1.0F}), ElementsAre(0.0F, 0.0F, 0.0F, 1.0F));
    EXPECT_THAT(renderPixel(cdl(Style::V1_2Rev, Decision()), {NAN, NAN, NAN, 1.0F}), ElementsAre(0.0F, 0.0F, 0.0F, 1.0F));
}

TEST(CDLRenderer, InReverseASlopeOfZeroDividesByAHundredth)
{
    Decision d;
    d.slope = Numbers(0.0);
    RGBA const out = renderPixel(cdl(Style::NoClampRev, d), {0.5F, 0.5F, 0.5F, 1.0F});
    EXPECT_NEAR(out[0], 50.0, 50.0 * PolynomialModel::powerError(1.0, 1.0));
    EXPECT_EQ(renderPixel(cdl(Style::V1_2Rev, d), {0.5F, 0.5F, 0.5F, 1.0F})[0], 1.0F);
}

TEST(CDLRenderer, ASaturationOfZeroGivesTheLuma)
{
    Decision d;
    d.saturation = 0.0;
    RGBA const out = renderPixel(cdl(Style::NoClampFwd, d), {1.0F, 0.5F, 0.25F, 1.0F});
    EXPECT_EQ(out[0], out[1]);
    EXPECT_EQ(out[1], out[2]);
    EXPECT_NEAR(out[0], 0.2126 + 0.5 * 0.7152 + 0.25 * 0.0722, PolynomialModel::powerError(1.0, 2.0));
}

TEST(CDLRenderer, AlphaIsNotClamped)
{
    EXPECT_EQ(renderPixel(cdl(Style::V1_2Fwd, kDecision), {0.5F, 0.5F, 0.5F, 3.0F})[3], 3.0F);
    EXPECT_EQ(renderPixel(cdl(Style::NoClampRev, kDecision), {0.5F, 0.5F, 0.5F, -2.0F})[3], -2.0F);
}

TEST(CDLRenderParams, HaveTheDefaultsOfAnIdentity)
{
    Rendering::CDLOpUtil::RenderParams const p;
    for (unsigned int c = 0; c < 4; ++c)
    {
        EXPECT_EQ(p.getSlope()[c], 1.0F);
        EXPECT_EQ(p.getOffset()[c], 0.0F);
        EXPECT_EQ(p.getPower()[c], 1.0F);
    }
    EXPECT_EQ(p.getSaturation(), 1.0F);
    EXPECT_FALSE(p.isReverse());
    EXPECT_FALSE(p.isNoClamp());
}

TEST(CDLRenderParams, TakeForwardNumbersAsTheyAre)
{
    Rendering::CDLOpUtil::RenderParams p;
    CDLOp const op = cdl(Style::NoClampFwd, {{1, 2, 3, 4}, {5, 6, 7, 8}, {9, 10, 11, 12}, 0.5});
    p.update(&op);
    for (unsigned int c = 0; c < 4; ++c)
    {
        EXPECT_EQ(p.getSlope()[c], static_cast<float>(c + 1));
        EXPECT_EQ(p.getOffset()[c], static_cast<float>(c + 5));
        EXPECT_EQ(p.getPower()[c], static_cast<float>(c + 9));
    }
    EXPECT_EQ(p.getSaturation(), 0.5F);
    EXPECT_FALSE(p.isReverse());
    EXPECT_TRUE(p.isNoClamp());
}

TEST(CDLRenderParams, TurnReverseNumbersRoundAndKeepThemFromTooSmallADivisor)
{
    Rendering::CDLOpUtil::RenderParams p;
    CDLOp const op = cdl(Style::V1_2Rev, {{0, 2, 4, 0.001}, {1, -2, 0.5, 8}, {0.005, 0.5, 8, 1}, 0.0});
    p.update(&op);
    float const hundred = 1.0F / 0.01F;
    EXPECT_THAT(std::vector<float>(p.getSlope(), p.getSlope() + 4), ElementsAre(hundred, 0.5F, 0.25F, hundred));
    EXPECT_THAT(std::vector<float>(p.getOffset(), p.getOffset() + 4), ElementsAre(-1.0F, 2.0F, -0.5F, -8.0F));
    EXPECT_THAT(std::vector<float>(p.getPower(), p.getPower() + 4), ElementsAre(hundred, 2.0F, 0.125F, 1.0F));
    EXPECT_EQ(p.getSaturation(), hundred);
    EXPECT_TRUE(p.isReverse());
    EXPECT_FALSE(p.isNoClamp());
}

TEST(CDLRenderParams, CanBeSetOneByOne)
{
    Rendering::CDLOpUtil::RenderParams p;
    p.setSlope(1, 2, 3, 4);
    p.setOffset(5, 6, 7, 8);
    p.setPower(9, 10, 11, 12);
    p.setSaturation(13);
    EXPECT_THAT(std::vector<float>(p.getSlope(), p.getSlope() + 4), ElementsAre(1, 2, 3, 4));
    EXPECT_THAT(std::vector<float>(p.getOffset(), p.getOffset() + 4), ElementsAre(5, 6, 7, 8));
    EXPECT_THAT(std::vector<float>(p.getPower(), p.getPower() + 4), ElementsAre(9, 10, 11, 12));
    EXPECT_EQ(p.getSaturation(), 13.0F);
}
