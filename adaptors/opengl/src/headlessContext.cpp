// An OpenGL context without a window, by EGL.
#include <tavrinGL/headlessContext.h>

#include "openGL.h"

#include <EGL/egl.h>
#include <EGL/eglext.h>

#include <algorithm>
#include <string_view>
#include <utility>
#include <vector>

namespace TavrinGL
{

struct HeadlessContext::Impl
{
    EGLDisplay display = EGL_NO_DISPLAY;
    EGLContext context = EGL_NO_CONTEXT;
};

namespace
{

bool hasExtension(EGLDisplay display, std::string_view name)
{
    char const* const all = eglQueryString(display, EGL_EXTENSIONS);
    return all != nullptr && std::string_view(all).find(name) != std::string_view::npos;
}

// Of all graphics cards.
std::vector<EGLDisplay> deviceDisplays()
{
    if (!hasExtension(EGL_NO_DISPLAY, "EGL_EXT_platform_device") || !hasExtension(EGL_NO_DISPLAY, "EGL_EXT_device_enumeration"))
        return {};
    auto const queryDevices = reinterpret_cast<PFNEGLQUERYDEVICESEXTPROC>(eglGetProcAddress("eglQueryDevicesEXT"));
    EGLint count = 0;
    if (queryDevices == nullptr || queryDevices(0, nullptr, &count) == EGL_FALSE)
        return {};
    std::vector<EGLDeviceEXT> devices(static_cast<std::size_t>(count));
    queryDevices(count, devices.data(), &count);
    std::vector<EGLDisplay> displays(devices.size());
    std::transform(devices.begin(), devices.end(), displays.begin(),
                   [](EGLDeviceEXT device) { return eglGetPlatformDisplay(EGL_PLATFORM_DEVICE_EXT, device, nullptr); });
    return displays;
}

// In the order in which they are tried.
std::vector<EGLDisplay> possibleDisplays()
{
    std::vector<EGLDisplay> displays = deviceDisplays();
    if (hasExtension(EGL_NO_DISPLAY, "EGL_MESA_platform_surfaceless"))
        displays.push_back(eglGetPlatformDisplay(EGL_PLATFORM_SURFACELESS_MESA, EGL_DEFAULT_DISPLAY, nullptr));
    displays.push_back(eglGetDisplay(EGL_DEFAULT_DISPLAY));
    return displays;
}

// No context for a display that can't do without a window, or that does not draw with OpenGL.
EGLContext contextOf(EGLDisplay display)
{
    if (display == EGL_NO_DISPLAY || eglInitialize(display, nullptr, nullptr) == EGL_FALSE ||
        !hasExtension(display, "EGL_KHR_surfaceless_context") || eglBindAPI(EGL_OPENGL_API) == EGL_FALSE)
        return EGL_NO_CONTEXT;
    EGLint const wanted[] = {EGL_RENDERABLE_TYPE, EGL_OPENGL_BIT, EGL_SURFACE_TYPE, 0, EGL_NONE};
    EGLConfig config = nullptr;
    EGLint count = 0;
    if (eglChooseConfig(display, wanted, &config, 1, &count) == EGL_FALSE || count == 0)
        return EGL_NO_CONTEXT;
    EGLint const profile[] = {EGL_CONTEXT_OPENGL_PROFILE_MASK, EGL_CONTEXT_OPENGL_COMPATIBILITY_PROFILE_BIT, EGL_NONE};
    return eglCreateContext(display, config, EGL_NO_CONTEXT, profile);
}

} // namespace

Tavrin::TavStatus HeadlessContext::create(std::unique_ptr<HeadlessContext>& context)
{
    for (EGLDisplay display : possibleDisplays())
    {
        auto impl = std::make_unique<Impl>(Impl{display, contextOf(display)});
        if (impl->context == EGL_NO_CONTEXT)
            continue;
        std::unique_ptr<HeadlessContext> candidate(new HeadlessContext(std::move(impl)));
        if (candidate->makeCurrent())
        {
            context = std::move(candidate);
            return {};
        }
    }
    return failed(kAdaptorError, "EGL gives no context of OpenGL without a window");
}

HeadlessContext::HeadlessContext(std::unique_ptr<Impl> impl) : m_impl(std::move(impl)) {}

// The display stays: others may draw with it.
HeadlessContext::~HeadlessContext()
{
    if (eglGetCurrentContext() == m_impl->context)
        eglMakeCurrent(m_impl->display, EGL_NO_SURFACE, EGL_NO_SURFACE, EGL_NO_CONTEXT);
    eglDestroyContext(m_impl->display, m_impl->context);
}

Tavrin::TavStatus HeadlessContext::makeCurrent()
{
    eglBindAPI(EGL_OPENGL_API);
    if (eglMakeCurrent(m_impl->display, EGL_NO_SURFACE, EGL_NO_SURFACE, m_impl->context) == EGL_FALSE)
        return failed(kAdaptorError, "the context of OpenGL can't be made current");
    return {};
}

} // namespace TavrinGL
