// Pixels through OpenColorIO itself, with which results of ours are compared. For tests that link it.
#ifndef TAVRIN_TESTS_SUPPORT_OPEN_COLOR_IO_PIXELS_H
#define TAVRIN_TESTS_SUPPORT_OPEN_COLOR_IO_PIXELS_H

#include <OpenColorIO/OpenColorIO.h>

#include <string>
#include <vector>

namespace OpenColorIOPixels
{

namespace OCIO = OCIO_NAMESPACE;

// RGBA floats, without approximations that trade accuracy for speed.
inline std::vector<float> render(OCIO::ConstProcessorRcPtr const& processor, std::vector<float> pixels)
{
    OCIO::PackedImageDesc image(pixels.data(), static_cast<long>(pixels.size() / 4), 1, 4);
    processor->getOptimizedCPUProcessor(OCIO::OPTIMIZATION_LOSSLESS)->apply(image);
    return pixels;
}

// A file in linear interpolation.
inline std::vector<float> renderFile(std::string const& path, std::vector<float> const& pixels)
{
    OCIO::ClearAllCaches();
    OCIO::FileTransformRcPtr const file = OCIO::FileTransform::Create();
    file->setSrc(path.c_str());
    file->setInterpolation(OCIO::INTERP_LINEAR);
    return render(OCIO::Config::CreateRaw()->getProcessor(file), pixels);
}

} // namespace OpenColorIOPixels

#endif
