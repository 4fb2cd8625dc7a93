// The profiler's figures, from cycles of told durations.
#include "utils/profiler.h"

#include <gtest/gtest.h>

#include <cmath>

namespace
{

using Color::Profiler;

// Durations 1, 2, 3 and 4 s: average 2.5 s, variance of the sample 5 / 3.
Profiler profilerOfFourCycles()
{
    Profiler profiler("render");
    for (double const seconds : {1.0, 2.0, 3.0, 4.0})
    {
        profiler.add(seconds);
    }
    return profiler;
}

TEST(Profiler, StartsWithoutCycles)
{
    Profiler const profiler("empty");
    EXPECT_EQ(profiler.averageTime(), 0.0);
    EXPECT_EQ(profiler.standardDeviation(), 0.0);
    EXPECT_EQ(profiler.stats(), "Profiler empty:\n"
                                "        Nb of cycles:   0\n"
                                "        Total time:     0\n"
                                "        Average time:   0\n"
                                "        Minimum time:   1.79769e+308\n"
                                "        Maximum time:   0\n"
                                "        Standard dev:   0\n"
                                "\n");
}

TEST(Profiler, AveragesItsCycles)
{
    EXPECT_DOUBLE_EQ(profilerOfFourCycles().averageTime(), 2.5);
    EXPECT_DOUBLE_EQ(profilerOfFourCycles().standardDeviation(), std::sqrt(5.0 / 3.0));
}

TEST(Profiler, TellsItsFigures)
{
    EXPECT_EQ(profilerOfFourCycles().stats(), "Profiler render:\n"
                                              "        Nb of cycles:   4\n"
                                              "        Total time:     10\n"
                                              "        Average time:   2.5\n"
                                              "        Minimum time:   1\n"
                                              "        Maximum time:   4\n"
                                              "        Standard dev:   1.29099\n"
                                              "\n");
}

TEST(Profiler, HasNoDeviationBelowTwoCyclesOrOfEqualCycles)
{
    Profiler profiler("equal");
    profiler.add(0.1);
    EXPECT_EQ(profiler.standardDeviation(), 0.0);
    profiler.add(0.1);
    profiler.add(0.1); // Rounding makes the sum of squares smaller than the square of the sum.
    EXPECT_LT(profiler.standardDeviation(), 1e-8);
    EXPECT_GE(profiler.standardDeviation(), 0.0);
}

TEST(Profiler, ForgetsAllButItsName)
{
    Profiler profiler = profilerOfFourCycles();
    profiler.reset();
    EXPECT_EQ(profiler.stats(), Profiler("render").stats());
}

TEST(Profiler, TimesACycle)
{
    Profiler profiler("cycle");
    profiler.begin();
    profiler.end();
    EXPECT_GE(profiler.averageTime(), 0.0);
    EXPECT_NE(profiler.stats().find("Nb of cycles:   1\n"), std::string::npos);
}

} // namespace
