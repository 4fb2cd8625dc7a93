// Picks the instruction set once, from the processor and the environment.
#define TAVRIN_SIMD_WITH_VBMI
#include "renderer/simdTargets-inl.h"

#include "renderer/simdTarget.h"

#include "utils/logger.h"
#include "utils/utils.h"

#include <hwy/targets.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <optional>

namespace Rendering
{

namespace
{

struct TargetEntry
{
    SimdTarget target;
    char const* name;
    long long bit;
};

constexpr std::array<TargetEntry, 6> kTargets = {{{SimdTarget::Scalar, "scalar", HWY_SCALAR},
                                                  {SimdTarget::Sse4, "sse4", HWY_SSE4},
                                                  {SimdTarget::Avx2, "avx2", HWY_AVX2},
                                                  {SimdTarget::Avx512, "avx512", HWY_AVX3},
                                                  {SimdTarget::Avx512Vbmi, "avx512vbmi", HWY_AVX3_DL},
                                                  {SimdTarget::Neon, "neon", HWY_NEON}}};

bool isSupported(SimdTarget target)
{
    std::vector<SimdTarget> const supported = getSupportedSimdTargets();
    return std::find(supported.begin(), supported.end(), target) != supported.end();
}

SimdTarget chooseTarget()
{
    SimdTarget const best = getSupportedSimdTargets().back();
    char const* const word = Foundation::Utils::getEnv("TAVRIN_SIMD");
    if (word == nullptr || *word == '\0')
        return best;
    for (TargetEntry const& entry : kTargets)
    {
        if (std::strcmp(entry.name, word) == 0 && isSupported(entry.target))
            return entry.target;
    }
    Color::Logger::log(Color::LOG_USER, "TAVRIN_SIMD: '%s' is no instruction set of this build and processor; '%s' is used", word,
                       getSimdTargetName(best));
    return best;
}

std::optional<SimdTarget>& forcedTarget()
{
    static std::optional<SimdTarget> target;
    return target;
}

} // namespace

char const* getSimdTargetName(SimdTarget target)
{
    for (TargetEntry const& entry : kTargets)
    {
        if (entry.target == target)
            return entry.name;
    }
    return "";
}

std::vector<SimdTarget> getSupportedSimdTargets()
{
    long long const present = (hwy::SupportedTargets() | HWY_SCALAR) & HWY_TARGETS;
    std::vector<SimdTarget> supported;
    for (TargetEntry const& entry : kTargets)
    {
        if ((present & entry.bit) != 0)
            supported.push_back(entry.target);
    }
    return supported;
}

SimdTarget getSimdTarget()
{
    static SimdTarget const chosen = chooseTarget();
    return forcedTarget().value_or(chosen);
}

ScopedSimdTarget::ScopedSimdTarget(SimdTarget target) : m_previous(getSimdTarget())
{
    forcedTarget() = target;
}

ScopedSimdTarget::~ScopedSimdTarget()
{
    forcedTarget() = m_previous;
}

} // namespace Rendering
