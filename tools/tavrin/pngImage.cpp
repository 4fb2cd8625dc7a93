// PNG files through libpng.
// The library reports an error by a long jump, which may pass over no C++ object that has to be destroyed. So each conversation
// with it is a function of plain values and pointers only, and objects live in the functions around it.
#include "failure.h"
#include "imageFormats.h"

#include <png.h>

#include <bit>
#include <csetjmp>
#include <cstring>
#include <vector>

namespace Program
{

namespace
{

using namespace Tavrin;

// Deflate makes at most 1032 bytes of one, so a file can't hold a larger picture than that.
constexpr std::uint64_t kDeflateRatio = 1032;

// Output is handed over in pieces of this size.
constexpr std::size_t kOutputPiece = 1 << 18;

// What the library's callbacks need to know.
struct Conversation
{
    InputFile const* input = nullptr;
    OutputFile* output = nullptr;
    std::uint64_t position = 0;
    char error[256] = "";
};

// What a header tells, after the expansion to RGB or RGBA.
struct Facts
{
    png_uint_32 width = 0;
    png_uint_32 height = 0;
    png_byte bits = 0;
    png_byte channels = 0;
    int passes = 1;
};

void onError(png_structp png, png_const_charp text)
{
    Conversation* conversation = static_cast<Conversation*>(png_get_error_ptr(png));
    std::strncpy(conversation->error, text, sizeof(conversation->error) - 1);
    png_longjmp(png, 1);
}

void onWarning(png_structp, png_const_charp) {}

void onRead(png_structp png, png_bytep buffer, std::size_t count)
{
    Conversation* conversation = static_cast<Conversation*>(png_get_io_ptr(png));
    if (conversation->input->readSome(conversation->position, buffer, count) != count)
        png_error(png, "the file ends too early");
    conversation->position += count;
}

void onWrite(png_structp png, png_bytep buffer, std::size_t count)
{
    Conversation* conversation = static_cast<Conversation*>(png_get_io_ptr(png));
    if (!conversation->output->write(conversation->position, buffer, count))
        png_error(png, "the file can't be written");
    conversation->position += count;
}

void onFlush(png_structp) {}

// The library's objects for reading or writing one picture.
class Codec
{
public:
    enum Direction
    {
        READ,
        WRITE
    };

    Codec(Direction direction, Conversation& conversation) : m_direction(direction)
    {
        const auto create = direction == READ ? png_create_read_struct : png_create_write_struct;
        m_png = create(PNG_LIBPNG_VER_STRING, &conversation, onError, onWarning);
        m_info = m_png ? png_create_info_struct(m_png) : nullptr;
        if (!m_info)
        {
            _destroy();
            throw std::bad_alloc();
        }
        if (direction == READ)
            png_set_read_fn(m_png, &conversation, onRead);
        else
            png_set_write_fn(m_png, &conversation, onWrite, onFlush);
    }
    Codec(Codec const&) = delete;
    Codec& operator=(Codec const&) = delete;
    ~Codec() { _destroy(); }

    png_structp png() const { return m_png; }
    png_infop info() const { return m_info; }

private:
    void _destroy()
    {
        if (m_direction == READ)
            png_destroy_read_struct(&m_png, m_info ? &m_info : nullptr, nullptr);
        else
            png_destroy_write_struct(&m_png, m_info ? &m_info : nullptr);
    }

