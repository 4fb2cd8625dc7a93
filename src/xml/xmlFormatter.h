// Writes XML as text: tags with attributes, each on a line of its own, indented by their depth.
#ifndef TAVRIN_XML_FORMATTER_H
#define TAVRIN_XML_FORMATTER_H

#include <iosfwd>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace Color::Xml::Writer
{

// The first line of every document that is written.
inline constexpr char kProlog[] = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n";

class Formatter
{
public:
    // Names and values, written in this order.
    using Attributes = std::vector<std::pair<std::string, std::string>>;

    // The stream outlives the formatter.
    explicit Formatter(std::ostream& stream) : m_stream(stream) {}

    std::ostream& getStream() { return m_stream; }
    void incrementIndent() { ++m_indent; }
    void decrementIndent() { --m_indent; }

    // Names of elements and attributes go out as they are; values and texts are escaped.
    void writeStartTag(std::string const& name, Attributes const& attributes = {});
    void writeEndTag(std::string const& name);
    void writeEmptyTag(std::string const& name, Attributes const& attributes);
    // An element with its text on one line.
    void writeContentTag(std::string const& name, std::string const& text) { writeContentTag(name, {}, text); }
    void writeContentTag(std::string const& name, Attributes const& attributes, std::string const& text);
    void writeContent(std::string const& text);

private:
    void _writeIndent();
    void _writeTag(std::string const& name, Attributes const& attributes);
    void _writeEscapeString(std::string_view text);

    std::ostream& m_stream;
    int m_indent = 0; // in levels
};

// One level more for as long as it lives.
class ScopeIndent
{
public:
    explicit ScopeIndent(Formatter& formatter) : m_formatter(formatter) { m_formatter.incrementIndent(); }
    ScopeIndent(ScopeIndent const&) = delete;
    ScopeIndent& operator=(ScopeIndent const&) = delete;
    ~ScopeIndent() { m_formatter.decrementIndent(); }

private:
    Formatter& m_formatter;
};

} // namespace Color::Xml::Writer

#endif
