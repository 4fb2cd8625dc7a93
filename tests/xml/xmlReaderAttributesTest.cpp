// Reading the attributes of an element by rules.
#include "xml/xmlReaderAttributes.h"

#include "support/failure.h"
#include "xml/elements.h"
#include "xml/logLines.h"

#include <tavrin/vocabulary.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

using namespace Color;
using namespace Color::Xml::Reader;
using testing::ElementsAre;
using testing::IsEmpty;
using XmlTest::Attributes;
using XmlTest::textsOf;

namespace
{

// What the rules of a test took, in order.
class AttributeRules : public testing::Test
{
protected:
    AttributeReader::TakeText take(std::string const& rule)
    {
        return [this, rule](char const* value) { m_taken.push_back(rule + "=" + value); };
    }
    Failure read(Attributes attributes)
    {
        return failureOf([&] { m_reader.read(attributes); });
    }

    XmlTest::Box m_element{"box", 7, "f.ctf"};
    AttributeReader m_reader{m_element};
    std::vector<std::string> m_taken;
};

} // namespace

TEST_F(AttributeRules, MatchNamesInAnyCaseAndPassOverUnknownOnes)
{
    m_reader.text("inverseOf", take("inverseOf"));
    EXPECT_EQ(read({"xmlns", "u", "INVERSEOF", "b", "inverse", "c"}), Failure());
    EXPECT_THAT(m_taken, ElementsAre("inverseOf=b"));
}

TEST_F(AttributeRules, AreAppliedInTheOrderOfTheFile)
{
    m_reader.text("a", take("a")).text("b", take("b"));
    read({"b", "1", "a", "2", "B", "3"});
    EXPECT_THAT(m_taken, ElementsAre("b=1", "a=2", "b=3"));
}

TEST_F(AttributeRules, TellTheFirstOfSeveralMissingAttributesAfterTheLastOneThatIsThere)
{
    m_reader.text("a", take("a"));
    m_reader.text("b", take("b")).required("Label B");
    m_reader.text("c", take("c")).required("Label C");
    EXPECT_EQ(read({"a", "1"}), (Failure{0x420006, "Required attribute 'Label B' missing in 'Box' line 7: f.ctf"}));
    EXPECT_THAT(m_taken, ElementsAre("a=1"));
    EXPECT_EQ(read({"b", "1", "c", "1"}), Failure());
}

TEST_F(AttributeRules, RefuseAnEmptyTextWhereOneIsNeeded)
{
    m_reader.filledText("id", "Identifier", take("id"));
    EXPECT_EQ(read({"id", ""}), (Failure{0x420007, "Required attribute 'Identifier' empty in 'Box' line 7: f.ctf"}));
    EXPECT_EQ(read({"id", "x"}), Failure());
    EXPECT_THAT(m_taken, ElementsAre("id=x"));
}

TEST_F(AttributeRules, KnowBitDepthsByTheirExactName)
{
    Tavrin::BitDepth depth = Tavrin::BIT_DEPTH_UNKNOWN;
    m_reader.depth("inBitDepth", "Input Bit Depth", [&](Tavrin::BitDepth found) { depth = found; });
    EXPECT_EQ(read({"inBitDepth", "10i"}), Failure());
    EXPECT_EQ(depth, Tavrin::BIT_DEPTH_10i);
    EXPECT_EQ(read({"inBitDepth", "10I"}), (Failure{0x420009, "Illegal 'Input Bit Depth' attribute '10I' in 'Box' line 7: f.ctf"}));
}

TEST_F(AttributeRules, ReadNumbersAtDoublePrecision)
{
    double number = 0.0;
    m_reader.number("gamma", number);
    EXPECT_EQ(read({"gamma", " 0.1"}), Failure());
    EXPECT_EQ(number, 0.1);
    EXPECT_EQ(read({"gamma", "nan"}), (Failure{0x420008, "Characters 'nan' illegal"}));
    EXPECT_EQ(read({"gamma", ""}), (Failure{0x420008, "Characters '' illegal"}));
}

TEST_F(AttributeRules, TakeOneWordInAnyCaseAndNothingElse)
{
    m_reader.word("halfDomain", "true", ErrorIds::kHalfDomainAttributeIllegal, [this] { m_taken.push_back("set"); });
    EXPECT_EQ(read({"halfDomain", "TRUE"}), Failure());
    EXPECT_THAT(m_taken, ElementsAre("set"));
    for (std::string const value : {"false", " true", ""})
    {
        EXPECT_EQ(read({"halfDomain", value.c_str()}),
                  (Failure{0x42000f, "Illegal 'Box' halfDomain attribute '" + value + "' line 7: f.ctf"}));
    }
}

TEST_F(AttributeRules, TakeOneWordWithWhiteSpaceAroundItWhereThatIsAllowed)
{
    m_reader.trimmedWord("bypass", "true", ErrorIds::kBypassAttributeIllegal, [this] { m_taken.push_back("set"); });
    EXPECT_EQ(read({"bypass", " \tTrue "}), Failure());
    EXPECT_THAT(m_taken, ElementsAre("set"));
    EXPECT_EQ(read({"bypass", " no "}), (Failure{0x420024, "Illegal 'Box' bypass attribute 'no' line 7: f.ctf"}));
}

TEST_F(AttributeRules, LogAnUnknownNameAndGoOn)
{
    LogCapture const log;
    auto const setBasePath = [this](Tavrin::BasePath path) { m_taken.push_back(std::to_string(path)); };
    m_reader.knownName("basePath", "basePath", &Tavrin::getBasePath, setBasePath);
    EXPECT_EQ(read({"basePath", "SHARED"}), Failure());
    EXPECT_THAT(m_taken, ElementsAre("2"));
    EXPECT_THAT(textsOf(log), IsEmpty());

    EXPECT_EQ(read({"basePath", "100%s"}), Failure());
    EXPECT_THAT(m_taken, ElementsAre("2"));
    EXPECT_THAT(textsOf(log), ElementsAre("Illegal 'basePath' attribute '100%s' in 'Box' line 7: f.ctf"));
}
