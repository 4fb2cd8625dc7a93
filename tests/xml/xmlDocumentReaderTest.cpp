// The frame that drives the parser over a document: lines, texts, the stack, and what stops it.
#include "xml/xmlDocumentReader.h"

#include "support/failure.h"
#include "support/temporaryFolder.h"
#include "xml/elements.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

using namespace Color;
using namespace Color::Xml::Reader;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

namespace
{

using Events = std::vector<std::string>;

// Notes what it gets; "name@line", then name=value for each attribute.
class NotingElt : public XmlTest::Box
{
public:
    NotingElt(char const* name, unsigned int line, Events& events) : Box(name, line, "f"), m_events(events) {}

    void start(char const** attributes) override
    {
        std::string event = "<" + getName() + "@" + std::to_string(getXmlLocation());
        for (; *attributes; attributes += 2)
            event.append(" ").append(attributes[0]).append("=").append(attributes[1]);
        m_events.push_back(event);
        _failIf("failsAtStart");
    }
    void end() override
    {
        m_events.push_back(">" + getName());
        _failIf("failsAtEnd");
    }
    void setRawData(std::string const& text, unsigned int line) override
    {
        m_events.push_back(text + "@" + std::to_string(line));
        _failIf("failsAtText");
    }

private:
    void _failIf(char const* name)
    {
        if (getName() == name)
            throw failure(ErrorIds::kXmlTagMissing, "own");
        if (getName() == std::string("foreign") + name)
            throw std::runtime_error("foreign");
    }

    Events& m_events;
};

// A plain element, whose parent may be the wrong one.
class PlainNoter : public PlainElt
{
public:
    using PlainElt::PlainElt;
};

// Neither container nor plain.
class OddElt : public XmlTest::Box
{
public:
    using Box::Box;
    bool isContainer() const override { return false; }
};

class NotingReader : public DocumentReader
{
public:
    using DocumentReader::_characterDataHandler;
    using DocumentReader::_endElementHandler;
    using DocumentReader::_startElementHandler;
    using DocumentReader::getElementStack;

    Events m_events;

private:
    std::unique_ptr<Element> createElement(char const* name) override
    {
        std::string const tag = name;
        auto* const parent = dynamic_cast<ContainerElt*>(getElementStack().back());
        if (tag == "plain")
            return std::make_unique<PlainNoter>(tag, parent, getLineNumber(), "f");
        if (tag == "orphan")
            return std::make_unique<PlainNoter>(tag, nullptr, getLineNumber(), "f");
        if (tag == "odd")
            return std::make_unique<OddElt>(tag, getLineNumber(), "f");
        if (tag == "dummy" || (getElementStack().back() && !parent))
            return std::make_unique<DummyElt>(tag, getElementStack().back(), getLineNumber(), "f", nullptr);
        return std::make_unique<NotingElt>(name, getLineNumber(), m_events);
    }
};

Failure readLines(NotingReader& reader, std::string const& document)
{
    std::istringstream stream(document);
    return failureOf([&] { reader.readStream(stream, "f"); });
}

Events eventsOfLines(std::string const& document)
{
    NotingReader reader;
    EXPECT_EQ(readLines(reader, document), Failure());
    return reader.m_events;
}

Events eventsOfBuffer(std::string const& document)
{
    NotingReader reader;
    EXPECT_EQ(failureOf([&] { reader.readBuffer(document); }), Failure());
    return reader.m_events;
}

Failure failureOfLines(std::string const& document)
{
    NotingReader reader;
    return readLines(reader, document);
}

Failure parsingError(std::string const& what, unsigned int line)
{
    return {0x420001, "XML Parsing error (" + what + ") line " + std::to_string(line) + ": f"};
}

Failure noClosingTag(std::string const& tag, unsigned int line)
{
    return {0x420004, "XML Parsing error (no closing tag for '" + tag + "') line " + std::to_string(line) + ": f"};
}

std::string repeated(std::string const& text, std::size_t count)
{
    std::string all;
    while (count-- > 0)
        all += text;
    return all;
}

} // namespace

