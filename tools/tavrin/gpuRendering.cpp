// Pictures put through transforms by the graphics.
#include "gpuRendering.h"

#include "failure.h"

#ifdef TAVRIN_PROGRAM_HAS_OPENGL

#include <tavrinGL/tavrinGL.h>

namespace Program
{

namespace
{

// The picture in another format: a transform that does nothing changes the depth alone.
Image converted(Image source, Tavrin::PixelFormat format, unsigned int threads, RowReport const& report)
{
    const float unit[9] = {1, 0, 0, 0, 1, 0, 0, 0, 1};
    const float offsets[3] = {0, 0, 0};
    Tavrin::TransformPtr nothing;
    check(Tavrin::CreateMatrixTransform(Tavrin::BIT_DEPTH_32f, Tavrin::BIT_DEPTH_32f, unit, offsets, false, nothing),
          "cannot convert the picture");
    return applyTransform(nothing, Tavrin::OPTIMIZER_DEFAULT_THRESHOLD, std::move(source), format, threads, report);
}

void draw(Tavrin::TransformPtr const& transform, Tavrin::OptimizerFlags flags, Image& picture)
{
    Tavrin::GPUAdaptorPtr adaptor(new TavrinGL::OpenGLAdaptor);
    check(transform->setGPUAdaptor(adaptor), "cannot prepare the transform");
    check(transform->finalize(picture.format, picture.format, Tavrin::RENDERER_GPU, flags, Tavrin::RESOLVE_GRAPHICS_MONITOR),
          "cannot prepare the transform");
    float* const pixels = reinterpret_cast<float*>(picture.pixels.get());
    check(TavrinGL::drawPicture(*transform, pixels, picture.width, picture.height, pixels), "cannot draw the picture");
}

// The transform outlives the context, its adaptor must not.
class AdaptorOf
{
public:
    explicit AdaptorOf(Tavrin::TransformPtr const& transform) : m_transform(transform) {}
    AdaptorOf(AdaptorOf const&) = delete;
    AdaptorOf& operator=(AdaptorOf const&) = delete;
    ~AdaptorOf()
    {
        Tavrin::GPUAdaptorPtr none;
        m_transform->setGPUAdaptor(none);
    }

private:
    Tavrin::TransformPtr m_transform;
};

} // namespace

Image drawTransform(Tavrin::TransformPtr const& transform, Tavrin::OptimizerFlags flags, Image source, Tavrin::PixelFormat format,
                    unsigned int threads, RowReport const& report)
{
    std::unique_ptr<TavrinGL::HeadlessContext> context;
    check(TavrinGL::HeadlessContext::create(context), "cannot draw");
    const AdaptorOf adaptor(transform);
    Image picture = converted(std::move(source), Tavrin::PF_RGBA_32f, threads, [](unsigned int) {});
    draw(transform, flags, picture);
    return converted(std::move(picture), format, threads, report);
}

} // namespace Program

#else

namespace Program
{

Image drawTransform(Tavrin::TransformPtr const&, Tavrin::OptimizerFlags, Image, Tavrin::PixelFormat, unsigned int, RowReport const&)
{
    fail("this program was built without OpenGL");
}

} // namespace Program

#endif
