// Ranges and their limits in files.
#include "xml/documents.h"

#include <gtest/gtest.h>

#include <string>

using namespace XmlTest;
using Color::RangeOp;

namespace
{

std::string range(std::string const& content)
{
    return inRoot("<Range inBitDepth='8i' outBitDepth='10i'>\n" + content + "</Range>");
}

RangeOp rangeOf(std::string const& content)
{
    return onlyOp<RangeOp>(*transformOf(range(content)));
}

} // namespace

TEST(RangeElement, ReadsFourLimits)
{
    RangeOp const op = rangeOf("<minInValue>16</minInValue><maxInValue> 235 </maxInValue>\n"
                               "<minOutValue>\n64.5\n</minOutValue><MAXOUTVALUE>940</MAXOUTVALUE>");
    EXPECT_EQ(op.getMinInValue(), 16.0);
    EXPECT_EQ(op.getMaxInValue(), 235.0);
    EXPECT_EQ(op.getMinOutValue(), 64.5);
    EXPECT_EQ(op.getMaxOutValue(), 940.0);
}

TEST(RangeElement, MayHaveNoLimits)
{
    RangeOp const op = rangeOf("<minInValue/><Description>d</Description>");
    EXPECT_TRUE(op.minIsEmpty());
    EXPECT_TRUE(op.maxIsEmpty());
}

// Limits are numbers of single precision.
TEST(RangeElement, RoundsLimitsToFloat)
{
    RangeOp const op = rangeOf("<minInValue>0.1</minInValue><minOutValue>0</minOutValue>");
    EXPECT_EQ(op.getMinInValue(), static_cast<double>(0.1F));
}

TEST(RangeElement, TakesTheLastOfSeveralLines)
{
    RangeOp const op = rangeOf("<minInValue>1\n2\n\n3</minInValue><minOutValue>0</minOutValue>");
    EXPECT_EQ(op.getMinInValue(), 3.0);
}

TEST(RangeElement, TellsALimitThatIsNotOneNumber)
{
    EXPECT_EQ(failureOfFile(range("<minInValue>\n1 2</minInValue>")),
              (Failure{0x420016, "Range element: non-single value at 'minInValue' line 3: <file>"}));
    EXPECT_EQ(failureOfFile(range("<maxoutvalue>,</maxoutvalue>")),
              (Failure{0x420016, "Range element: non-single value at 'maxoutvalue' line 2: <file>"}));
    EXPECT_EQ(failureOfFile(range("<maxInValue>one hundred and more</maxInValue>")),
              (Failure{0x42000e, "Illegal values 'one hundred and m...' in 'maxInValue' line 2: <file>"}));
}

TEST(RangeElement, TellsLimitsThatDoNotFitTogether)
{
    EXPECT_EQ(failureOfFile(range("<minInValue>1</minInValue>")),
              (Failure{0x270001, "In & Out Min limits must be both set or both missing"}));
    EXPECT_EQ(failureOfFile(range("<minInValue>2</minInValue><minOutValue>2</minOutValue>"
                                  "<maxInValue>1</maxInValue><maxOutValue>1</maxOutValue>")),
              (Failure{0x270003, "Range maxValue less than minValue"}));
}
