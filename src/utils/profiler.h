// A helper for timing measurements; nothing on a rendering path uses it.
#ifndef TAVRIN_UTILS_PROFILER_H
#define TAVRIN_UTILS_PROFILER_H

#include <cstdint>
#include <string>

namespace Color
{

// Collects the durations of cycles, in seconds.
class Profiler
{
public:
    explicit Profiler(std::string const& name);

    // Forgets everything but the name.
    void reset();

    // Times one cycle.
    void begin();
    void end();
    // Adds a cycle of known duration.
    void add(double seconds);

    double averageTime() const;
    double standardDeviation() const;
    // The figures, a line each.
    std::string stats() const;

private:
    std::int64_t m_start; // nanoseconds of the steady clock
    double m_lastTime;
    double m_totalTime;
    double m_sumOfSquares;
    double m_minTime;
    double m_maxTime;
    std::int32_t m_cycles;
    std::string m_name;
};

} // namespace Color

#endif
