// A progress bar on a terminal.
#include "progress.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstdio>

#include <unistd.h>

namespace Program
{

namespace
{

// Work that is done sooner needs no bar.
constexpr std::chrono::milliseconds kMoment(500);
constexpr std::chrono::milliseconds kBetweenDrawings(100);
constexpr unsigned int kBarWidth = 40;

} // namespace

Progress::Progress(bool wanted) : m_wanted(wanted && ::isatty(STDERR_FILENO) == 1), m_nextDrawing(Clock::now() + kMoment) {}

Progress::~Progress()
{
    clear();
}

void Progress::clear()
{
    if (m_drawn)
        std::fputs("\r\033[K", stderr);
    m_drawn = false;
}

RowReport Progress::step(char const* label, unsigned int rows)
{
    return [this, label, rows](unsigned int done) { _draw(label, done, rows); };
}

void Progress::_draw(char const* label, unsigned int done, unsigned int rows)
{
    if (!m_wanted || Clock::now() < m_nextDrawing)
        return;
    m_nextDrawing = Clock::now() + kBetweenDrawings;
    m_drawn = true;
    if (rows == 0)
    {
        fmt::print(stderr, "\r{:8} {} rows\033[K", label, done);
    }
    else
    {
        const unsigned int filled = static_cast<unsigned int>(std::uint64_t(kBarWidth) * std::min(done, rows) / rows);
        fmt::print(stderr, "\r{:8} [{:#<{}}{:{}}] {:3}%\033[K", label, "", filled, "", kBarWidth - filled,
                   std::uint64_t(100) * std::min(done, rows) / rows);
    }
    std::fflush(stderr);
}

} // namespace Program
