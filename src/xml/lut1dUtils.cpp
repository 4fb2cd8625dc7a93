// The plain-text format of one-dimensional tables (.lut).
//
//     # a comment
//     LUT: channels length [depth]
//     one value a line, channel after channel
//
// A file that begins with a value instead is one channel of 256 rows.
#include "xml/lut1dUtils.h"

#include "transform/lut1DOp.h"
#include "utils/utils.h"
#include "xml/textTableLines.h"

#include <algorithm>
#include <cctype>
#include <cstring>
#include <limits>

namespace Color::Lut1dUtils
{

namespace
{

constexpr std::size_t kLengthWithoutHeader = 256;

bool isDigit(char c)
{
    return c >= '0' && c <= '9';
}

// A depth is told by the number of its codes. 65536 with the letter f are the bit patterns of 16-bit floats.
IM_LutBitsPerChannel depthOf(int codes, char letter)
{
    switch (codes)
    {
    case 256:
        return IM_LUT_BITS_8;
    case 1024:
        return IM_LUT_BITS_10;
    case 4096:
        return IM_LUT_BITS_12;
    case 65536:
        return letter == 'f' || letter == 'F' ? IM_LUT_BITS_16F : IM_LUT_BITS_16;
    default:
        return IM_LUT_BITS_UNKNOWN;
    }
}

// A number of codes and the letter behind it, 0 when there is none. The text then begins behind them. False without a number.
bool scanCodes(std::string_view& text, int& codes, char& letter)
{
    if (!scanInteger(text, codes))
    {
        return false;
    }
    letter = !text.empty() && text.front() != ' ' ? text.front() : '\0';
    text.remove_prefix(letter != '\0' ? 1 : 0);
    return true;
}

class LutFile
{
public:
    LutFile(std::string const& path, IMLutStruct& lut) : m_path(path), m_lut(lut), m_lines(path, TextTableLines::LineEnd::LineFeed)
    {
    }

    IMLutError read();
    int getLineNumber() const { return m_lines.getLineNumber(); }

private:
    IMLutError _readStart();
    IMLutError _readHeader(std::string_view line);
    IMLutError _readOutputDepth(std::string_view text);
    IMLutError _readValues();
    IMLutError _readValue(IMLutStruct::Table& table);
    IMLutError _readEnd();