TEST(LinesOfAFile, AreTextsOfTheirOwn)
{
    EXPECT_THAT(eventsOfLines("<a> one\n two \n\n \t\nthree</a>\n"), ElementsAre("<a@1", "one@1", "two@2", "three@5", ">a"));
}

TEST(LinesOfAFile, MayEndInCarriageReturns)
{
    EXPECT_THAT(eventsOfLines("<a>one\r\ntwo\r\n<b\r\nc='d'/></a>\r\n"),
                ElementsAre("<a@1", "one@1", "two@2", "<b@4 c=d", ">b", ">a"));
}

TEST(LinesOfAFile, JoinAStartTagWithTheLineOfItsEndForItsNumber)
{
    EXPECT_THAT(eventsOfLines("<a\n b='c'\n>\n</a\n>"), ElementsAre("<a@3 b=c", ">a"));
}

TEST(LinesOfAFile, JoinAnAttributesValueWithoutTheBreak)
{
    EXPECT_THAT(eventsOfLines("<a b='on\ne'/>"), ElementsAre("<a@2 b=one", ">a"));
}

TEST(LinesOfAFile, MayBeLongerThanWhatIsReadAtOnce)
{
    std::string const line = repeated("0123456789 ", 20000) + "end";
    EXPECT_THAT(eventsOfLines("<a>" + line + "\n" + line + "</a>"), ElementsAre("<a@1", line + "@1", line + "@2", ">a"));
    EXPECT_THAT(eventsOfBuffer("<a>" + line + "\n" + line + "</a>"), ElementsAre("<a@0", line + "@0", line + "@0", ">a"));
}

TEST(LinesOfAFile, KeepTheBracketsAtTheirEnds)
{
    EXPECT_THAT(eventsOfLines("<a>see [1]\n[2]]\n]]\n</a>"), ElementsAre("<a@1", "see [1]@1", "[2]]@2", "]]@3", ">a"));
    EXPECT_THAT(eventsOfLines("<a><![CDATA[x]\n]]\ny]]></a>"), ElementsAre("<a@1", "x]@1", "]]@2", "y@3", ">a"));
}

TEST(Texts, OfOneLineAreJoined)
{
    Events const expected = {"<a@1", "x & y < z@1", ">a"};
    EXPECT_EQ(eventsOfLines("<a>x &amp; y &#60;<!-- c --><?pi?> <![CDATA[z]]></a>"), expected);
}

TEST(Texts, AreSplitByElements)
{
    EXPECT_THAT(eventsOfLines("<a>x<b/>y</a>"), ElementsAre("<a@1", "x@1", "<b@1", ">b", "y@1", ">a"));
}

TEST(Texts, OfABufferAreSplitAtLineBreaksAndAllOnLineZero)
{
    EXPECT_THAT(eventsOfBuffer("<a>one &amp;\n\r\n two<b\nc='d\ne'/></a>"),
                ElementsAre("<a@0", "one &@0", "two@0", "<b@0 c=d e", ">b", ">a"));
}

TEST(Texts, OfDummiesGoNowhere)
{
    EXPECT_THAT(eventsOfLines("<a>x<dummy>no<b>no</b></dummy>y</a>"), ElementsAre("<a@1", "x@1", "y@1", ">a"));
}

TEST(Documents, ThatAreNotWellFormedTellTheLine)
{
    EXPECT_EQ(failureOfLines("<a>\n<b c=d/></a>"), parsingError("not well-formed (invalid token)", 2));
    EXPECT_EQ(failureOfLines("<a/>\n\n<b/>"), parsingError("junk after document element", 3));
    EXPECT_EQ(failureOfLines("<a>\n&b;</a>"), parsingError("undefined entity", 2));
    EXPECT_EQ(failureOfLines("<a b='1'\n b='2'/>"), parsingError("duplicate attribute", 2));
    EXPECT_EQ(failureOfLines(std::string("<a>\0</a>", 8)), parsingError("not well-formed (invalid token)", 1));
    EXPECT_EQ(failureOfLines("<a>\xff</a>"), parsingError("not well-formed (invalid token)", 1));
}

