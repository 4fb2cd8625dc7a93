// Watches markup that a parser can't finish yet because its end has not arrived.
#ifndef TAVRIN_XML_PENDING_MARKUP_H
#define TAVRIN_XML_PENDING_MARKUP_H

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace Color::Xml::Reader
{

// Expat scans an unfinished tag or comment anew with every piece that it is given. In pieces of a line each, a long comment would
// cost the square of its length. So pieces are kept back, from the point where the parser holds much of a tag, comment or
// processing instruction, until the piece that finishes it. The parser then sees the end of the markup with the same piece as it
// would have anyway. For what slips through, the scanning is counted.
class PendingMarkup
{
public:
    // To be told after each parsing: what was parsed, and how many bytes of all, up to now, the parser could not use yet.
    void update(std::string_view parsed, std::size_t unused);

    // True when the piece was kept back; false when the parser shall have all that was kept and then the piece.
    bool keep(std::string_view piece);
    // What was kept back, which then is no more.
    std::string take();

    // Nothing waits for its end: a text that comes now is text and nothing else. The first half of a line break may wait.
    bool isNone() const { return m_kept.empty() && (m_unused.empty() || m_unused == "\r"); }
    // The parser holds brackets, which may or may not end a section of character data.
    bool isBrackets() const;
    // The parser has scanned too much in vain.
    bool isTooCostly() const;

private:
    enum class Kind
    {
        Comment,
        Instruction,
        Tag,
        Other
    };

    void _startWatching();
    // Goes on with the search for the end of the markup; true when the text holds it.
    bool _ends(std::string_view text);
    bool _endsWith(char c);

    std::string m_unused;
    std::string m_kept;
    bool m_isWatching = false;
    Kind m_kind = Kind::Other;
    char m_quote = '\0';           // Within an attribute's value: the quote that it began with.
    char m_last[2] = {'\0', '\0'}; // The characters before the one that is looked at.
    std::uint64_t m_parsedBytes = 0;
    std::uint64_t m_rescannedBytes = 0;
};

} // namespace Color::Xml::Reader

#endif
