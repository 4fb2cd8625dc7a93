// Matrices in files.
#include "xml/writing.h"

#include "transform/matrixOp.h"

#include <gtest/gtest.h>

using namespace Tavrin;
using Color::MatrixOp;
using XmlTest::contentOf;

namespace
{

constexpr float kNine[] = {0.5F, 0.25F, 0, -1, 2, 0.125F, 0, 0, 1};

MatrixOp matrix(BitDepth in = BIT_DEPTH_32f, BitDepth out = BIT_DEPTH_32f)
{
    MatrixOp op(in, out, "", "", Color::Descriptions());
    op.setRGBValues(kNine);
    return op;
}

} // namespace

TEST(MatrixWriter, WritesNineValuesWithoutAlphaAndOffsets)
{
    EXPECT_EQ(contentOf(matrix()), "    <Array dim=\"3 3 3\">\n"
                                   "            0.5            0.25               0\n"
                                   "             -1               2           0.125\n"
                                   "              0               0               1\n"
                                   "    </Array>\n");
}

TEST(MatrixWriter, PutsTheOffsetOfARowLast)
{
    MatrixOp op = matrix();
    op.setOffsetValue(1, 0.75F);
    EXPECT_EQ(contentOf(op), "    <Array dim=\"3 4 3\">\n"
                             "            0.5            0.25               0               0\n"
                             "             -1               2           0.125            0.75\n"
                             "              0               0               1               0\n"
                             "    </Array>\n");
}

TEST(MatrixWriter, WritesAllSixteenValuesWithAlpha)
{
    MatrixOp op = matrix();
    op.setArrayValue(3, 0.5F);
    EXPECT_EQ(contentOf(op), "    <Array dim=\"4 4 4\">\n"
                             "            0.5            0.25               0             0.5\n"
                             "             -1               2           0.125               0\n"
                             "              0               0               1               0\n"
                             "              0               0               0               1\n"
                             "    </Array>\n");
}

TEST(MatrixWriter, WritesAlphaAndOffsets)
{
    MatrixOp op = matrix();
    op.setArrayValue(15, 2.0F);
    op.setOffsetValue(0, 1.0F);
    EXPECT_EQ(contentOf(op), "    <Array dim=\"4 5 4\">\n"
                             "            0.5            0.25               0               0               1\n"
                             "             -1               2           0.125               0               0\n"
                             "              0               0               1               0               0\n"
                             "              0               0               0               2               0\n"
                             "    </Array>\n");
}

TEST(MatrixWriter, KeepsAnOffsetOfAnAlphaThatIsLeftAlone)
{
    MatrixOp op = matrix();
    op.setOffsetValue(3, 0.5F);
    EXPECT_EQ(contentOf(op), "    <Array dim=\"4 5 4\">\n"
                             "            0.5            0.25               0               0               0\n"
                             "             -1               2           0.125               0               0\n"
                             "              0               0               1               0               0\n"
                             "              0               0               0               1             0.5\n"
                             "    </Array>\n");
}

// By their bits: a negative zero is not null.
TEST(MatrixWriter, KeepsANegativeZeroAmongTheOffsets)
{
    MatrixOp op = matrix();
    op.setOffsetValue(2, -0.0F);
    EXPECT_EQ(contentOf(op), "    <Array dim=\"3 4 3\">\n"
                             "            0.5            0.25               0               0\n"
                             "             -1               2           0.125               0\n"
                             "              0               0               1              -0\n"
                             "    </Array>\n");
}

// Alpha is the identity of the depths, 4, and so not written. Coefficients have float digits at any depth: 1 / 3 = 0.33333334.
TEST(MatrixWriter, WritesCoefficientsLikeFloatsAtAnyDepth)
{
    MatrixOp op(BIT_DEPTH_8i, BIT_DEPTH_10i, "", "", Color::Descriptions());
    op.setRGBValues(kNine);
    op.setArrayValue(0, 1.0F / 3.0F);
    EXPECT_EQ(contentOf(op), "    <Array dim=\"3 3 3\">\n"
                             "     0.33333334            0.25               0\n"
                             "             -1               2           0.125\n"
                             "              0               0               1\n"
                             "    </Array>\n");
}