// The element that is open is told, not the tag that does not fit.
TEST(Documents, WithTheWrongClosingTagTellWhatIsOpen)
{
    EXPECT_EQ(failureOfLines("<a>\n<b>\n</c></a>"), noClosingTag("b", 3));
}

TEST(Documents, ThatEndTooEarlyTellTheInnermostOpenElement)
{
    EXPECT_EQ(failureOfLines("<a>\n<b>\ntext\n"), noClosingTag("b", 3));
    EXPECT_EQ(failureOfLines("<a>\n</"), noClosingTag("a", 2));
    NotingReader reader;
    EXPECT_EQ(failureOf([&] { reader.readBuffer("<a>\n\n"); }),
              (Failure{0x420004, "XML Parsing error (no closing tag for 'a') line 0: "}));
}

TEST(Documents, ThatDoNotBeginAreEmpty)
{
    EXPECT_THAT(eventsOfLines(""), IsEmpty());
    EXPECT_THAT(eventsOfLines("<a"), IsEmpty());
    EXPECT_THAT(eventsOfBuffer(""), IsEmpty());
}

// The parser is never told that a document has ended, so a second one is more of the first.
TEST(Documents, NeedAReaderEach)
{
    NotingReader reader;
    EXPECT_EQ(readLines(reader, "<a/>"), Failure());
    EXPECT_EQ(readLines(reader, "\n<a/>"), parsingError("junk after document element", 2));
}

TEST(Documents, TellTheTextBeforeTheErrorBehindIt)
{
    NotingReader reader;
    EXPECT_EQ(readLines(reader, "<a>x &"), noClosingTag("a", 1));
    EXPECT_THAT(reader.m_events, ElementsAre("<a@1", "x@1"));
    NotingReader other;
    EXPECT_EQ(readLines(other, "<failsAtText>x &;"), (Failure{0x420002, "XML Parsing error: Tag 'own' missing line 1: f"}));
}

TEST(Files, ThatCanNotBeOpenedAreTold)
{
    NotingReader reader;
    EXPECT_EQ(failureOf([&] { reader.readFile("/no/such/file.ctf"); }), (Failure{0x420018, "File open failed: /no/such/file.ctf"}));
}

TEST(Files, AreReadLikeStreams)
{
    TemporaryFolder const folder;
    NotingReader reader;
    reader.readFile(folder.write("a.ctf", "<a>\nx\n</a>"));
    EXPECT_THAT(reader.m_events, ElementsAre("<a@1", "x@2", ">a"));
    EXPECT_EQ(reader.getLineNumber(), 3U);
    EXPECT_EQ(reader.getXmlFilename(), folder.file("a.ctf"));
}

// The parser is C: nothing is thrown through it, and what an element throws arrives all the same.
TEST(FailuresOfElements, ArriveAsTheyAreAndEndTheReading)
{
    Failure const own = {0x420002, "XML Parsing error: Tag 'own' missing line 2: f"};
    for (std::string const name : {"failsAtStart", "failsAtText", "failsAtEnd"})
    {
        NotingReader reader;
        EXPECT_EQ(readLines(reader, "<a>\n<" + name + ">text</" + name + "><b/>\n</a>"), own) << name;
        EXPECT_THAT(reader.m_events, testing::Not(testing::Contains("<b@2"))) << name;

        std::istringstream foreign("<foreign" + name + ">text</foreign" + name + ">");
        NotingReader other;
        EXPECT_THROW(other.readStream(foreign, "f"), std::runtime_error) << name;
    }
}

TEST(FailuresOfElements, AtAnEmptyElementCallNoEnd)
{
    NotingReader reader;
    EXPECT_EQ(readLines(reader, "<failsAtStart/>").id, 0x420002U);
    EXPECT_THAT(reader.m_events, ElementsAre("<failsAtStart@1"));
}

