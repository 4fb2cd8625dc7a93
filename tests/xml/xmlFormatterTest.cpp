// XML as text.
#include "xml/xmlFormatter.h"

#include <gtest/gtest.h>

#include <sstream>
#include <string>

using namespace Color::Xml::Writer;

namespace
{

class XmlFormatter : public testing::Test
{
protected:
    std::ostringstream m_stream;
    Formatter m_formatter{m_stream};
};

} // namespace

TEST_F(XmlFormatter, WritesEachTagOnALineOfItsOwn)
{
    m_formatter.writeStartTag("a");
    m_formatter.writeEmptyTag("b", {});
    m_formatter.writeContentTag("c", "text");
    m_formatter.writeContent("more");
    m_formatter.writeEndTag("a");
    EXPECT_EQ(m_stream.str(), "<a>\n<b />\n<c>text</c>\nmore\n</a>\n");
}

TEST_F(XmlFormatter, IndentsByFourBlanksALevel)
{
    {
        ScopeIndent const outer(m_formatter);
        m_formatter.writeStartTag("a");
        ScopeIndent const inner(m_formatter);
        m_formatter.writeContent("text");
        m_formatter.writeEmptyTag("b", {});
    }
    m_formatter.writeEndTag("c");
    EXPECT_EQ(m_stream.str(), "    <a>\n        text\n        <b />\n</c>\n");
}

TEST_F(XmlFormatter, WritesAttributesInTheirOrder)
{
    m_formatter.writeStartTag("a", {{"z", "1"}, {"b", ""}});
    m_formatter.writeEmptyTag("a", {{"z", "1"}, {"b", "2"}});
    m_formatter.writeContentTag("a", {{"z", "1"}}, "text");
    EXPECT_EQ(m_stream.str(), "<a z=\"1\" b=\"\">\n<a z=\"1\" b=\"2\" />\n<a z=\"1\">text</a>\n");
}

TEST_F(XmlFormatter, EscapesWhatIsMarkup)
{
    m_formatter.writeEmptyTag("a", {{"b", "\"&'<>"}});
    m_formatter.writeContentTag("a", "\"&'<>");
    m_formatter.writeContent("\"&'<>");
    EXPECT_EQ(m_stream.str(), "<a b=\"&quot;&amp;&apos;&lt;&gt;\" />\n"
                              "<a>&quot;&amp;&apos;&lt;&gt;</a>\n"
                              "&quot;&amp;&apos;&lt;&gt;\n");
}

TEST_F(XmlFormatter, PassesOtherCharactersAsTheyAre)
{
    m_formatter.writeContent("\xc3\xa9 `#%\xff");
    EXPECT_EQ(m_stream.str(), "\xc3\xa9 `#%\xff\n");
}
