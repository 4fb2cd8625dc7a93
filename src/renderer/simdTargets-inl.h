// To be included first by files that are compiled once for each target: names the targets that are built, and picks from them.
#ifndef TAVRIN_RENDERER_SIMD_TARGETS_INL_H
#define TAVRIN_RENDERER_SIMD_TARGETS_INL_H

// The scalar target is the fallback and the reference, in every compiler; it is always built.
#define HWY_BROKEN_EMU128 1
#define HWY_COMPILE_ALL_ATTAINABLE 1
// These bring nothing that the targets beside them do not have, and each target costs compile time.
#define HWY_DISABLED_TARGETS (HWY_SSSE3 | HWY_SVE | HWY_SVE2 | HWY_SVE_256 | HWY_SVE2_128)
// A file that has something of its own for AVX-512 with VBMI defines TAVRIN_SIMD_WITH_VBMI first; what other files have for AVX-512
// serves both.
#ifdef TAVRIN_SIMD_WITH_VBMI
#define HWY_WANT_AVX3_DL
#endif

// TAVRIN_PER_TARGET(name): a PerTarget with the address of the object 'name' in the namespace of each target that is built.
#define TAVRIN_PER_TARGET(name)                                                                                                  \
    {                                                                                                                            \
        TAVRIN_OF_SCALAR(name), TAVRIN_OF_SSE4(name), TAVRIN_OF_AVX2(name), TAVRIN_OF_AVX512(name), TAVRIN_OF_AVX512_VBMI(name), \
            TAVRIN_OF_NEON(name)                                                                                                 \
    }

#include <hwy/detect_targets.h>

#if HWY_TARGETS & HWY_SCALAR
#define TAVRIN_OF_SCALAR(name) &N_SCALAR::name
#else
#define TAVRIN_OF_SCALAR(name) nullptr
#endif
#if HWY_TARGETS & HWY_SSE4
#define TAVRIN_OF_SSE4(name) &N_SSE4::name
#else
#define TAVRIN_OF_SSE4(name) nullptr
#endif
#if HWY_TARGETS & HWY_AVX2
#define TAVRIN_OF_AVX2(name) &N_AVX2::name
#else
#define TAVRIN_OF_AVX2(name) nullptr
#endif
#if HWY_TARGETS & HWY_AVX3
#define TAVRIN_OF_AVX512(name) &N_AVX3::name
#else
#define TAVRIN_OF_AVX512(name) nullptr
#endif
#if HWY_TARGETS & HWY_AVX3_DL
#define TAVRIN_OF_AVX512_VBMI(name) &N_AVX3_DL::name
#else
#define TAVRIN_OF_AVX512_VBMI(name) TAVRIN_OF_AVX512(name)
#endif
#if HWY_TARGETS & HWY_NEON
#define TAVRIN_OF_NEON(name) &N_NEON::name
#else
#define TAVRIN_OF_NEON(name) nullptr
#endif

#endif
