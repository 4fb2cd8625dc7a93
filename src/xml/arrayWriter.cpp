// Writes <Array>, the numbers of a table or matrix. Tables have millions of them, so numbers are turned into text in one buffer,
// which goes to the stream when it is full.
#include "xml/arrayWriter.h"

#include "utils/errorMessage.h"
#include "xml/ctfVocabulary.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstring>
#include <ostream>
#include <string>

namespace Color::Xml::Writer
{

namespace
{

using Tavrin::BitDepth;

// How values at a depth are printed: right-justified, with so many significant digits, in the shorter one of fixed and scientific
// notation, as a stream or printf's %g does.
struct ValueForm
{
    BitDepth depth;
    unsigned int width;
    int precision;
};

constexpr int kDefaultPrecision = 6;

constexpr ValueForm kValueForms[] = {
    {Tavrin::BIT_DEPTH_8i, 3, kDefaultPrecision},
    {Tavrin::BIT_DEPTH_10i, 4, kDefaultPrecision},
    {Tavrin::BIT_DEPTH_12i, 4, kDefaultPrecision},
    {Tavrin::BIT_DEPTH_16i, 5, kDefaultPrecision},
    {Tavrin::BIT_DEPTH_16f, 11, 5},
    {Tavrin::BIT_DEPTH_32f, 15, 8},
};

ValueForm const& formOf(BitDepth depth)
{
    auto const* const form =
        std::find_if(std::begin(kValueForms), std::end(kValueForms), [=](ValueForm const& known) { return known.depth == depth; });
    if (form == std::end(kValueForms))
    {
        throw failure(ErrorIds::kWriterDepthUnknown, Module::kXmlWriter);
    }
    return *form;
}

class ValuePrinter
{
public:
    ValuePrinter(std::ostream& stream, ValueForm const& form)
        : m_stream(stream), m_form(form), m_isFloat(Tavrin::isFloatDepth(form.depth))
    {
    }

    void print(float value, char separator)
    {
        if (m_buffer.end() - m_end < kLongestValue)
        {
            flush();
        }
        char number[kLongestValue];
        char const* const numberEnd = _print(number, value);
        auto const length = static_cast<unsigned int>(numberEnd - number);
        m_end = std::fill_n(m_end, m_form.width - std::min(m_form.width, length), ' ');
        m_end = std::copy(static_cast<char const*>(number), numberEnd, m_end);
        *m_end++ = separator;
    }

    void flush()
    {
        m_stream.write(m_buffer.data(), m_end - m_buffer.begin());
        m_end = m_buffer.begin();
    }

private:
    // Sign, digits, point, exponent and separator need 16 characters, padding no more.
    static constexpr std::ptrdiff_t kLongestValue = 32;

    char* _print(char* text, float value) const
    {
        // A NaN has no sign among floats.
        float const printed = m_isFloat && std::isnan(value) ? std::abs(value) : value;
        return std::to_chars(text, text + kLongestValue, printed, std::chars_format::general, m_form.precision).ptr;
    }

    std::ostream& m_stream;
    ValueForm const& m_form;
    bool m_isFloat;
    std::array<char, 65536> m_buffer;
    char* m_end = m_buffer.data();
};

std::string textOf(std::initializer_list<unsigned int> dimensions)
{
    std::string text;
    for (unsigned int const dimension : dimensions)
    {
        if (!text.empty())
        {
            text += ' ';
        }
        text += std::to_string(dimension);
    }
    return text;
}

} // namespace

void writeValues(Formatter& formatter, float const* first, float const* last, unsigned int valuesPerLine, BitDepth depth,
                 unsigned int stride)
{
    ValuePrinter printer(formatter.getStream(), formOf(depth));
    auto const count = static_cast<std::size_t>(last - first);
    for (std::size_t i = 0; i < count; i += stride)
    {
        bool const endsLine = i % valuesPerLine == valuesPerLine - 1;
        printer.print(first[i], endsLine ? '\n' : ' ');
    }
    printer.flush();
}

void writeArray(Formatter& formatter, std::initializer_list<unsigned int> dimensions, std::vector<float> const& values,
                unsigned int valuesPerLine, BitDepth depth, unsigned int stride)
{
    formatter.writeStartTag(TAG_ARRAY, {{ATTR_DIMENSION, textOf(dimensions)}});
    writeValues(formatter, values.data(), values.data() + values.size(), valuesPerLine, depth, stride);
    formatter.writeEndTag(TAG_ARRAY);
}

} // namespace Color::Xml::Writer
