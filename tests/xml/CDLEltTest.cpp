// Colour decisions in transform files.
#include "xml/opDocuments.h"

#include "transform/CDLOp.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace XmlTest;
using Color::CDLOp;
using Numbers = CDLOp::ChannelParams;

namespace
{

std::string cdl(std::string const& content, std::string const& style = "v1.2_Fwd", std::string const& version = "1.3")
{
    return opDocument(version, "ASC_CDL", "style='" + style + "'", content);
}

std::string sop(std::string const& slope, std::string const& offset, std::string const& power)
{
    return "<SOPNode><Slope>" + slope + "</Slope><Offset>" + offset + "</Offset><Power>" + power + "</Power></SOPNode>";
}

} // namespace

TEST(CDLElement, ReadsAllNumbers)
{
    CDLOp const op = readOp<CDLOp>(
        cdl(sop("1.1 1.2 1.3", "-0.1 0.1 0.2", "0.8 0.9 1") + "<SatNode><Saturation> 0.5 </Saturation></SatNode>", "NOCLAMPREV"));
    EXPECT_EQ(op.getCDLStyle(), CDLOp::CDLStyle::NoClampRev);
    EXPECT_EQ(op.getSlopeParams(), Numbers(1.1, 1.2, 1.3, 1));
    EXPECT_EQ(op.getOffsetParams(), Numbers(-0.1, 0.1, 0.2, 1));
    EXPECT_EQ(op.getPowerParams(), Numbers(0.8, 0.9, 1, 1));
    EXPECT_EQ(op.getSaturation(), 0.5);
}

TEST(CDLElement, AnIdentityInAFileIsOne)
{
    EXPECT_TRUE(readOp<CDLOp>(cdl(sop("1 1 1", "0 0 0", "1 1 1"))).isIdentity());
    EXPECT_TRUE(readOp<CDLOp>(cdl("")).isIdentity()) << "both nodes may be missing";
}

TEST(CDLElement, ReadsNumbersWithCommasAndOverSeveralLines)
{
    CDLOp const op = readOp<CDLOp>(cdl(sop("1, 2, 3", "\n0.1\n0.2\n0.3\n", "1,1 1")));
    EXPECT_EQ(op.getSlopeParams(), Numbers(1, 2, 3, 1));
    EXPECT_EQ(op.getOffsetParams(), Numbers(0.1, 0.2, 0.3, 1));
}

TEST(CDLElement, WantsThreeNumbersEach)
{
    EXPECT_EQ(failureOfDocument(cdl(sop("1 1", "0 0 0", "1 1 1"))),
              (Failure{0x42001e, "SOPNode: 3 values required at 'Slope' line 0: "}));
    EXPECT_EQ(failureOfDocument(cdl(sop("1 1 1", "0 0 0 0", "1 1 1"))),
              (Failure{0x42001e, "SOPNode: 3 values required at 'Offset' line 0: "}));
    EXPECT_EQ(failureOfDocument(cdl(sop("1 1 1", "0 0 0", "one"))),
              (Failure{0x42000e, "Illegal values 'one' in 'Power' line 0: "}));
}

TEST(CDLElement, WantsSlopeOffsetAndPower)
{
    EXPECT_EQ(failureOfDocument(cdl("<SOPNode/>")), (Failure{0x42001f, "SOPNode: slope required at 'SOPNode' line 0: "}));
    EXPECT_EQ(failureOfDocument(cdl("<SOPNode><Slope>1 1 1</Slope></SOPNode>")),
              (Failure{0x420020, "SOPNode: offset required at 'SOPNode' line 0: "}));
    EXPECT_EQ(failureOfDocument(cdl("<SOPNode><Slope>1 1 1</Slope><Offset>0 0 0</Offset></SOPNode>")),
              (Failure{0x420021, "SOPNode: power required at 'SOPNode' line 0: "}));
}

TEST(CDLElement, WantsOneSaturation)
{
    EXPECT_EQ(failureOfDocument(cdl("<SatNode><Saturation>1 2</Saturation></SatNode>")),
              (Failure{0x420022, "SatNode: non-single value at 'Saturation' line 0: "}));
}

TEST(CDLElement, TakesDescriptionsOfItsNodes)
{
    CDLOp const op = readOp<CDLOp>(cdl("<Description>one</Description><SOPNode><Description>two</Description><Slope>1 1 1</Slope>"
                                       "<Offset>0 0 0</Offset><Power>1 1 1</Power></SOPNode>"
                                       "<SatNode><Description>three</Description></SatNode>"));
    EXPECT_THAT(op.getDescriptions().getList(), testing::ElementsAre("one", "two", "three"));
}

TEST(CDLElement, WantsAStyleThatItKnows)
{
    EXPECT_EQ(failureOfDocument(opDocument("1.3", "ASC_CDL", "", "")).id, 0x420006U);
    EXPECT_EQ(failureOfDocument(cdl("", "v1.1")), (Failure{0x2c0002, "Unrecognized CDL style: v1.1"}));
}

TEST(CDLElement, IsValidatedAtItsEnd)
{
    EXPECT_EQ(failureOfDocument(cdl(sop("1 1 1", "0 0 0", "0 1 1"))).id, 0x2c0004U);
}

TEST(CDLElement, ItsChildrenStandNowhereElse)
{
    // Passed over, as unknown elements are.
    EXPECT_EQ(failureOfDocument(cdl("<Slope>1</Slope><Saturation>x</Saturation>")), Failure());
    EXPECT_EQ(failureOfDocument(opDocument("1.3", "Range", "", sop("1", "2", "3"))), Failure());
}
