// 1D tables and their inverse in files.
#include "xml/writing.h"

#include "transform/invLut1DOp.h"
#include "transform/lut1DOp.h"
#include "transform/tableValues.h"

#include <gtest/gtest.h>

#include <vector>

using namespace Tavrin;
using Color::InvLut1DOp;
using Color::Lut1DOp;
using XmlTest::contentOf;
using XmlTest::startTagOf;
using XmlTest::written;

namespace
{

Lut1DOp lut(std::vector<float> const& values, BitDepth out, HalfFlags halfFlags = HALF_FLAGS_NONE)
{
    Lut1DOp op(BIT_DEPTH_8i, out, "", "", Color::Descriptions(), Lut1DOp::InterpolationAlgo::Default, halfFlags,
               static_cast<unsigned int>(values.size() / 3));
    setValues(op.getArray(), values);
    return op;
}

} // namespace

TEST(Lut1DWriter, WritesARowOnALineAtTheOutputDepth)
{
    EXPECT_EQ(written(lut({0, 0.5F, 1, 1023, 100, 1000}, BIT_DEPTH_10i)), "<LUT1D inBitDepth=\"8i\" outBitDepth=\"10i\">\n"
                                                                          "    <Array dim=\"2 3\">\n"
                                                                          "   0  0.5    1\n"
                                                                          "1023  100 1000\n"
                                                                          "    </Array>\n"
                                                                          "</LUT1D>\n");
    EXPECT_EQ(contentOf(lut({0, 0.1F, 1, 0.25F, 1.0F / 3.0F, 65504}, BIT_DEPTH_16f)), "    <Array dim=\"2 3\">\n"
                                                                                      "          0         0.1           1\n"
                                                                                      "       0.25     0.33333       65504\n"
                                                                                      "    </Array>\n");
}

TEST(Lut1DWriter, WritesATableOfOneComponentAsOneColumn)
{
    Lut1DOp op = lut(inAllColumns({0, 128, 255}), BIT_DEPTH_8i);
    op.getArray().setNumColorComponents(1);
    EXPECT_EQ(contentOf(op), "    <Array dim=\"3 1\">\n"
                             "  0\n"
                             "128\n"
                             "255\n"
                             "    </Array>\n");
}

// Half patterns: 1 is 0x3C00 = 15360, 0.5 is 0x3800 = 14336, -2 is 0xC000 = 49152, infinity is 0x7C00 = 31744.
TEST(Lut1DWriter, WritesRawHalfsAsBitPatterns)
{
    Lut1DOp op = lut({0, 1, 0.5F, -2, kInfinity, -0.0F}, BIT_DEPTH_16f, HALF_FLAGS_OUTPUT_RAW_HALFS);
    EXPECT_EQ(written(op), "<LUT1D inBitDepth=\"8i\" outBitDepth=\"16f\" rawHalfs=\"true\">\n"
                           "    <Array dim=\"2 3\">\n"
                           "    0 15360 14336\n"
                           "49152 31744 32768\n"
                           "    </Array>\n"
                           "</LUT1D>\n");
}

TEST(Lut1DWriter, WritesItsAttributesInOrder)
{
    Lut1DOp op(BIT_DEPTH_16f, BIT_DEPTH_16f, "i", "n", Color::Descriptions(), Lut1DOp::InterpolationAlgo::Cubic,
               HALF_FLAGS_INPUT_HALF_DOMAIN | HALF_FLAGS_OUTPUT_RAW_HALFS);
    op.setHueAdjust(Lut1DOp::HueAdjust::Dw3);
    EXPECT_EQ(startTagOf(op), "<LUT1D id=\"i\" name=\"n\" inBitDepth=\"16f\" outBitDepth=\"16f\" interpolation=\"cubic\" "
                              "halfDomain=\"true\" rawHalfs=\"true\" hueAdjust=\"dw3\">");
    op.setInterpolation(Lut1DOp::InterpolationAlgo::Linear);
    op.setInputHalfDomain(false);
    op.setOutputRawHalfs(false);
    op.setHueAdjust(Lut1DOp::HueAdjust::None);
    EXPECT_EQ(startTagOf(op), "<LUT1D id=\"i\" name=\"n\" inBitDepth=\"16f\" outBitDepth=\"16f\" interpolation=\"linear\">");
}

// The table is the forward one, whose values are at the inverse's input depth; its digits are those of the output depth.
TEST(InvLut1DWriter, WritesTheForwardTable)
{
    InvLut1DOp const op(lut({0, 0, 0, 1023, 511, 255}, BIT_DEPTH_10i));
    EXPECT_EQ(written(op), "<InverseLUT1D inBitDepth=\"10i\" outBitDepth=\"8i\">\n"
                           "    <Array dim=\"2 3\">\n"
                           "  0   0   0\n"
                           "1023 511 255\n"
                           "    </Array>\n"
                           "</InverseLUT1D>\n");
}

// Reading takes the numbers of such an inverse table as values, not as patterns: the two directions differ.
TEST(InvLut1DWriter, WritesRawHalfsAsBitPatternsToo)
{
    InvLut1DOp op(lut({0, 0, 0, 1, 1, 0.5F}, BIT_DEPTH_16f));
    op.setOutputRawHalfs(true);
    EXPECT_EQ(contentOf(op), "    <Array dim=\"2 3\">\n"
                             "    0     0     0\n"
                             "15360 15360 14336\n"
                             "    </Array>\n");
}
