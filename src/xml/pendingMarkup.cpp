// Watches markup that a parser can't finish yet because its end has not arrived.
#include "xml/pendingMarkup.h"

#include "xml/xmlReaderLimits.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace Color::Xml::Reader
{

namespace
{

// From this length on pieces are kept back. Markup of the usual size goes to the parser at once, whatever is wrong with it.
constexpr std::size_t kLong = 512;

// So much is kept at most; then the parser has a look.
constexpr std::size_t kKeepAtMost = std::size_t{1} << 24;

} // namespace

void PendingMarkup::update(std::string_view parsed, std::size_t unused)
{
    m_parsedBytes += parsed.size();
    m_rescannedBytes += unused;
    if (m_isWatching && unused >= parsed.size())
    {
        return;
    }
    m_isWatching = false;
    if (unused <= parsed.size())
    {
        m_unused = parsed.substr(parsed.size() - unused);
    }
    else
    {
        m_unused += parsed;
    }
    if (m_unused.size() >= kLong)
    {
        _startWatching();
    }
}

bool PendingMarkup::keep(std::string_view piece)
{
    m_isWatching = m_isWatching && !_ends(piece);
    if (!m_isWatching || m_kept.size() + piece.size() > kKeepAtMost)
    {
        return false;
    }
    m_kept += piece;
    return true;
}

std::string PendingMarkup::take()
{
    return std::exchange(m_kept, std::string());
}

bool PendingMarkup::isBrackets() const
{
    return !m_unused.empty() && m_unused.find_first_not_of(']') == std::string::npos;
}

bool PendingMarkup::isTooCostly() const
{
    return m_rescannedBytes > Limits::kRescannedBytes + Limits::kRescannedPerByte * m_parsedBytes;
}

void PendingMarkup::_startWatching()
{
    std::string_view text = m_unused;
    std::size_t opener = 0;
    if (text.starts_with("<!--"))
    {
        m_kind = Kind::Comment;
        opener = 4;
    }
    else if (text.starts_with("<?"))
    {
        m_kind = Kind::Instruction;
        opener = 2;
    }
    else
    {
        m_kind = text.starts_with("<") && !text.starts_with("<!") ? Kind::Tag : Kind::Other;
    }
    m_quote = '\0';
    std::fill(std::begin(m_last), std::end(m_last), '\0');
    text.remove_prefix(opener);
    m_isWatching = m_kind != Kind::Other && !_ends(text);
}

bool PendingMarkup::_ends(std::string_view text)
{
    for (char const c : text)
    {
        if (_endsWith(c))
        {
            return true;
        }
        m_last[0] = std::exchange(m_last[1], c);
    }
    return false;
}

bool PendingMarkup::_endsWith(char c)
{
    if (m_kind == Kind::Comment)
    {
        return c == '>' && m_last[0] == '-' && m_last[1] == '-';
    }
    if (m_kind == Kind::Instruction)
    {
        return c == '>' && m_last[1] == '?';
    }
    if (m_quote != '\0')
    {
        m_quote = c == m_quote ? '\0' : m_quote;
        return false;
    }
    m_quote = c == '"' || c == '\'' ? c : '\0';
    return c == '>';
}

} // namespace Color::Xml::Reader
