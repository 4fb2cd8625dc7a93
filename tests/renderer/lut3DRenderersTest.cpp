// The 3D table renderers, against a plain transcription of both interpolations.
#include "renderer/pixelModel.h"
#include "renderer/rendererHarness.h"

#include "transform/lut3DOp.h"
#include "utils/logger.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace RendererHarness;
using Color::Lut3DOp;
using Algorithm = Color::Lut3DOp::InterpolationAlgo;
using testing::ElementsAre;

namespace
{

Lut3DOp identity(unsigned int dimension, Algorithm algorithm)
{
    return {Tavrin::BIT_DEPTH_32f, Tavrin::BIT_DEPTH_32f, "", "", Color::Descriptions(), algorithm, dimension};
}

// Any values at all, the same for every run.
Lut3DOp random(unsigned int dimension, Algorithm algorithm)
{
    Lut3DOp op = identity(dimension, algorithm);
    std::mt19937 generator(dimension);
    std::uniform_real_distribution<float> values(-0.5F, 1.5F);
    for (float& value : op.getArray().getValues())
        value = values(generator);
    return op;
}

using Entry = std::array<float, 3>;

template <class Combine>
Entry perChannel(Combine const& combine)
{
    return {combine(0), combine(1), combine(2)};
}

// One pixel by the rules' own words, in single precision.
class PlainTable
{
public:
    explicit PlainTable(Lut3DOp const& op) : m_values(op.getArray().getValues()), m_dimension(op.getArray().getDimension())
    {
        m_scale = 1.0F / Color::Op::getValueStepSize(op.getInputBitDepth(), m_dimension);
    }

    Entry trilinear(float const* rgb) const
    {
        place(rgb);
        float const fR = m_fraction[0], fG = m_fraction[1], fB = m_fraction[2];
        return perChannel(
            [&](int c)
            {
                auto const v = [&](int r, int g, int b) { return corner(r, g, b)[c]; };
                float const near =
                    (v(0, 0, 0) * (1 - fB) + v(0, 0, 1) * fB) * (1 - fG) + (v(0, 1, 0) * (1 - fB) + v(0, 1, 1) * fB) * fG;
                float const far =
                    (v(1, 0, 0) * (1 - fB) + v(1, 0, 1) * fB) * (1 - fG) + (v(1, 1, 0) * (1 - fB) + v(1, 1, 1) * fB) * fG;
                return near * (1 - fR) + far * fR;
            });
    }

    Entry tetrahedral(float const* rgb) const
    {
        place(rgb);
        float const fR = m_fraction[0], fG = m_fraction[1], fB = m_fraction[2];
        std::string order;
        if (fG <= fR)
            order = fB <= fG ? "RGB" : fR <= fB ? "BRG" : "RBG";
        else if (fB <= fG)
            order = fR <= fB ? "GBR" : "GRB";
        else
            order = "BGR";
        int at[3] = {0, 0, 0};
        Entry difference[3];
        Entry const first = corner(0, 0, 0);
        Entry previous = first;
        for (char axis : order)
        {
            std::size_t const a = std::string("RGB").find(axis);
            at[a] = 1;
            Entry const next = corner(at[0], at[1], at[2]);
            difference[a] = perChannel([&](int c) { return next[c] - previous[c]; });
            previous = next;
        }
        return perChannel([&](int c)
                          { return first[c] + fR * difference[0][c] + (fG * difference[1][c] + fB * difference[2][c]); });
    }

private:
    void place(float const* rgb) const
    {
        float const last = static_cast<float>(m_dimension - 1);
        for (int a = 0; a < 3; ++a)
        {
            float x = rgb[a] * m_scale;
            x = x > 0.0F ? x : 0.0F;
            x = x < last ? x : last;
            m_low[a] = static_cast<unsigned int>(x);
            m_high[a] = static_cast<float>(m_low[a]) < last ? m_low[a] + 1 : m_low[a];
            m_fraction[a] = x - static_cast<float>(m_low[a]);
        }
    }

    Entry corner(int r, int g, int b) const
    {
        auto const index = [&](int axis, int high) { return high != 0 ? m_high[axis] : m_low[axis]; };
        std::size_t const at = 3 * ((std::size_t{index(0, r)} * m_dimension + index(1, g)) * m_dimension + index(2, b));
        return {m_values[at], m_values[at + 1], m_values[at + 2]};
    }

    std::vector<float> m_values;
    unsigned int m_dimension;
    float m_scale;
    mutable unsigned int m_low[3];
    mutable unsigned int m_high[3];
    mutable float m_fraction[3];
};

std::vector<std::string> g_log;

} // namespace

TEST(Lut3DRenderer, TheKindIsTetrahedralOnlyWhereItIsAskedFor)
{
    EXPECT_THAT(kindsOf(identity(3, Algorithm::Tetrahedral)), ElementsAre(RendererKind::Lut3DTetrahedralRenderer));
    for (Algorithm algorithm : {Algorithm::Default, Algorithm::Trilinear, Algorithm::FourPointTetrahedral})
        EXPECT_THAT(kindsOf(identity(3, algorithm)), ElementsAre(RendererKind::Lut3DRenderer));
}

