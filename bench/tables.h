// The tables that all libraries are measured with.
#ifndef TAVRIN_BENCH_TABLES_H
#define TAVRIN_BENCH_TABLES_H

#include <vector>

namespace Bench
{

// A power, from 0 to 1.
float curve(double x);

// Saturation and a curve: smooth, and different in every channel.
void lookAt(double r, double g, double b, float* out);

// The look at so many points an axis, blue varying fastest.
std::vector<float> grid(unsigned int points);

} // namespace Bench

#endif
