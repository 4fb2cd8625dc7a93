// Message texts from formats in the manner of printf, safe against formats and arguments that don't fit.
#ifndef TAVRIN_UTILS_MESSAGE_FORMAT_H
#define TAVRIN_UTILS_MESSAGE_FORMAT_H

#include <concepts>
#include <cstdint>
#include <span>
#include <string>
#include <type_traits>
#include <variant>

namespace Color
{

// An argument of a message: a text, a whole number or a number. A text is not copied, so it must outlive the message's making.
class MessageArgument
{
public:
    using Value = std::variant<char const*, std::intmax_t, double>;

    MessageArgument(std::string const& text) : m_value(text.c_str()) {}
    // Null reads as an empty text.
    MessageArgument(char const* text) : m_value(text ? text : "") {}
    template <std::floating_point Number>
    MessageArgument(Number number) : m_value(static_cast<double>(number))
    {
    }
    // Integers, switches and enumerators.
    template <class Integer>
    requires(std::integral<Integer> || std::is_enum_v<Integer>) MessageArgument(Integer number)
        : m_value(static_cast<std::intmax_t>(number))
    {
    }

    Value const& value() const { return m_value; }

private:
    Value m_value;
};

// Fills in conversions of d, i, o, u, x, e, f, g, a (also in upper case) and s, by position ("%2$s") or in turn ("%s"), with
// flags, width and precision.
//
// A message tells of a failure, so making it never is one: an argument of another kind than the conversion asks for is written in
// its own way, a missing one leaves nothing, and what is no conversion stands as it is. A null format is empty.
std::string formatMessage(char const* format, std::span<MessageArgument const> arguments);

} // namespace Color

#endif