TEST(Lut3DRenderer, FollowsBothFormulasToTheBitOnEveryInstructionSet)
{
    std::vector<float> in = nastyFloats(4 * 1003, 23);
    for (std::size_t i = 0; i + 4 <= in.size(); i += 28) // Ties between fractions.
        in[i + 1] = in[i + 2] = in[i];
    for (unsigned int dimension : {2U, 3U, 17U, 33U, 65U})
    {
        for (Algorithm algorithm : {Algorithm::Trilinear, Algorithm::Tetrahedral})
        {
            Lut3DOp const op = random(dimension, algorithm);
            PlainTable const plain(op);
            forEveryTarget(
                [&]
                {
                    std::vector<float> const out = render(op, in);
                    for (std::size_t i = 0; i < in.size(); i += 4)
                    {
                        Entry const expected =
                            algorithm == Algorithm::Trilinear ? plain.trilinear(&in[i]) : plain.tetrahedral(&in[i]);
                        for (std::size_t c = 0; c < 3; ++c)
                            expectSameFloat(expected[c], out[i + c], i + c);
                        expectSameFloat(in[i + 3], out[i + 3], i + 3);
                    }
                });
        }
    }
}

TEST(Lut3DRenderer, TheTopOfTheRangeGivesTheLastGridPointExactly)
{
    for (Algorithm algorithm : {Algorithm::Trilinear, Algorithm::Tetrahedral})
    {
        Lut3DOp const op = random(33, algorithm);
        Color::Array::Values const& values = op.getArray().getValues();
        std::vector<float> const last(values.end() - 3, values.end());
        for (float top : {1.0F, 1.5F, INFINITY})
        {
            std::vector<float> const out = render(op, {top, top, top, 1.0F});
            EXPECT_EQ(last, std::vector<float>(out.begin(), out.begin() + 3)) << top;
        }
    }
}

TEST(Lut3DRenderer, AnIdentityGridReturnsItsInput)
{
    std::vector<float> in(4 * 4096);
    std::mt19937 generator(3);
    for (float& value : in)
        value = static_cast<float>(generator() % 65536) / 65535.0F;
    for (unsigned int dimension : {2U, 17U, 33U, 65U, 129U})
    {
        for (Algorithm algorithm : {Algorithm::Trilinear, Algorithm::Tetrahedral})
        {
            std::vector<float> const out = render(identity(dimension, algorithm), in);
            for (std::size_t i = 0; i < in.size(); ++i)
                ASSERT_NEAR(in[i], out[i], std::ldexp(8.0, -24)) << dimension; // eight roundings of values up to 1
        }
    }
}

TEST(Lut3DRenderer, NaNCountsAsZero)
{
    for (Algorithm algorithm : {Algorithm::Trilinear, Algorithm::Tetrahedral})
    {
        Lut3DOp const op = random(5, algorithm);
        float const nan = std::nanf("");
        EXPECT_EQ(render(op, {0.0F, 0.0F, 0.0F, 1.0F}), render(op, {nan, nan, nan, 1.0F}));
    }
}

TEST(Lut3DRenderer, EntriesThatAreNotFiniteAreMadeSo)
{
    for (Algorithm algorithm : {Algorithm::Trilinear, Algorithm::Tetrahedral})
    {
        Lut3DOp op = identity(2, algorithm);
        for (unsigned int entry = 0; entry < 8; ++entry)
        {
            op.getArray().set(3 * entry, INFINITY);
            op.getArray().set(3 * entry + 1, -INFINITY);
            op.getArray().set(3 * entry + 2, std::nanf(""));
        }
        EXPECT_THAT(render(op, {0.0F, 0.0F, 0.0F, 1.0F}), ElementsAre(3.4028235e38F, -3.4028235e38F, 0.0F, 1.0F));
    }
}

TEST(Lut3DRenderer, FourPointTetrahedralIsTrilinearAndLeavesOneLine)
{
    Lut3DOp const trilinear = random(9, Algorithm::Trilinear);
    Lut3DOp four = trilinear;
    four.setInterpolation(Algorithm::FourPointTetrahedral);
    four.setName("grid");
    std::vector<float> const in = nastyFloats(400, 7);
    g_log.clear();
    Color::Logger::LogFunction const previous = Color::Logger::setLogFunc([](Color::LogLevel level, char const* text)
                                                                          { g_log.push_back(std::to_string(level) + " " + text); });
    std::vector<float> const out = render(four, in);
    Color::Logger::setLogFunc(previous);
    EXPECT_THAT(g_log, ElementsAre("1 COLOR:RENDERER:CPU: Op 'grid' illegal attribute 'Interpolation'"));
    std::vector<float> const expected = render(trilinear, in);
    for (std::size_t i = 0; i < in.size(); ++i)
        expectSameFloat(expected[i], out[i], i);
}

TEST(Lut3DRenderer, IntegersComeOutRoundedAndAlphaIsScaled)
{
    // A grid that inverts colours, between 8 and 10 bits: its corners are exact at both depths.
    Lut3DOp op = identity(2, Algorithm::Tetrahedral);
    for (float& value : op.getArray().getValues())
        value = 1.0F - value;
    std::vector<unsigned char> in(4 * 256);
    for (unsigned int i = 0; i < 1024; ++i)
        in[i] = static_cast<unsigned char>(i / 4);
    forEveryTarget(
        [&]
        {
            std::vector<std::uint16_t> const out =
                renderAs<unsigned char, std::uint16_t>(op, Tavrin::PF_RGBA_8i, Tavrin::PF_RGBA_10i, in, 256);
            for (unsigned int i = 0; i < 1024; ++i)
            {
                double const code = i / 4 * 1023.0 / 255.0;
                // No code of 8 bits falls on half a code of 10, so rounding is the same in any precision.
                ASSERT_EQ(std::floor((i % 4 == 3 ? code : 1023.0 - code) + 0.5), out[i]) << i;
            }
        });
}