    Direction m_direction;
    png_structp m_png = nullptr;
    png_infop m_info = nullptr;
};

// Samples of 16 bits are big-endian in a file.
void useNativeOrder(png_structp png)
{
    if (std::endian::native == std::endian::little)
        png_set_swap(png);
}

bool readHeader(png_structp png, png_infop info, Facts* facts)
{
    if (setjmp(png_jmpbuf(png)))
        return false;
    png_set_user_limits(png, kMaxSide, kMaxSide);
    png_read_info(png, info);
    png_set_expand(png);
    png_set_gray_to_rgb(png);
    if (png_get_bit_depth(png, info) == 16)
        useNativeOrder(png);
    facts->passes = png_set_interlace_handling(png);
    png_read_update_info(png, info);
    facts->width = png_get_image_width(png, info);
    facts->height = png_get_image_height(png, info);
    facts->bits = png_get_bit_depth(png, info);
    facts->channels = png_get_channels(png, info);
    return true;
}

// One row; the file's end is checked after the last one.
bool readRow(png_structp png, png_bytep row, bool last)
{
    if (setjmp(png_jmpbuf(png)))
        return false;
    png_read_row(png, row, nullptr);
    if (last)
        png_read_end(png, nullptr);
    return true;
}

bool writeHeader(png_structp png, png_infop info, Facts const* facts)
{
    if (setjmp(png_jmpbuf(png)))
        return false;
    png_set_user_limits(png, kMaxSide, kMaxSide);
    png_set_compression_buffer_size(png, kOutputPiece);
    // A third of the time of the library's defaults, and no larger a file of 16 bits.
    png_set_compression_level(png, 3);
    png_set_filter(png, PNG_FILTER_TYPE_BASE, PNG_FILTER_SUB);
    png_set_IHDR(png, info, facts->width, facts->height, facts->bits,
                 facts->channels == 4 ? PNG_COLOR_TYPE_RGB_ALPHA : PNG_COLOR_TYPE_RGB, PNG_INTERLACE_NONE,
                 PNG_COMPRESSION_TYPE_DEFAULT, PNG_FILTER_TYPE_DEFAULT);
    png_write_info(png, info);
    if (facts->bits == 16)
        useNativeOrder(png);
    return true;
}

bool writeRow(png_structp png, png_const_bytep row, bool last)
{
    if (setjmp(png_jmpbuf(png)))
        return false;
    png_write_row(png, row);
    if (last)
        png_write_end(png, nullptr);
    return true;
}

PixelFormat formatOf(Facts const& facts)
{
    if (facts.bits == 16)
        return facts.channels == 4 ? PF_RGBA_16i : PF_RGB_16i;
    return facts.channels == 4 ? PF_RGBA_8i : PF_RGB_8i;
}

[[noreturn]] void failReading(InputFile const& file, Conversation const& conversation)
{
    fail("'{}' is damaged or cut off: {}", file.path(), conversation.error);
}

void refuseImpossibleSize(InputFile const& file, Facts const& facts)
{
    checkSize(file.path(), facts.width, facts.height);
    // One bit a pixel is the least that a file stores.
    const std::uint64_t least = std::uint64_t(facts.width) * facts.height / 8;
    if (least / kDeflateRatio > file.size())
        fail("'{}' is damaged or cut off: {} bytes can't hold {} x {} pixels", file.path(), file.size(), facts.width, facts.height);
}

} // namespace

Image readPng(InputFile const& file, RowReport const& report)
{
    Conversation conversation;
    conversation.input = &file;
    Codec codec(Codec::READ, conversation);
    Facts facts;
    if (!readHeader(codec.png(), codec.info(), &facts))
        failReading(file, conversation);
    refuseImpossibleSize(file, facts);
    Image image = makeImage(file.path(), formatOf(facts), facts.width, facts.height);
    for (int pass = 0; pass < facts.passes; ++pass)
    {
        for (unsigned int y = 0; y < image.height; ++y)
        {
            const bool last = pass + 1 == facts.passes && y + 1 == image.height;
            if (!readRow(codec.png(), reinterpret_cast<png_bytep>(image.row(y)), last))
                failReading(file, conversation);
            if (pass + 1 == facts.passes)
                report(y + 1);
        }
    }
    return image;
}

void writePng(Image const& image, OutputFile& file, RowReport const& report)
{
    Conversation conversation;
    conversation.output = &file;
    Codec codec(Codec::WRITE, conversation);
    Facts facts;
    facts.width = image.width;
    facts.height = image.height;
    facts.bits = depthOf(image.format) == BIT_DEPTH_16i ? 16 : 8;
    facts.channels = hasAlpha(image.format) ? 4 : 3;
    if (!writeHeader(codec.png(), codec.info(), &facts))
        throw Failure(conversation.error);
    for (unsigned int y = 0; y < image.height; ++y)
    {
        if (!writeRow(codec.png(), reinterpret_cast<png_const_bytep>(image.row(y)), y + 1 == image.height))
            throw Failure(conversation.error);
        report(y + 1);
    }
}

} // namespace Program
