// Writes XML as text.
#include "xml/xmlFormatter.h"

#include <ostream>

namespace Color::Xml::Writer
{

namespace
{

constexpr char kIndentText[] = "    "; // one level

// What stands for a character in a text or in the value of an attribute; null for one that stands for itself.
char const* entityOf(char character)
{
    switch (character)
    {
    case '"':
        return "&quot;";
    case '&':
        return "&amp;";
    case '\'':
        return "&apos;";
    case '<':
        return "&lt;";
    case '>':
        return "&gt;";
    default:
        return nullptr;
    }
}

} // namespace

void Formatter::writeStartTag(std::string const& name, Attributes const& attributes)
{
    _writeTag(name, attributes);
    m_stream << ">\n";
}

void Formatter::writeEndTag(std::string const& name)
{
    _writeIndent();
    m_stream << "</" << name << ">\n";
}

void Formatter::writeEmptyTag(std::string const& name, Attributes const& attributes)
{
    _writeTag(name, attributes);
    m_stream << " />\n";
}

void Formatter::writeContentTag(std::string const& name, Attributes const& attributes, std::string const& text)
{
    _writeTag(name, attributes);
    m_stream << '>';
    _writeEscapeString(text);
    m_stream << "</" << name << ">\n";
}

void Formatter::writeContent(std::string const& text)
{
    _writeIndent();
    _writeEscapeString(text);
    m_stream << '\n';
}

void Formatter::_writeIndent()
{
    for (int level = 0; level < m_indent; ++level)
    {
        m_stream << kIndentText;
    }
}

void Formatter::_writeTag(std::string const& name, Attributes const& attributes)
{
    _writeIndent();
    m_stream << '<' << name;
    for (auto const& [attribute, value] : attributes)
    {
        m_stream << ' ' << attribute << "=\"";
        _writeEscapeString(value);
        m_stream << '"';
    }
}

void Formatter::_writeEscapeString(std::string_view text)
{
    for (char const character : text)
    {
        if (char const* const entity = entityOf(character))
        {
            m_stream << entity;
        }
        else
        {
            m_stream.put(character);
        }
    }
}

} // namespace Color::Xml::Writer