TEST(Handlers, RefuseMissingArguments)
{
    NotingReader reader;
    char const* none[] = {nullptr};
    Failure const without = {0x420001, "XML Parsing error (Internal error) line 0: "};
    EXPECT_EQ(failureOf([&] { NotingReader::_startElementHandler(nullptr, "a", none); }), without);
    EXPECT_EQ(failureOf([&] { NotingReader::_startElementHandler(&reader, nullptr, none); }), without);
    EXPECT_EQ(failureOf([&] { NotingReader::_startElementHandler(&reader, "", none); }), without);
    EXPECT_EQ(failureOf([&] { NotingReader::_endElementHandler(nullptr, "a"); }), without);
    EXPECT_EQ(failureOf([&] { NotingReader::_endElementHandler(&reader, nullptr); }), without);
    EXPECT_EQ(failureOf([&] { NotingReader::_endElementHandler(&reader, ""); }), without);
    EXPECT_EQ(failureOf([&] { NotingReader::_characterDataHandler(nullptr, "a", 1); }), without);
}

TEST(Handlers, RefuseTextsThatAreNone)
{
    NotingReader reader;
    Failure const illegal = {0x420017, "Attribute illegal: "};
    EXPECT_EQ(failureOf([&] { NotingReader::_characterDataHandler(&reader, nullptr, 1); }), illegal);
    EXPECT_EQ(failureOf([&] { NotingReader::_characterDataHandler(&reader, "a", -1); }), illegal);
    EXPECT_EQ(failureOf([&] { NotingReader::_characterDataHandler(&reader, "\0a", 2); }), illegal);
    EXPECT_EQ(failureOf([&] { NotingReader::_characterDataHandler(&reader, nullptr, 0); }), Failure());
    EXPECT_EQ(failureOf([&] { NotingReader::_characterDataHandler(&reader, "text", 4); }),
              (Failure{0x420004, "XML Parsing error (no closing tag for 'text') line 0: "}));
}

TEST(Handlers, RefuseAnEndTagThatIsNotTheTops)
{
    NotingReader reader;
    Failure const missing = {0x420002, "XML Parsing error: Tag 'a' missing line 0: "};
    EXPECT_EQ(failureOf([&] { NotingReader::_endElementHandler(&reader, "a"); }), missing);
    char const* none[] = {nullptr};
    NotingReader::_startElementHandler(&reader, "A", none);
    EXPECT_EQ(failureOf([&] { NotingReader::_endElementHandler(&reader, "a"); }), missing);
    EXPECT_EQ(failureOf([&] { NotingReader::_endElementHandler(&reader, "A"); }), Failure());
}

TEST(EndTags, TakePlainElementsOffTheirParent)
{
    EXPECT_THAT(eventsOfLines("<a><plain/></a>"), ElementsAre("<a@1", ">a"));
    EXPECT_EQ(failureOfLines("<a>\n<orphan/></a>"), parsingError("orphan", 2));
    EXPECT_EQ(failureOfLines("<a>\n<odd/></a>"), (Failure{0x420005, "XML Parsing error: Attribute end 'odd' illegal line 2: f"}));
}

TEST(Nesting, IsBounded)
{
    auto const nested = [](std::size_t depth) { return repeated("<a>", depth) + repeated("</a>", depth); };
    EXPECT_THAT(eventsOfLines(nested(256)), SizeIs(512));
    EXPECT_EQ(failureOfLines(nested(257)), parsingError("elements nested too deeply", 1));
    EXPECT_EQ(failureOfLines(nested(100000)), parsingError("elements nested too deeply", 1));
    NotingReader reader;
    EXPECT_EQ(failureOf([&] { reader.readBuffer(nested(100000)); }),
              (Failure{0x420001, "XML Parsing error (elements nested too deeply) line 0: "}));
}

TEST(DocumentTypes, MayBeNamed)
{
    EXPECT_THAT(eventsOfLines("<!DOCTYPE a SYSTEM 'a.dtd'>\n<a/>"), ElementsAre("<a@2", ">a"));
    EXPECT_THAT(eventsOfLines("<!DOCTYPE a PUBLIC 'a' 'a.dtd'>\n<a/>"), ElementsAre("<a@2", ">a"));
}

