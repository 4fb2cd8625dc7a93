// DPX files, after SMPTE 268M: a header of fixed fields, then the rows of one image element.
// A 10-bit word of form A, read big-endian, is a pixel of PF_RGB_10iP; the others need their bytes swapped or bits shifted.
#include "failure.h"
#include "imageFormats.h"

#include <algorithm>
#include <bit>
#include <cstring>
#include <vector>

namespace Program
{

namespace
{

using namespace Tavrin;

// Positions of the header's fields, in bytes.
enum Field : std::size_t
{
    kMagic = 0,
    kDataOffset = 4,
    kVersion = 8,
    kFileSize = 16,
    kDittoKey = 20,
    kGenericSize = 24,
    kIndustrySize = 28,
    kCreator = 160,
    kEncryptionKey = 660,
    kOrientation = 768,
    kElementCount = 770,
    kWidth = 772,
    kHeight = 776,
    kElement = 780, // the first of eight
    kElementSign = kElement + 0,
    kElementDescriptor = kElement + 20,
    kElementBits = kElement + 23,
    kElementPacking = kElement + 24,
    kElementEncoding = kElement + 26,
    kElementOffset = kElement + 28,
    kElementRowPadding = kElement + 32,
    kElementImagePadding = kElement + 36,
    kElementEnd = kElement + 72,
    kImageInformationEnd = 1408,
    kPixelAspectRatio = 1628, // two numbers
    kHeaderEnd = 2048
};

// The numbers that are left open, which a field of ones says: reference levels of the element, then offsets and borders, then
// what a film and a television header tell.
struct NumberRange
{
    std::size_t begin;
    std::size_t end;
};
constexpr NumberRange kOpenNumbers[] = {
    {kElementSign + 4, kElementDescriptor}, {1408, 1432}, {1620, 1628}, {1712, 1732}, {1920, 1972}};

constexpr std::uint32_t kUndefined = 0xffffffff;
constexpr std::size_t kGenericHeaderSize = 1664;

// What an element's rows hold. The shift takes a sample of form A from the high bits of its 16-bit word to the low ones.
struct Layout
{
    unsigned int descriptor;
    unsigned int bits;
    unsigned int packing;
    PixelFormat format;
    unsigned int wordBytes;
    unsigned int shift;
};

constexpr unsigned int kRgb = 50, kRgba = 51, kAbgr = 52;
constexpr unsigned int kFilledA = 1;
// Words that are full anyway are stated as either.
constexpr unsigned int kAnyPacking = 0xffff;

// In the order in which a writer looks for its format.
constexpr Layout kLayouts[] = {
    {kRgb, 10, kFilledA, PF_RGB_10iP, 4, 0},     {kRgb, 12, kFilledA, PF_RGB_12i, 2, 4},
    {kRgba, 12, kFilledA, PF_RGBA_12i, 2, 4},    {kAbgr, 12, kFilledA, PF_ABGR_12i, 2, 4},
    {kRgb, 16, kAnyPacking, PF_RGB_16i, 2, 0},   {kRgba, 16, kAnyPacking, PF_RGBA_16i, 2, 0},
    {kAbgr, 16, kAnyPacking, PF_ABGR_16i, 2, 0},
};

// Numbers of a header in the file's own byte order.
class Header
{
public:
    explicit Header(std::byte const* bytes) : m_bytes(bytes), m_bigEndian(static_cast<char>(bytes[0]) == 'S') {}

    bool isBigEndian() const { return m_bigEndian; }
    unsigned int get8(std::size_t field) const { return std::to_integer<unsigned int>(m_bytes[field]); }
    unsigned int get16(std::size_t field) const { return _number(field, 2); }
    std::uint32_t get32(std::size_t field) const { return _number(field, 4); }

private:
    std::uint32_t _number(std::size_t field, unsigned int count) const
    {
        std::uint32_t number = 0;
        for (unsigned int i = 0; i < count; ++i)
            number = number << 8 | get8(field + (m_bigEndian ? i : count - 1 - i));
        return number;
    }

