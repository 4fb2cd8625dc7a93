// Elements whose text is a list of so many numbers.
#include "xml/numberListElt.h"

#include "support/failure.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <vector>

using namespace Color;
using namespace Color::Xml::Reader;
using testing::ElementsAre;

namespace
{

class Triple : public NumberListElt
{
public:
    Triple() : NumberListElt("Triple", nullptr, 9, "f.ctf", 3, ErrorIds::kSopThreeValues) {}

    void setNumbers(std::vector<double> const& numbers) override { m_numbers = numbers; }

    std::vector<double> m_numbers;
};

// The element ends after these lines, which begin with line 10.
Failure read(Triple& element, std::vector<std::string> const& lines)
{
    unsigned int line = 10;
    for (std::string const& text : lines)
        element.setRawData(text, line++);
    return failureOf([&] { element.end(); });
}

} // namespace

TEST(NumberLists, MayRunOverLinesAndHaveCommas)
{
    Triple onOneLine;
    EXPECT_EQ(read(onOneLine, {"1, 1, 1"}), Failure());
    EXPECT_THAT(onOneLine.m_numbers, ElementsAre(1.0, 1.0, 1.0));
    Triple onThreeLines;
    EXPECT_EQ(read(onThreeLines, {"1", "0.1", "1e-300"}), Failure());
    EXPECT_THAT(onThreeLines.m_numbers, ElementsAre(1.0, 0.1, 1e-300));
}

TEST(NumberLists, MustHaveTheirCount)
{
    Failure const wrongCount = {0x42001e, "SOPNode: 3 values required at 'Triple' line 9: f.ctf"};
    Triple none;
    EXPECT_EQ(read(none, {}), wrongCount);
    Triple two;
    EXPECT_EQ(read(two, {"1 2"}), wrongCount);
    Triple four;
    EXPECT_EQ(read(four, {"1 2 3", "4"}), wrongCount);
}

TEST(NumberLists, RefuseWhatIsNoNumber)
{
    Triple words;
    EXPECT_EQ(read(words, {"1 2", "three hundred and four"}),
              (Failure{0x42000e, "Illegal values '1 2 three hundred...' in 'Triple' line 9: f.ctf"}));
    Triple nan;
    EXPECT_EQ(read(nan, {"1 2 nan"}), (Failure{0x42000e, "Illegal values '1 2 nan' in 'Triple' line 9: f.ctf"}));
}
