// A progress bar on a terminal.
#ifndef TAVRIN_PROGRAM_PROGRESS_H
#define TAVRIN_PROGRAM_PROGRESS_H

#include "image.h"

#include <chrono>

namespace Program
{

// Draws on the standard error output, when that is a terminal and the work takes longer than a moment; otherwise nothing.
// Belongs to one thread.
class Progress
{
public:
    explicit Progress(bool wanted);
    Progress(Progress const&) = delete;
    Progress& operator=(Progress const&) = delete;
    ~Progress();

    // Takes the bar away, so that something else can be printed.
    void clear();

    // For a step that goes through the rows of a picture. The total may be unknown: 0. Keep the progress alive.
    RowReport step(char const* label, unsigned int rows);

private:
    using Clock = std::chrono::steady_clock;

    void _draw(char const* label, unsigned int done, unsigned int rows);

    bool m_wanted;
    bool m_drawn = false;
    Clock::time_point m_nextDrawing;
};

} // namespace Program

#endif
