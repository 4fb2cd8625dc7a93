// The forms of printf, one conversion at a time. The C function itself is not given the whole format: there a missing argument or
// one of another kind is undefined behaviour, and positions with a gap stop the process where the C library is hardened.
#include "utils/messageFormat.h"

#include <algorithm>
#include <charconv>
#include <cstdio>
#include <optional>
#include <string_view>

namespace Color
{

namespace
{

struct Conversion
{
    std::size_t position;     // Counted from 1; 0 takes the argument after the last one.
    std::string_view options; // Flags, width and precision.
    char letter;
    std::size_t length; // Characters of the format, percent sign included.
};

constexpr std::string_view kDigits = "0123456789";
constexpr std::string_view kFlags = "-+ #0";
constexpr std::string_view kLengthModifiers = "hlLqjzt";
constexpr std::string_view kIntegerLetters = "diouxX";
constexpr std::string_view kNumberLetters = "eEfFgGaA";

bool contains(std::string_view letters, char letter)
{
    return letters.find(letter) != std::string_view::npos;
}

std::size_t skip(std::string_view text, std::size_t begin, std::string_view what)
{
    std::size_t const end = text.find_first_not_of(what, begin);
    return end == std::string_view::npos ? text.size() : end;
}

// Text begins with a percent sign.
std::optional<Conversion> parseConversion(std::string_view text)
{
    Conversion conversion = {};
    std::size_t begin = 1;
    std::size_t const positionEnd = skip(text, begin, kDigits);
    if (positionEnd > begin && positionEnd < text.size() && text[positionEnd] == '$')
    {
        if (std::from_chars(text.data() + begin, text.data() + positionEnd, conversion.position).ec != std::errc())
        {
            return std::nullopt;
        }
        begin = positionEnd + 1;
    }

    std::size_t end = skip(text, skip(text, begin, kFlags), kDigits);
    if (end < text.size() && text[end] == '.')
    {
        end = skip(text, end + 1, kDigits);
    }
    conversion.options = text.substr(begin, end - begin);

    std::size_t const letterAt = skip(text, end, kLengthModifiers);
    if (letterAt == text.size())
    {
        return std::nullopt;
    }
    conversion.letter = text[letterAt];
    conversion.length = letterAt + 1;
    bool const isKnown =
        contains(kIntegerLetters, conversion.letter) || contains(kNumberLetters, conversion.letter) || conversion.letter == 's';
    return isKnown ? std::optional(conversion) : std::nullopt;
}

// What snprintf makes of one value; as much of it as a message can hold.
template <class Value>
std::string print(std::string const& format, Value value)
{
    char buffer[1024] = "";
    std::snprintf(buffer, sizeof(buffer), format.c_str(), value);
    return buffer;
}

std::string convert(Conversion const& conversion, MessageArgument const& argument)
{
    std::string start = "%";
    start += conversion.options;
    bool const wantsNumber = contains(kNumberLetters, conversion.letter);
    if (char const* const* const text = std::get_if<char const*>(&argument.value()))
    {
        return conversion.letter == 's' ? print(start + "s", *text) : *text;
    }
    if (std::intmax_t const* const integer = std::get_if<std::intmax_t>(&argument.value()))
    {
        if (wantsNumber)
        {
            return print(start + conversion.letter, static_cast<double>(*integer));
        }
        return contains(kIntegerLetters, conversion.letter) ? print(start + "j" + conversion.letter, *integer)
                                                            : std::to_string(*integer);
    }
    return print(wantsNumber ? start + conversion.letter : "%g", std::get<double>(argument.value()));
}

} // namespace

std::string formatMessage(char const* format, std::span<MessageArgument const> arguments)
{
    std::string message;
    std::string_view rest = format ? format : "";
    std::size_t inTurn = 0;
    while (!rest.empty())
    {
        std::size_t const plain = std::min(rest.find('%'), rest.size());
        message += rest.substr(0, plain);
        rest.remove_prefix(plain);
        if (rest.empty())
        {
            break;
        }
        if (std::optional<Conversion> const conversion = parseConversion(rest))
        {
            std::size_t const position = conversion->position ? conversion->position : ++inTurn;
            message += position <= arguments.size() ? convert(*conversion, arguments[position - 1]) : "";
            rest.remove_prefix(conversion->length);
        }
        else
        {
            message += '%';
            rest.remove_prefix(rest.starts_with("%%") ? 2 : 1);
        }
    }
    return message;
}

} // namespace Color