    std::byte const* m_bytes;
    bool m_bigEndian;
};

Layout const& layoutOf(InputFile const& file, Header const& header)
{
    const unsigned int descriptor = header.get8(kElementDescriptor);
    const unsigned int bits = header.get8(kElementBits);
    const unsigned int packing = header.get16(kElementPacking);
    for (Layout const& layout : kLayouts)
    {
        if (layout.descriptor == descriptor && layout.bits == bits && (layout.packing == packing || layout.packing == kAnyPacking))
            return layout;
    }
    fail("'{}' holds DPX pixels that are not read (descriptor {}, {} bits, packing {}): RGB of 10 bits and RGB or RGBA of 12 bits, "
         "filled in form A, or of 16 bits are",
         file.path(), descriptor, bits, packing);
}

void refuseUnusual(InputFile const& file, Header const& header)
{
    if (header.get16(kElementCount) != 1)
        fail("'{}' holds {} DPX image elements: only one is read", file.path(), header.get16(kElementCount));
    if (header.get16(kElementEncoding) != 0)
        fail("'{}' holds run-length encoded DPX pixels, which are not read", file.path());
    if (header.get32(kElementSign) == 1)
        fail("'{}' holds signed DPX pixels, which are not read", file.path());
    const unsigned int orientation = header.get16(kOrientation);
    if (orientation != 0 && orientation != 0xffff)
        fail("'{}' holds a DPX picture that is turned or mirrored (orientation {}), which is not read", file.path(), orientation);
}

// Where the rows are in the file.
struct Rows
{
    std::uint64_t offset;
    std::uint64_t step; // bytes from one to the next
};

// Throws when the file can't hold all the rows that the header tells.
Rows locateRows(InputFile const& file, Header const& header, Layout const& layout)
{
    const std::uint64_t width = header.get32(kWidth);
    const std::uint64_t height = header.get32(kHeight);
    std::uint64_t offset = header.get32(kElementOffset);
    if (offset == kUndefined || offset == 0)
        offset = header.get32(kDataOffset);
    if (offset < kElementEnd || offset > file.size())
        fail("'{}' is damaged: its DPX pixels would begin at byte {} of {}", file.path(), offset, file.size());

    const std::uint64_t rowBytes = width * getPixelSizeInByte(layout.format);
    const std::uint32_t padding = header.get32(kElementRowPadding);
    const std::uint64_t space = file.size() - offset;
    if (padding != kUndefined && padding != 0)
    {
        if (height * (rowBytes + padding) - padding <= space)
            return {offset, rowBytes + padding};
    }
    else
    {
        // Rows should begin on 32-bit words, but some writers do without.
        const std::uint64_t aligned = (rowBytes + 3) / 4 * 4;
        if (height * aligned <= space)
            return {offset, aligned};
    }
    if (height * rowBytes > space)
        fail("'{}' is cut off: its DPX header tells {} x {} pixels, and {} of {} bytes are there", file.path(), width, height,
             space, height * rowBytes);
    return {offset, rowBytes};
}

void swapWords(std::byte* row, std::size_t count, unsigned int wordBytes)
{
    for (std::size_t i = 0; i < count; i += wordBytes)
        std::reverse(row + i, row + i + wordBytes);
}

// Packed pixels are big-endian in memory, whole channels in the processor's order.
bool needsSwap(Layout const& layout, bool fileIsBigEndian)
{
    const bool memoryIsBigEndian = layout.wordBytes == 4 || std::endian::native == std::endian::big;
    return memoryIsBigEndian != fileIsBigEndian;
}

template <class Shift>
void shiftWords(std::byte* row, std::size_t count, Shift shift)
{
    for (std::size_t i = 0; i < count; i += sizeof(std::uint16_t))
    {
        std::uint16_t word;
        std::memcpy(&word, row + i, sizeof(word));
        word = static_cast<std::uint16_t>(shift(word));
        std::memcpy(row + i, &word, sizeof(word));
    }
}

// A header of zeros (which are empty texts), open numbers and the few fields that matter.
std::vector<std::byte> buildHeader(Image const& image, Layout const& layout, std::size_t rowPadding)
{
    std::vector<std::byte> header(kHeaderEnd);
    const auto put = [&](std::size_t field, unsigned int count, std::uint32_t number)
    {
        for (unsigned int i = 0; i < count; ++i)
            header[field + i] = static_cast<std::byte>(number >> (8 * (count - 1 - i)));
    };
    const auto text = [&](std::size_t field, std::string_view words)
    { std::memcpy(header.data() + field, words.data(), words.size()); };

    const std::uint64_t fileSize = kHeaderEnd + image.height * (image.rowBytes() + rowPadding);
    text(kMagic, "SDPX");
    put(kDataOffset, 4, kHeaderEnd);
    text(kVersion, "V2.0");
    put(kFileSize, 4, fileSize < kUndefined ? static_cast<std::uint32_t>(fileSize) : kUndefined);
    put(kDittoKey, 4, 1); // a new picture
    put(kGenericSize, 4, kGenericHeaderSize);
    put(kIndustrySize, 4, kHeaderEnd - kGenericHeaderSize);
    text(kCreator, "tavrin");
    put(kEncryptionKey, 4, kUndefined);

    put(kOrientation, 2, 0);
    put(kElementCount, 2, 1);
    put(kWidth, 4, image.width);
    put(kHeight, 4, image.height);
    put(kElementDescriptor, 1, layout.descriptor);
    put(kElementBits, 1, layout.bits);
    put(kElementPacking, 2, layout.packing == kAnyPacking ? 0 : layout.packing);
    put(kElementOffset, 4, kHeaderEnd);
    put(kElementRowPadding, 4, static_cast<std::uint32_t>(rowPadding));
    put(kElementImagePadding, 4, 0);
    put(kPixelAspectRatio, 4, 1);
    put(kPixelAspectRatio + 4, 4, 1);
    for (NumberRange range : kOpenNumbers)
        std::fill(header.begin() + range.begin, header.begin() + range.end, std::byte(0xff));
    return header;
}

} // namespace

Image readDpx(InputFile const& file, RowReport const& report)
{
    std::byte bytes[kImageInformationEnd];
    file.read(0, bytes, sizeof(bytes));
    const Header header(bytes);
    refuseUnusual(file, header);
    Layout const& layout = layoutOf(file, header);
    checkSize(file.path(), header.get32(kWidth), header.get32(kHeight));
    const Rows rows = locateRows(file, header, layout);
    Image image = makeImage(file.path(), layout.format, header.get32(kWidth), header.get32(kHeight));
    const bool swap = needsSwap(layout, header.isBigEndian());
    for (unsigned int y = 0; y < image.height; ++y)
    {
        std::byte* row = image.row(y);
        file.read(rows.offset + y * rows.step, row, image.rowBytes());
        if (swap)
            swapWords(row, image.rowBytes(), layout.wordBytes);
        if (layout.shift != 0)
            shiftWords(row, image.rowBytes(), [&](unsigned int word) { return word >> layout.shift; });
        report(y + 1);
    }
    return image;
}

void writeDpx(Image const& image, OutputFile& file, RowReport const& report)
{
    const Layout* layout =
        std::find_if(std::begin(kLayouts), std::end(kLayouts), [&](Layout const& l) { return l.format == image.format; });
    if (layout == std::end(kLayouts))
        fail("DPX files hold no pixels of format {}", formatName(image.format));
    const std::size_t rowPadding = (4 - image.rowBytes() % 4) % 4;
    const std::vector<std::byte> header = buildHeader(image, *layout, rowPadding);
    file.write(0, header.data(), header.size());

    std::vector<std::byte> row(image.rowBytes() + rowPadding);
    for (unsigned int y = 0; y < image.height; ++y)
    {
        std::memcpy(row.data(), image.row(y), image.rowBytes());
        if (layout->shift != 0)
            shiftWords(row.data(), image.rowBytes(), [&](unsigned int word) { return word << layout->shift; });
        if (needsSwap(*layout, true))
            swapWords(row.data(), image.rowBytes(), layout->wordBytes);
        if (!file.write(kHeaderEnd + std::uint64_t(y) * row.size(), row.data(), row.size()))
            break;
        report(y + 1);
    }
    file.check();
}

} // namespace Program
