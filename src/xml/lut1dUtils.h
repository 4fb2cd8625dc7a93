// The plain-text format of one-dimensional tables (.lut).
#ifndef TAVRIN_XML_LUT_1D_UTILS_H
#define TAVRIN_XML_LUT_1D_UTILS_H

#include <tavrin/vocabulary.h>

#include <cstdint>
#include <string>
#include <vector>

namespace Color::Lut1dUtils
{

// Bits of a channel, negative for floats.
enum IM_LutBitsPerChannel : int
{
    IM_LUT_BITS_UNKNOWN = 0,
    IM_LUT_BITS_8 = 8,
    IM_LUT_BITS_10 = 10,
    IM_LUT_BITS_12 = 12,
    IM_LUT_BITS_16 = 16,
    IM_LUT_BITS_16F = -16,
    IM_LUT_BITS_32F = -32
};

// BIT_DEPTH_UNKNOWN for an unknown number of bits.
Tavrin::BitDepth getTavrinLut1DBitDepth(IM_LutBitsPerChannel bits);

struct IMLutStruct
{
    using Table = std::vector<std::uint16_t>;

    // The table of red, green or blue; one channel serves all three.
    Table const& getTable(std::size_t color) const { return tables[numChannels == 1 ? 0 : color]; }

    std::size_t numChannels = 0; // 1, 3 or 4
    std::size_t length = 0;      // Rows.
    IM_LutBitsPerChannel inputDepth = IM_LUT_BITS_UNKNOWN;
    IM_LutBitsPerChannel outputDepth = IM_LUT_BITS_UNKNOWN;
    std::vector<Table> tables; // One of that length for each channel. With an output of 16-bit floats the numbers are bit patterns.
};

enum IMLutError : int
{
    IM_LUT_OK = 0,
    IM_LUT_EOF = 1,
    IM_LUT_OPEN = 2,
    IM_LUT_MEMORY = 3,
    IM_LUT_SYNTAX = 4
};

// Reads a file; the table is complete when the result is IM_LUT_OK. The line is the number of the last one read.
IMLutError IMLutGet(std::string const& path, IMLutStruct& lut, int& line);
// For people; empty for IM_LUT_OK.
char const* IMLutErrorStr(int code);
// What stands behind the first "to" in a file's name, whatever its folder: log10to16.lut has 16 bits.
IM_LutBitsPerChannel IMLutGetBitDepthFromFileName(std::string const& path);

} // namespace Color::Lut1dUtils

#endif
