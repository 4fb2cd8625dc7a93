// OpenEXR files through the OpenEXR library.
#include "failure.h"
#include "imageFormats.h"
#include "text.h"

#include <ImfChannelList.h>
#include <ImfFrameBuffer.h>
#include <ImfHeader.h>
#include <ImfIO.h>
#include <ImfInputFile.h>
#include <ImfOutputFile.h>

#include <algorithm>
#include <cstring>
#include <vector>

namespace Program
{

namespace
{

using namespace Tavrin;

// Rows that are decoded or encoded at once: enough blocks of up to 256 lines to keep all threads busy.
constexpr int kRowsAtOnce = 512;

class InputStream : public Imf::IStream
{
public:
    explicit InputStream(InputFile const& file) : Imf::IStream(file.path().c_str()), m_file(file) {}

    bool read(char c[], int n) override
    {
        m_file.read(m_position, c, static_cast<std::size_t>(n));
        m_position += static_cast<unsigned int>(n);
        return m_position < m_file.size();
    }
    std::uint64_t tellg() override { return m_position; }
    void seekg(std::uint64_t position) override { m_position = position; }

private:
    InputFile const& m_file;
    std::uint64_t m_position = 0;
};

// Failures are remembered by the file: the library's destructor, which writes the last bytes, swallows exceptions.
class OutputStream : public Imf::OStream
{
public:
    explicit OutputStream(OutputFile& file) : Imf::OStream(file.path().c_str()), m_file(file) {}

