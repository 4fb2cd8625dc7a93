// An OpenGL context without a window, for programs that draw into memory.
#ifndef TAVRIN_GL_HEADLESS_CONTEXT_H
#define TAVRIN_GL_HEADLESS_CONTEXT_H

#include <tavrin/tavrin.h>

#include <memory>

namespace TavrinGL
{

// Made with EGL: on the graphics card if there is one, and else, with Mesa, on the processor.
class TAVRIN_API HeadlessContext
{
public:
    // The new context is current on the calling thread. After a failure the handle is as it was.
    static Tavrin::TavStatus create(std::unique_ptr<HeadlessContext>& context);

    HeadlessContext(HeadlessContext const&) = delete;
    HeadlessContext& operator=(HeadlessContext const&) = delete;
    // Adaptors that use the context have to be gone before.
    ~HeadlessContext();

    // On the calling thread, in place of another one.
    Tavrin::TavStatus makeCurrent();

private:
    struct Impl;
    explicit HeadlessContext(std::unique_ptr<Impl> impl);

    std::unique_ptr<Impl> m_impl;
};

} // namespace TavrinGL

#endif
