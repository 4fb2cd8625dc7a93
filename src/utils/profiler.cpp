// Durations of cycles and their statistics.
#include "utils/profiler.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <iomanip>
#include <limits>
#include <sstream>

namespace Color
{

namespace
{

std::int64_t now()
{
    return std::chrono::nanoseconds(std::chrono::steady_clock::now().time_since_epoch()).count();
}

} // namespace

Profiler::Profiler(std::string const& name) : m_name(name)
{
    reset();
}

void Profiler::reset()
{
    m_start = 0;
    m_lastTime = 0.0;
    m_totalTime = 0.0;
    m_sumOfSquares = 0.0;
    m_minTime = std::numeric_limits<double>::max();
    m_maxTime = 0.0;
    m_cycles = 0;
}

void Profiler::begin()
{
    m_start = now();
}

void Profiler::end()
{
    add(std::chrono::duration<double>(std::chrono::nanoseconds(now() - m_start)).count());
}

void Profiler::add(double seconds)
{
    m_lastTime = seconds;
    m_totalTime += seconds;
    m_sumOfSquares += seconds * seconds;
    m_minTime = std::min(m_minTime, seconds);
    m_maxTime = std::max(m_maxTime, seconds);
    ++m_cycles;
}

double Profiler::averageTime() const
{
    return m_cycles == 0 ? 0.0 : m_totalTime / m_cycles;
}

// Of a sample: divided by one less than the count.
double Profiler::standardDeviation() const
{
    if (m_cycles < 2)
    {
        return 0.0;
    }
    double const squares = m_sumOfSquares - m_totalTime * m_totalTime / m_cycles;
    return squares > 0.0 ? std::sqrt(squares / (m_cycles - 1)) : 0.0;
}

std::string Profiler::stats() const
{
    std::ostringstream text;
    auto const line = [&text](char const* label, auto value)
    { text << std::string(8, ' ') << std::left << std::setw(16) << label << value << '\n'; };
    text << "Profiler " << m_name << ":\n";
    line("Nb of cycles:", m_cycles);
    line("Total time:", m_totalTime);
    line("Average time:", averageTime());
    line("Minimum time:", m_minTime);
    line("Maximum time:", m_maxTime);
    line("Standard dev:", standardDeviation());
    text << '\n';
    return text.str();
}

} // namespace Color
