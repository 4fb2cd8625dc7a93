// Numbers in the texts and attributes of documents.
#include "xml/xmlReaderNumbers.h"

#include "utils/errorMessage.h"

#include <charconv>
#include <cmath>
#include <cstdio>
#include <limits>
#include <locale.h> // NOLINT(modernize-deprecated-headers): newlocale is POSIX, not C++.
#include <type_traits>

namespace Color::Xml::Reader
{

namespace
{

constexpr std::size_t kEnd = std::string_view::npos;

// Makes the C locale the thread's own for a while, since sscanf takes its decimal point from the locale.
class ScopedCLocale
{
public:
    ScopedCLocale() : m_previous(uselocale(_cLocale())) {}
    ~ScopedCLocale() { uselocale(m_previous); }
    ScopedCLocale(ScopedCLocale const&) = delete;
    ScopedCLocale& operator=(ScopedCLocale const&) = delete;

private:
    static locale_t _cLocale()
    {
        static locale_t const locale = newlocale(LC_ALL_MASK, "C", nullptr);
        return locale;
    }

    locale_t m_previous;
};

constexpr bool isDigit(char c)
{
    return c >= '0' && c <= '9';
}

std::string_view withoutLeadingSpace(std::string_view text)
{
    while (!text.empty() && isSeparator(text.front()) && text.front() != ',')
    {
        text.remove_prefix(1);
    }
    return text;
}

// An ordinary decimal number that fills its token: both ways of reading round correctly, so they agree. Everything else (no
// number at all, a tail after the number, hexadecimal, out of range) is left to sscanf. Gives the token's length, 0 for none.
template <class T>
std::size_t scanOrdinaryNumber(std::string_view text, T& value)
{
    char const* first = text.data();
    char const* const last = first + text.size();
    bool const minus = first != last && *first == '-';
    char const* const digits = first + (minus || (first != last && *first == '+') ? 1 : 0);
    if (digits == last || (!isDigit(*digits) && *digits != '.'))
    {
        return 0;
    }
    T number;
    auto const [end, error] = std::from_chars(minus ? first : digits, last, number);
    if (error != std::errc{} || (end != last && !isSeparator(*end)))
    {
        return 0;
    }
    value = number;
    return static_cast<std::size_t>(end - first);
}

// The separator goes along, so that sscanf sees as much of the text as it ever would.
template <class T>
bool scanAnyNumber(std::string_view text, char const* format, T& value)
{
    std::size_t const delimiter = findDelim(text, 0);
    std::string const token(text.substr(0, delimiter == kEnd ? kEnd : delimiter + 1));
    ScopedCLocale const locale;
    return std::sscanf(token.c_str(), format, &value) == 1;
}

template <class T>
bool scan(std::string_view text, char const* format, T& value)
{
    text = withoutLeadingSpace(text);
    return scanOrdinaryNumber(text, value) != 0 || scanAnyNumber(text, format, value);
}

bool parse(std::string_view text, float& value)
{
    return scanNumber(text, value);
}

bool parse(std::string_view text, double& value)
{
    return scanNumber(text, value) && !std::isnan(value);
}

bool parse(std::string_view text, unsigned int& value)
{
    double number = 0.0;
    bool const isWhole = scanNumber(text, number) && number >= 0.0 && number <= std::numeric_limits<unsigned int>::max() &&
                         number == std::floor(number);
    value = isWhole ? static_cast<unsigned int>(number) : 0U;
    return isWhole;
}

} // namespace

std::size_t findNextTokenStart(std::string_view text, std::size_t position)
{
    while (position < text.size() && isSeparator(text[position]))
    {
        ++position;
    }
    return position < text.size() ? position : kEnd;
}

std::size_t findDelim(std::string_view text, std::size_t position)
{
    while (position < text.size() && !isSeparator(text[position]))
    {
        ++position;
    }
    return position < text.size() ? position : kEnd;
}

std::string truncateString(std::string_view text)
{
    constexpr std::size_t kLongest = 17;
    return text.size() > kLongest ? std::string(text.substr(0, kLongest)) + "..." : std::string(text);
}

bool scanNumber(std::string_view text, float& value)
{
    return scan(text, "%f", value);
}

bool scanNumber(std::string_view text, double& value)
{
    return scan(text, "%lf", value);
}

template <class T>
T parseNumber(std::string_view text)
{
    T value{};
    if (!parse(text, value))
    {
        throw failure(ErrorIds::kCharactersIllegal, Module::kXmlReader, truncateString(text));
    }
    return value;
}

// Moves from a token on to the next one.
template <class T>
T takeToken(std::string_view text, std::size_t& position)
{
    T value{};
    if constexpr (std::is_floating_point_v<T>)
    {
        if (std::size_t const length = scanOrdinaryNumber(text.substr(position), value))
        {
            position += length;
            return value;
        }
    }
    value = parseNumber<T>(text.substr(position));
    position = findDelim(text, position);
    return value;
}

template <class T>
T getNextNumber(std::string_view text, std::size_t& position)
{
    T const value = takeToken<T>(text, position);
    if (position != kEnd)
    {
        position = findNextTokenStart(text, position);
    }
    return value;
}

template <class T>
std::vector<T> getNumbers(std::string_view text)
{
    std::vector<T> numbers;
    for (std::size_t position = findNextTokenStart(text, 0); position != kEnd;)
    {
        numbers.push_back(getNextNumber<T>(text, position));
    }
    return numbers;
}

template float parseNumber<float>(std::string_view);
template double parseNumber<double>(std::string_view);
template unsigned int parseNumber<unsigned int>(std::string_view);
template float getNextNumber<float>(std::string_view, std::size_t&);
template double getNextNumber<double>(std::string_view, std::size_t&);
template unsigned int getNextNumber<unsigned int>(std::string_view, std::size_t&);
template std::vector<float> getNumbers<float>(std::string_view);
template std::vector<double> getNumbers<double>(std::string_view);
template std::vector<unsigned int> getNumbers<unsigned int>(std::string_view);

} // namespace Color::Xml::Reader
