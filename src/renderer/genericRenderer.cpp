// Which renderer a transform gets: the caller's choice, unless the environment names another one.
#include "renderer/genericRenderer.h"

#include "ocio/opUtil.h"
#include "renderer/CPURenderer.h"
#include "renderer/GPURenderer.h"
#include "renderer/OCIORenderer.h"
#include "utils/errorMessage.h"
#include "utils/utils.h"

#include <string_view>

namespace Rendering
{

namespace
{

namespace ErrorIds = Color::ErrorIds;
namespace Module = Color::Module;

struct RendererWord
{
    std::string_view word;
    RenderingType type;
};

constexpr RendererWord kRendererWords[] = {
    {"CPU", RENDERING_CPU},
    {"OCIO", RENDERING_OCIO},
    {"GPU", RENDERING_GPU},
    {"OCIO_GPU", RENDERING_OCIO_GPU},
};

// Words match exactly; an unknown one is ignored.
RenderingType chosenType(char const* variable, RenderingType type)
{
    char const* const value = Foundation::Utils::getEnv(variable);
    if (value == nullptr)
        return type;
    for (RendererWord const& entry : kRendererWords)
    {
        if (entry.word == value)
            return entry.type;
    }
    return type;
}

Color::Exception notValid(char const* renderer)
{
    return Color::failure(ErrorIds::kRendererNotValid, Module::kRenderer, renderer);
}

Color::Exception notAvailable(char const* renderer)
{
    return Color::failure(ErrorIds::kNoRenderer, Module::kRenderer, renderer);
}

} // namespace

// OCIO is a valid choice on the CPU side, but not every build has it.
std::shared_ptr<GenericCPURenderer> getCPURenderer(RenderingType type)
{
    switch (chosenType("TAVRIN_CPU_RENDERER", type))
    {
    case RENDERING_DEFAULT:
    case RENDERING_CPU:
        return std::make_shared<CPURenderer>();
    case RENDERING_OCIO:
        if (!Color::OpUtil::isAvailable())
            throw notAvailable("OCIO");
        return std::make_shared<OCIORenderer>();
    case RENDERING_GPU:
    case RENDERING_OCIO_GPU:
        throw notValid("GPU");
    }
    return nullptr;
}

std::shared_ptr<GenericGPURenderer> getGPURenderer(RenderingType type)
{
    switch (chosenType("TAVRIN_GPU_RENDERER", type))
    {
    case RENDERING_DEFAULT:
    case RENDERING_GPU:
        return std::make_shared<GPURenderer>();
    case RENDERING_CPU:
    case RENDERING_OCIO:
        throw notValid("CPU");
    case RENDERING_OCIO_GPU:
        throw notValid("OCIO GPU");
    }
    return nullptr;
}

} // namespace Rendering