    std::string const& m_path;
    IMLutStruct& m_lut;
    TextTableLines m_lines;
    std::string m_line;
    bool m_isLineRead = false; // The line is the first value of a file without a header.
};

IMLutError LutFile::read()
{
    if (!m_lines.isOpen())
    {
        return IM_LUT_OPEN;
    }
    for (auto const step : {&LutFile::_readStart, &LutFile::_readValues, &LutFile::_readEnd})
    {
        if (IMLutError const error = (this->*step)(); error != IM_LUT_OK)
        {
            return error;
        }
    }
    return IM_LUT_OK;
}

IMLutError LutFile::_readStart()
{
    if (!m_lines.readContent(m_line))
    {
        return IM_LUT_SYNTAX;
    }
    m_isLineRead = isDigit(m_line.front());
    if (!m_isLineRead)
    {
        return _readHeader(m_line);
    }
    m_lut.numChannels = 1;
    m_lut.length = kLengthWithoutHeader;
    m_lut.inputDepth = depthOf(kLengthWithoutHeader, '\0');
    m_lut.outputDepth = IMLutGetBitDepthFromFileName(m_path);
    if (m_lut.outputDepth == IM_LUT_BITS_UNKNOWN)
    {
        m_lut.outputDepth = IM_LUT_BITS_8;
    }
    return IM_LUT_OK;
}

IMLutError LutFile::_readHeader(std::string_view line)
{
    static constexpr char kStart[] = "LUT: ";
    constexpr std::size_t kStartLength = sizeof kStart - 1;
    int channels = 0;
    int length = 0;
    char letter = '\0';
    if (Foundation::Utils::strncasecmp(m_line.c_str(), kStart, kStartLength) != 0)
    {
        return IM_LUT_SYNTAX;
    }
    line.remove_prefix(kStartLength);
    if (!scanInteger(line, channels) || !scanCodes(line, length, letter))
    {
        return IM_LUT_SYNTAX;
    }
    if ((channels != 1 && channels != 3 && channels != 4) || length < 1)
    {
        return IM_LUT_SYNTAX;
    }
    if (static_cast<unsigned int>(length) > Lut1DOp::kMaxDimension)
    {
        return IM_LUT_MEMORY;
    }
    m_lut.numChannels = static_cast<std::size_t>(channels);
    m_lut.length = static_cast<std::size_t>(length);
    m_lut.inputDepth = depthOf(length, letter);
    return _readOutputDepth(line);
}

IMLutError LutFile::_readOutputDepth(std::string_view text)
{
    if (text.find_first_not_of(' ') == std::string_view::npos)
    {
        m_lut.outputDepth = IMLutGetBitDepthFromFileName(m_path);
        return IM_LUT_OK;
    }
    int codes = 0;
    char letter = '\0';
    if (scanCodes(text, codes, letter))
    {
        m_lut.outputDepth = depthOf(codes, letter);
    }
    return m_lut.outputDepth == IM_LUT_BITS_UNKNOWN ? IM_LUT_SYNTAX : IM_LUT_OK;
}

IMLutError LutFile::_readValues()
{
    m_lut.tables.assign(m_lut.numChannels, {});
    for (IMLutStruct::Table& table : m_lut.tables)
    {
        while (table.size() < m_lut.length)
        {
            if (IMLutError const error = _readValue(table); error != IM_LUT_OK)
            {
                return error;
            }
        }
    }
    return IM_LUT_OK;
}

IMLutError LutFile::_readValue(IMLutStruct::Table& table)
{
    if (!m_isLineRead && !m_lines.readFilled(m_line))
    {
        return IM_LUT_EOF;
    }
    m_isLineRead = false;
    std::string_view text = m_line;
    int value = 0;
    if (!isDigit(text.front()) || !scanInteger(text, value) || value > std::numeric_limits<std::uint16_t>::max())
    {
        return IM_LUT_SYNTAX;
    }
    table.push_back(static_cast<std::uint16_t>(value));
    return IM_LUT_OK;
}

// Nothing but comments may follow.
IMLutError LutFile::_readEnd()
{
    return m_lines.readContent(m_line) ? IM_LUT_SYNTAX : IM_LUT_OK;
}

} // namespace

Tavrin::BitDepth getTavrinLut1DBitDepth(IM_LutBitsPerChannel bits)
{
    switch (bits)
    {
    case IM_LUT_BITS_8:
        return Tavrin::BIT_DEPTH_8i;
    case IM_LUT_BITS_10:
        return Tavrin::BIT_DEPTH_10i;
    case IM_LUT_BITS_12:
        return Tavrin::BIT_DEPTH_12i;
    case IM_LUT_BITS_16:
        return Tavrin::BIT_DEPTH_16i;
    case IM_LUT_BITS_16F:
        return Tavrin::BIT_DEPTH_16f;
    case IM_LUT_BITS_32F:
        return Tavrin::BIT_DEPTH_32f;
    default:
        return Tavrin::BIT_DEPTH_UNKNOWN;
    }
}

IMLutError IMLutGet(std::string const& path, IMLutStruct& lut, int& line)
{
    LutFile file(path, lut);
    IMLutError const error = file.read();
    line = file.getLineNumber();
    return error;
}

char const* IMLutErrorStr(int code)
{
    switch (code)
    {
    case IM_LUT_OK:
        return "";
    case IM_LUT_EOF:
        return "Premature EOF reading LUT file";
    case IM_LUT_OPEN:
        return "Cannot open LUT file";
    case IM_LUT_MEMORY:
        return "Cannot allocate memory for LUT";
    case IM_LUT_SYNTAX:
        return "Syntax error reading LUT file";
    default:
        return "Unknown error for LUT";
    }
}

IM_LutBitsPerChannel IMLutGetBitDepthFromFileName(std::string const& path)
{
    // In the order in which they are looked for: a float before the integer that its name begins with.
    struct
    {
        char const* text;
        IM_LutBitsPerChannel bits;
    } static constexpr kDepths[] = {
        {"8", IM_LUT_BITS_8},     {"10", IM_LUT_BITS_10}, {"12", IM_LUT_BITS_12},
        {"16f", IM_LUT_BITS_16F}, {"16", IM_LUT_BITS_16}, {"32f", IM_LUT_BITS_32F},
    };
    std::string name = path.substr(path.find_last_of('/') + 1);
    std::transform(name.begin(), name.end(), name.begin(), [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    std::size_t const to = name.find("to");
    if (to == std::string::npos)
    {
        return IM_LUT_BITS_UNKNOWN;
    }
    auto const* const depth =
        std::find_if(std::begin(kDepths), std::end(kDepths),
                     [&](auto const& known) { return name.compare(to + 2, std::strlen(known.text), known.text) == 0; });
    return depth == std::end(kDepths) ? IM_LUT_BITS_UNKNOWN : depth->bits;
}

} // namespace Color::Lut1dUtils
