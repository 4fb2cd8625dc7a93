// Which pixels of the source to ask for before they are loaded.
#ifndef TAVRIN_RENDERER_READ_AHEAD_H
#define TAVRIN_RENDERER_READ_AHEAD_H

#include "renderer/block.h"
#include "renderer/kernelsFormats.h"
#include "renderer/pictureLines.h"

#include <algorithm>
#include <cstddef>

namespace Rendering
{

// Those that are loaded some blocks later.
class ReadAhead
{
public:
    // So many lines share a block.
    ReadAhead(SourceLines const& source, unsigned int linesOfABlock)
        : m_source(source),
          m_linesOfABlock(linesOfABlock),
          m_blocksOfALine((source.width() + Block::kPixels - 1) / Block::kPixels),
          m_intoSecondLevel(_isForSecondLevel(source)),
          m_blocksAhead(_blocksAhead())
    {
    }

    // While the pixels of a line from x on are stored.
    UpcomingPixels behind(unsigned int line, unsigned int x) const
    {
        if (m_linesOfABlock > 1)
            return _from(line + m_blocksAhead * m_linesOfABlock, 0);
        unsigned int const ahead = x + m_blocksAhead * Block::kPixels;
        unsigned int const width = m_blocksOfALine * Block::kPixels;
        return _from(line + ahead / width, ahead % width);
    }

private:
    // Bytes of lines that end before the processor has noticed that memory is read in order, and reads ahead by itself. Shorter
    // ones take longer by way of the second level.
    static constexpr std::size_t kShortestLine = 1024;
    static constexpr std::size_t kLongestLine = std::size_t{32} << 10;
    // Bytes of those that leave the memory too little time.
    static constexpr unsigned int kLargePixel = 12;

    static bool _isForSecondLevel(SourceLines const& source)
    {
        return source.isOfLargePicture() && source.areApart() && source.lineBytes() >= kShortestLine &&
               source.lineBytes() <= kLongestLine && source.pixelBytes() >= kLargePixel;
    }

    // Most of the next block is on its way already. A small region ends before what is far ahead is loaded.
    unsigned int _blocksAhead() const
    {
        unsigned int const wanted = m_intoSecondLevel ? 4 : 2;
        unsigned int const blocks = m_source.height() / m_linesOfABlock * m_blocksOfALine;
        return std::clamp(blocks / 4, 1U, wanted);
    }

    UpcomingPixels _from(unsigned int line, unsigned int x) const
    {
        return {m_source.pixel(line, x), m_source.pixelBytes(), m_intoSecondLevel};
    }

    SourceLines const& m_source;
    unsigned int m_linesOfABlock;
    unsigned int m_blocksOfALine;
    bool m_intoSecondLevel;
    unsigned int m_blocksAhead;
};

} // namespace Rendering

#endif
