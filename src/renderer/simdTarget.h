// Which instruction set the pixel kernels run on.
#ifndef TAVRIN_RENDERER_SIMD_TARGET_H
#define TAVRIN_RENDERER_SIMD_TARGET_H

#include <vector>

namespace Rendering
{

// Kernels give the same bytes on every target; Scalar is the reference.
enum class SimdTarget
{
    Scalar,
    Sse4,
    Avx2,
    Avx512,
    Avx512Vbmi,
    Neon
};

// The word for a target in the environment: "scalar", "sse4", "avx2", "avx512", "avx512vbmi", "neon".
char const* getSimdTargetName(SimdTarget target);

// What this build holds and this processor can run, slowest first.
std::vector<SimdTarget> getSupportedSimdTargets();

// The target that renderers are built for: the fastest supported one, or the one that TAVRIN_SIMD in the environment names when
// the library looks for the first time. A word that is unknown or not supported here is logged once and ignored.
SimdTarget getSimdTarget();

// Makes renderers that are built from now on use this target, while the object lives. For tests; not safe beside other threads.
class ScopedSimdTarget
{
public:
    explicit ScopedSimdTarget(SimdTarget target);
    ScopedSimdTarget(ScopedSimdTarget const&) = delete;
    ScopedSimdTarget& operator=(ScopedSimdTarget const&) = delete;
    ~ScopedSimdTarget();

private:
    SimdTarget m_previous;
};

// One pointer per target; a target that is not in this build has none.
template <class T>
struct PerTarget
{
    T const* scalar = nullptr;
    T const* sse4 = nullptr;
    T const* avx2 = nullptr;
    T const* avx512 = nullptr;
    T const* avx512Vbmi = nullptr;
    T const* neon = nullptr;

    T const* operator[](SimdTarget target) const
    {
        switch (target)
        {
        case SimdTarget::Scalar:
            return scalar;
        case SimdTarget::Sse4:
            return sse4;
        case SimdTarget::Avx2:
            return avx2;
        case SimdTarget::Avx512:
            return avx512;
        case SimdTarget::Avx512Vbmi:
            return avx512Vbmi;
        case SimdTarget::Neon:
            return neon;
        }
        return nullptr;
    }
};

} // namespace Rendering

#endif
