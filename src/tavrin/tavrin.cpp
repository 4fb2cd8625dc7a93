// The destructors of the public interfaces, and the functions that make transforms without a file.
#include <tavrin/files.h>
#include <tavrin/transform.h>
#include <tavrin/transformFactory.h>

#include "tavrin/requireParameter.h"
#include "tavrin/transformImpl.h"
#include "transform/transformFactory.h"
#include "utils/errorMessage.h"

namespace Tavrin
{

Transform::~Transform() = default;
Transform::ContentCallbacks::~ContentCallbacks() = default;
SupportedExtensionsCallBack::~SupportedExtensionsCallBack() = default;
SupportedFormatsCallBack::~SupportedFormatsCallBack() = default;
TransformWriterCallback::~TransformWriterCallback() = default;

TavStatus optimizeTransform(TransformPtr const& transform, OptimizerFlags flags, TransformPtr& optimized)
{
    return Color::statusOf(
        [&]
        {
            auto const* const implementation = dynamic_cast<Impl::Transform const*>(transform.get());
            requireParameter(implementation, "transform");
            optimized.reset(new Impl::Transform(implementation->getOptimizedTransform(flags)));
        });
}

TavStatus extractOptimizedContent(TransformPtr const& transform, PixelFormat input, PixelFormat output,
                                  OptimizerFlags optimizerFlags, Transform::ContentCallbacks& callbacks)
{
    return Color::statusOf(
        [&]
        {
            auto const* const implementation = dynamic_cast<Impl::Transform const*>(transform.get());
            requireParameter(implementation, "transform");
            implementation->extractOptimizedContent(input, output, optimizerFlags, callbacks);
        });
}

TavStatus CreateMatrixTransform(BitDepth input, BitDepth output, float const* matrix, float const* offsets, bool hasAlpha,
                                TransformPtr& transform)
{
    return Color::statusOf(
        [&]
        {
            requireParameter(matrix, "matrix");
            transform.reset(new Impl::Transform(Color::CreateMatrixTransform(input, output, matrix, offsets, hasAlpha)));
        });
}

TavStatus CreateDitherTransform(BitDepth input, BitDepth output, BitDepth ditherDepth, TransformPtr& transform)
{
    return Color::statusOf([&] { transform.reset(new Impl::Transform(Color::CreateDitherTransform(input, output, ditherDepth))); });
}

TavStatus CreateReferenceTransformFromPath(BitDepth input, BitDepth output, char const* path, BasePath basePath,
                                           TransformPtr& transform)
{
    return Color::statusOf(
        [&]
        {
            requireParameter(path, "path");
            transform.reset(new Impl::Transform(Color::CreateReferenceTransformFromPath(input, output, path, basePath)));
        });
}

TavStatus CreateReferenceTransformFromAlias(BitDepth input, BitDepth output, char const* alias, TransformPtr& transform)
{
    return Color::statusOf(
        [&]
        {
            requireParameter(alias, "alias");
            transform.reset(new Impl::Transform(Color::CreateReferenceTransformFromAlias(input, output, alias)));
        });
}

TavStatus createStockTransform(StockTransform type, TransformPtr& transform)
{
    return Color::statusOf([&] { transform.reset(new Impl::Transform(Color::createStockTransform(type))); });
}

TavStatus concatenateTransforms(TransformPtr const& first, TransformPtr const& second, TransformPtr& transform)
{
    return Color::statusOf(
        [&]
        {
            auto const model = Color::concatenateTransforms(Impl::Transform::getModel(first), Impl::Transform::getModel(second));
            transform.reset(new Impl::Transform(model));
        });
}

} // namespace Tavrin
