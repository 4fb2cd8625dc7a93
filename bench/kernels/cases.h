// What the program of kernels measures.
#ifndef TAVRIN_BENCH_KERNELS_CASES_H
#define TAVRIN_BENCH_KERNELS_CASES_H

namespace Bench
{

// False, with a message, if there is a kernel without a case, or two cases for one kernel.
bool addKernels();

// Loads and stores of formats, and the look-up of bytes.
void addFormats();

// Chains of operators over a frame, beside what their parts take in the cache.
void addChains();

} // namespace Bench

#endif
