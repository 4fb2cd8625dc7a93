// The numbers that cross the interface: bit depths, pixel formats, rectangles, flags, and queries about them.
// All functions here are free of state, throw nothing and may be called from any thread.
#ifndef TAVRIN_VOCABULARY_H
#define TAVRIN_VOCABULARY_H

#include <tavrin/export.h>

namespace Tavrin
{

// The depth of one channel. One bit of bits 12 to 17 is set, so that a depth is a part of a PixelFormat.
enum BitDepth : unsigned int
{
    BIT_DEPTH_UNKNOWN = 0,
    BIT_DEPTH_8i = 0x1000,
    BIT_DEPTH_10i = 0x2000,
    BIT_DEPTH_12i = 0x4000,
    BIT_DEPTH_16i = 0x8000,
    BIT_DEPTH_16f = 0x10000,
    BIT_DEPTH_32f = 0x20000
};

// How a pixel lies in memory: depth (mask 0xff000), layout, and 0x100 when packed into one 32-bit word.
// Elements are in native byte order; 10i and 12i are right-justified in 16-bit words. A packed word (10iP) is stored most
// significant byte first: red in bits 31 to 22, green 21 to 12, blue 11 to 2, and two bits of alpha (or zero).
enum PixelFormat : unsigned int
{
    PF_UNKNOWN = 0,
#define TAVRIN_PIXEL_FORMAT(layout, layoutCode, depth, depthCode, packed) \
    PF_##layout##_##depth = (depthCode) | (layoutCode) | (packed),
#include <tavrin/pixelFormats.def>
#undef TAVRIN_PIXEL_FORMAT
};

// A part of an image, in pixels. The image size gives the row step; the active size is what is processed.
struct ROI
{
    // The active area is the whole width and height of the image.
    ROI(unsigned int x_, unsigned int y_, unsigned int width_, unsigned int height_)
        : x(x_), y(y_), width(width_), height(height_), imageWidth(width_), imageHeight(height_)
    {
    }
    ROI(unsigned int x_, unsigned int y_, unsigned int width_, unsigned int height_, unsigned int imageWidth_,
        unsigned int imageHeight_)
        : x(x_), y(y_), width(width_), height(height_), imageWidth(imageWidth_), imageHeight(imageHeight_)
    {
    }

    unsigned int x;
    unsigned int y;
    unsigned int width;
    unsigned int height;
    unsigned int imageWidth;
    unsigned int imageHeight;
};

// A rectangle in the coordinates of a drawing, for the GPU.
struct Rect
{
    Rect(float x_, float y_, float width_, float height_) : x(x_), y(y_), width(width_), height(height_) {}

    float x;
    float y;
    float width;
    float height;
};

// Four corners in order, each x then y.
struct Vertices
{
    // A walk round the rectangle: its origin, then up, across, and down again.
    explicit Vertices(Rect const& r) : values{r.x, r.y, r.x, r.y + r.height, r.x + r.width, r.y + r.height, r.x + r.width, r.y} {}
    Vertices(float x0, float y0, float x1, float y1, float x2, float y2, float x3, float y3)
        : values{x0, y0, x1, y1, x2, y2, x3, y3}
    {
    }

    float values[8];
};

// What a relative path of a transform file is relative to.
enum BasePath : unsigned int
{
    BASE_PATH_NONE = 0,
    BASE_PATH_VENDOR = 1,
    BASE_PATH_SHARED = 2
};

// Which renderers finalize builds; bits that are not named are ignored.
typedef unsigned int RendererFlags;
enum : unsigned int
{
    RENDERER_CPU = 1,
    RENDERER_GPU = 2
};

// How a 1D table relates to half floats. Half domain: it has 65536 rows, row i for the input whose half bit pattern is i. Raw
// halfs: its values come and go as half bit patterns instead of numbers.
typedef unsigned int HalfFlags;
enum : unsigned int
{
    HALF_FLAGS_NONE = 0,
    HALF_FLAGS_INPUT_HALF_DOMAIN = 1,
    HALF_FLAGS_OUTPUT_RAW_HALFS = 2
};

// Bits 0 to 30: the lowest priority of the simplifications that finalize carries out, at least 1. These are: remove operators that
// do nothing (100), drop clamps in front of what clamps as well (99), merge neighbouring matrices (95), 1D tables (75), 3D tables
// (45). Tables are merged by sampling, so values between samples may change. Bit 31: neither remove operators with a dynamic
// property nor merge them with others.
typedef unsigned int OptimizerFlags;
enum : unsigned int
{
    OPTIMIZER_DEFAULT_THRESHOLD = 90,
    OPTIMIZER_KEEP_DYNAMIC = 0x80000000u
};

// What the alias "currentMonitor" stands for.
typedef unsigned int ResolveFlags;
enum : unsigned int
{
    RESOLVE_GRAPHICS_MONITOR = 0,
    RESOLVE_BROADCAST_MONITOR = 1
};

// "8i", "10i", "12i", "16i", "16f", "32f", compared exactly; anything else is BIT_DEPTH_UNKNOWN. Not null.
TAVRIN_API BitDepth getBitDepth(char const* name);
// The name, "Unknown" for any other value.
TAVRIN_API char const* getBitDepthName(BitDepth depth);
// The code value of full signal: 255, 1023, 4095, 65535, and 1 for float depths (which is no limit there); 0 if unknown.
TAVRIN_API float getBitDepthMaxValue(BitDepth depth);
// Always 0.
TAVRIN_API float getBitDepthMinValue(BitDepth depth);
// Maximum minus minimum.
TAVRIN_API float getBitDepthValueRange(BitDepth depth);
// Number of bits of a channel; 0 if unknown.
TAVRIN_API unsigned int getBitDepthPrecision(BitDepth depth);
// True for 16f and 32f.
TAVRIN_API bool isFloatDepth(BitDepth depth);
// True for every value but 0 that is not a float depth.
TAVRIN_API bool isIntegerDepth(BitDepth depth);

// The format of that enumerator's name ("PF_RGBA_8i"), compared exactly, else PF_UNKNOWN.
TAVRIN_API PixelFormat strToPF(char const* name);
// The enumerator's name, "Unknown" for any other value.
TAVRIN_API char const* pfToStr(PixelFormat format);
// Bytes of one pixel; 0 if unknown.
TAVRIN_API unsigned int getPixelSizeInByte(PixelFormat format);
// 3 or 4; 0 if unknown.
TAVRIN_API unsigned int getNumChannels(PixelFormat format);
// Bytes of a tight copy of the active area (the image size plays no part), as an unsigned 32-bit product.
TAVRIN_API unsigned int getImageSizeInByte(ROI const& roi, PixelFormat format);

// "Norvane" or "Shared" in any case; null, empty and anything else is BASE_PATH_NONE.
TAVRIN_API BasePath getBasePath(char const* name);
// The name, empty for BASE_PATH_NONE and any other value.
TAVRIN_API char const* getBasePathName(BasePath basePath);

} // namespace Tavrin

#endif
