// References to other files in files.
#include "xml/writing.h"

#include "transform/matrixOp.h"
#include "transform/referenceOp.h"

#include <gtest/gtest.h>

using namespace Tavrin;
using Color::ReferenceOp;
using XmlTest::startTagOf;
using XmlTest::written;

TEST(ReferenceWriter, WritesAnAliasOrAPath)
{
    ReferenceOp op;
    op.setPath("a/b & c.ctf", BASE_PATH_NONE);
    EXPECT_EQ(written(op), "<Reference inBitDepth=\"32f\" outBitDepth=\"32f\" path=\"a/b &amp; c.ctf\">\n</Reference>\n");
    op.setPath("b.ctf", BASE_PATH_VENDOR);
    EXPECT_EQ(startTagOf(op), "<Reference inBitDepth=\"32f\" outBitDepth=\"32f\" path=\"b.ctf\" basePath=\"Norvane\">");
    op.setPath("b.ctf", BASE_PATH_SHARED);
    EXPECT_EQ(startTagOf(op), "<Reference inBitDepth=\"32f\" outBitDepth=\"32f\" path=\"b.ctf\" basePath=\"Shared\">");
    op.setAlias("currentMonitor");
    EXPECT_EQ(startTagOf(op), "<Reference inBitDepth=\"32f\" outBitDepth=\"32f\" alias=\"currentMonitor\">");
}

// Also one whose alias was taken for another, and which knows its operators.
TEST(ReferenceWriter, WritesWhatItPointsAtAndNotWhatThatHolds)
{
    ReferenceOp op;
    op.setAlias("currentMonitor");
    op.resolveAlias(RESOLVE_GRAPHICS_MONITOR);
    Color::OpList ops;
    ops.append(new Color::MatrixOp());
    op.setResolvedOps(ops);
    EXPECT_EQ(written(op), "<Reference inBitDepth=\"32f\" outBitDepth=\"32f\" alias=\"currentMonitor\">\n</Reference>\n");
}