    void write(const char c[], int n) override
    {
        m_file.write(m_position, c, static_cast<std::size_t>(n));
        m_file.check();
        m_position += static_cast<unsigned int>(n);
    }
    std::uint64_t tellp() override { return m_position; }
    void seekp(std::uint64_t position) override { m_position = position; }

private:
    OutputFile& m_file;
    std::uint64_t m_position = 0;
};

// The channels in the order in which a pixel has them.
struct Channels
{
    std::vector<char const*> names;
    PixelFormat format;
    bool grey; // the one channel is read into the first element
};

std::string channelNames(Imf::ChannelList const& list)
{
    std::vector<std::string> names;
    for (Imf::ChannelList::ConstIterator i = list.begin(); i != list.end(); ++i)
        names.emplace_back(i.name());
    return commaSeparated(names);
}

bool isSampledFully(Imf::ChannelList const& list, char const* name)
{
    const Imf::Channel* channel = list.findChannel(name);
    return channel != nullptr && channel->xSampling == 1 && channel->ySampling == 1 && channel->type != Imf::UINT;
}

Channels chooseChannels(std::string const& path, Imf::ChannelList const& list)
{
    Channels channels;
    if (isSampledFully(list, "R") && isSampledFully(list, "G") && isSampledFully(list, "B"))
        channels = {{"R", "G", "B"}, PF_UNKNOWN, false};
    else if (isSampledFully(list, "Y") && !list.findChannel("RY") && !list.findChannel("BY"))
        channels = {{"Y"}, PF_UNKNOWN, true};
    else
        fail(
            "'{}' has the channels {}: R, G and B (or Y alone, without RY and BY), of halfs or floats at full resolution, are read",
            path, channelNames(list));
    const bool alpha = isSampledFully(list, "A");
    if (alpha)
        channels.names.push_back("A");
    const bool half = std::all_of(channels.names.begin(), channels.names.end(),
                                  [&](char const* name) { return list.findChannel(name)->type == Imf::HALF; });
    if (half)
        channels.format = alpha ? PF_RGBA_16f : PF_RGB_16f;
    else
        channels.format = alpha ? PF_RGBA_32f : PF_RGB_32f;
    return channels;
}

Imf::PixelType sampleType(PixelFormat format)
{
    return depthOf(format) == BIT_DEPTH_16f ? Imf::HALF : Imf::FLOAT;
}

std::size_t sampleBytes(PixelFormat format)
{
    return getPixelSizeInByte(format) / getNumChannels(format);
}

// The library finds a pixel by its coordinates in the data window, which may begin anywhere.
Imf::FrameBuffer frameBufferOf(Image const& image, Channels const& channels, Imath::Box2i const& window)
{
    Imf::FrameBuffer buffer;
    const std::size_t bytes = sampleBytes(image.format);
    for (std::size_t i = 0; i < channels.names.size(); ++i)
    {
        const bool alphaAfterGrey = channels.grey && i == 1;
        std::byte* first = image.pixels.get() + (alphaAfterGrey ? 3 : i) * bytes;
        buffer.insert(channels.names[i], Imf::Slice::Make(sampleType(image.format), first, window, getPixelSizeInByte(image.format),
                                                          image.rowBytes()));
    }
    return buffer;
}

void spreadGrey(Image& image)
{
    const std::size_t bytes = sampleBytes(image.format);
    const std::size_t step = getPixelSizeInByte(image.format);
    for (std::size_t i = 0; i < std::size_t(image.width) * image.height; ++i)
    {
        std::byte* pixel = image.pixels.get() + i * step;
        std::memcpy(pixel + bytes, pixel, bytes);
        std::memcpy(pixel + 2 * bytes, pixel, bytes);
    }
}

Frame frameOf(Imf::Header const& header)
{
    const Imath::Box2i& data = header.dataWindow();
    const Imath::Box2i& display = header.displayWindow();
    return {data.min.x, data.min.y, display.min.x, display.min.y, display.max.x, display.max.y, header.pixelAspectRatio()};
}

Imf::Header headerFor(Image const& image, Channels const& channels)
{
    const int width = static_cast<int>(image.width);
    const int height = static_cast<int>(image.height);
    const Frame frame = image.frame.value_or(Frame{0, 0, 0, 0, width - 1, height - 1, 1.0f});
    const Imath::Box2i display(Imath::V2i(frame.displayLeft, frame.displayTop),
                               Imath::V2i(frame.displayRight, frame.displayBottom));
    const Imath::Box2i data(Imath::V2i(frame.x, frame.y), Imath::V2i(frame.x + width - 1, frame.y + height - 1));
    Imf::Header header(display, data, frame.pixelAspectRatio);
    for (char const* name : channels.names)
        header.channels().insert(name, Imf::Channel(sampleType(image.format)));
    return header;
}

// Calls the function for bands of rows from the first to the last row of the window.
template <class Function>
void inBands(Imath::Box2i const& window, RowReport const& report, Function function)
{
    for (std::int64_t y = window.min.y; y <= window.max.y; y += kRowsAtOnce)
    {
        const std::int64_t last = std::min<std::int64_t>(y + kRowsAtOnce - 1, window.max.y);
        function(static_cast<int>(y), static_cast<int>(last));
        report(static_cast<unsigned int>(last - window.min.y + 1));
    }
}

Image readOpened(std::string const& path, Imf::InputFile& input, RowReport const& report)
{
    const Imath::Box2i window = input.header().dataWindow();
    const Channels channels = chooseChannels(path, input.header().channels());
    Image image = makeImage(path, channels.format, static_cast<std::uint64_t>(std::int64_t(window.max.x) - window.min.x + 1),
                            static_cast<std::uint64_t>(std::int64_t(window.max.y) - window.min.y + 1));
    input.setFrameBuffer(frameBufferOf(image, channels, window));
    inBands(window, report, [&](int first, int last) { input.readPixels(first, last); });
    if (channels.grey)
        spreadGrey(image);
    image.frame = frameOf(input.header());
    image.premultiplied = true;
    return image;
}

} // namespace

Image readExr(InputFile const& file, RowReport const& report)
{
    Imf::Header::setMaxImageSize(kMaxSide, kMaxSide);
    Imf::Header::setMaxTileSize(kMaxSide, kMaxSide);
    try
    {
        InputStream stream(file);
        Imf::InputFile input(stream);
        return readOpened(file.path(), input, report);
    }
    catch (Failure const&)
    {
        throw;
    }
    catch (std::bad_alloc const&)
    {
        throw;
    }
    catch (std::exception const& problem)
    {
        fail("'{}' is damaged or cut off: {}", file.path(), problem.what());
    }
}

void writeExr(Image const& image, OutputFile& file, RowReport const& report)
{
    Channels channels = {{"R", "G", "B"}, image.format, false};
    if (hasAlpha(image.format))
        channels.names.push_back("A");
    const Imf::Header header = headerFor(image, channels);
    OutputStream stream(file);
    Imf::OutputFile output(stream, header);
    output.setFrameBuffer(frameBufferOf(image, channels, header.dataWindow()));
    inBands(header.dataWindow(), report, [&](int first, int last) { output.writePixels(last - first + 1); });
}

} // namespace Program