TEST(DocumentTypes, MayNotDeclareWhatCouldGrow)
{
    Failure const refused = parsingError("declarations within the document not supported", 1);
    EXPECT_EQ(failureOfLines("<!DOCTYPE a [\n<!ENTITY b 'c'>\n]>\n<a>&b;</a>"), refused);
    EXPECT_EQ(failureOfLines("<!DOCTYPE a [<!ATTLIST a b CDATA 'c'>]><a/>"), refused);

    std::string laughs = "<!DOCTYPE a [<!ENTITY x0 'ha'>";
    for (int i = 1; i < 100; ++i)
    {
        std::string const inner = "&x" + std::to_string(i - 1) + ";";
        laughs += "<!ENTITY x" + std::to_string(i) + " '" + inner + inner + "'>";
    }
    EXPECT_EQ(failureOfLines(laughs + "]><a>&x99;</a>"), refused);
}

// Were these scanned anew with every line, the tests would not end.
TEST(LongMarkup, TakesTimeInProportionToItsLength)
{
    std::string const lines = repeated("0.125 0.25\n", 1000000);
    EXPECT_THAT(eventsOfLines("<a>\n<!--" + lines + "--><b/></a>"), ElementsAre("<a@1", "<b@1000002", ">b", ">a"));
    EXPECT_THAT(eventsOfLines("<a>\n<?b " + lines + "?><b/></a>"), ElementsAre("<a@1", "<b@1000002", ">b", ">a"));
    EXPECT_THAT(eventsOfLines("<!--" + lines + "--><a/>"), ElementsAre("<a@1000001", ">a"));
    EXPECT_THAT(eventsOfLines("<a/><!--" + lines + "-->"), ElementsAre("<a@1", ">a"));
    EXPECT_THAT(eventsOfLines("<a><b c='1'" + repeated("\n", 1000000) + "/></a>"),
                ElementsAre("<a@1", "<b@1000001 c=1", ">b", ">a"));
}

// What follows on the line of its end belongs to that line, and texts behind it are not joined.
TEST(LongMarkup, EndsWhereItsKindEnds)
{
    std::string const filling = repeated("- \"quoted' > text -> ?> <a>\n", 1000);
    EXPECT_THAT(eventsOfLines("<a><!--" + filling + "- \n->x\n-->y\nz</a>"), ElementsAre("<a@1", "y@1003", "z@1004", ">a"));
    EXPECT_THAT(eventsOfLines("<a><!-->" + filling + "-->y\nz</a>"), ElementsAre("<a@1", "y@1001", "z@1002", ">a"));
    EXPECT_THAT(eventsOfLines("<a><!--" + filling + "-\n-\n>y\nz</a>"), ElementsAre("<a@1", "y@1003", "z@1004", ">a"));

    std::string const instruction = repeated("- \"quoted' > text --> ? <a>\n", 1000);
    EXPECT_THAT(eventsOfLines("<a><?b " + instruction + "?\n>y\nz</a>"), ElementsAre("<a@1", "y@1002", "z@1003", ">a"));

    std::string const value = repeated("> -- ?>\n", 1000);
    std::string const joined = repeated("> -- ?>", 1000);
    EXPECT_THAT(eventsOfLines("<a><b c='\"" + value + "' d=\"'" + value + "\">y\nz</b></a>"),
                ElementsAre("<a@1", "<b@2001 c=\"" + joined + " d='" + joined, "y@2001", "z@2002", ">b", ">a"));
}

TEST(LongMarkup, TellsWhatIsWrongWithIt)
{
    std::string const lines = repeated("0.125 0.25\n", 1000);
    EXPECT_EQ(failureOfLines("<a><!--" + lines + "-- x -->\n</a>"), parsingError("not well-formed (invalid token)", 1001));
    EXPECT_EQ(failureOfLines("<a><!--" + lines + "\x01"), parsingError("not well-formed (invalid token)", 1001));
    EXPECT_EQ(failureOfLines("<a><!--" + lines), noClosingTag("a", 1000));
}

TEST(LongMarkup, OfAKindThatHasNoBusinessToBeLongIsRefused)
{
    Failure const failure = failureOfLines("<a>&" + repeated("b\n", 100000) + ";</a>");
    EXPECT_EQ(failure.id, 0x420001U);
    EXPECT_THAT(failure.words, testing::StartsWith("XML Parsing error (markup too long) line "));
}
