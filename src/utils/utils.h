// Small helpers: text, ids, the operating system.
#ifndef TAVRIN_UTILS_UTILS_H
#define TAVRIN_UTILS_UTILS_H

#include <tavrin/vocabulary.h>

#include <cstdarg>
#include <cstddef>
#include <cstdio>
#include <string>

namespace Color::Utils
{

// A new random UUID in its usual hexadecimal form.
std::string generateUUID();

// The text without white space at both ends.
std::string trimString(std::string const& text);

// What follows the last dot of the path's file name, without the dot; empty when there is none.
std::string getFileExtension(std::string const& path);

// A number as a stream of that precision prints it, by default with six significant digits.
std::string valueString(double value, int precision = 6);

// A number in a field 12 wide, filled with blanks, precision 4: magnitudes below 0.0001 other than zero in scientific
// notation, all others fixed.
std::string formatFloat(float value);

// Refuses a region whose active size exceeds its image size. Start offsets are the caller's affair.
void validateROI(Tavrin::ROI const& roi);

// The name of each depth and format at compile time, one specialisation per value.
template <Tavrin::BitDepth>
struct BitDepthInfo;
template <Tavrin::PixelFormat>
struct PixelFormatInfo;

// The part of a pixel format that tells its depth.
inline constexpr unsigned int kBitDepthMask = 0xff000U;
constexpr Tavrin::BitDepth depthOf(Tavrin::PixelFormat format)
{
    return static_cast<Tavrin::BitDepth>(static_cast<unsigned int>(format) & kBitDepthMask);
}

#define TAVRIN_BIT_DEPTH(name, maximum, bits, isFloat) \
    template <>                                        \
    struct BitDepthInfo<Tavrin::BIT_DEPTH_##name>      \
    {                                                  \
        static constexpr char const* kName = #name;    \
    };
#include "utils/bitDepths.def"
#undef TAVRIN_BIT_DEPTH

#define TAVRIN_PIXEL_FORMAT(layout, layoutCode, depth, depthCode, packed) \
    template <>                                                           \
    struct PixelFormatInfo<Tavrin::PF_##layout##_##depth>                 \
    {                                                                     \
        static constexpr char const* kName = "PF_" #layout "_" #depth;    \
    };
#include <tavrin/pixelFormats.def>
#undef TAVRIN_PIXEL_FORMAT

} // namespace Color::Utils

// The thin layer over the system: each function has the standard behaviour of its name.
namespace Foundation::Utils
{

int strcasecmp(char const* a, char const* b);
int strncasecmp(char const* a, char const* b, std::size_t count);
double log2(double value);
int snprintf(char* buffer, unsigned int size, char const* format, ...) __attribute__((format(printf, 3, 4)));
int sprintf(char* buffer, unsigned int size, char const* format, ...) __attribute__((format(printf, 3, 4)));
int vsnprintf(char* buffer, unsigned int size, char const* format, std::va_list arguments);
// Null when the variable is not set.
char const* getEnv(char const* name);
// Overwrites; true on success.
bool setEnv(char const* name, char const* value);
std::FILE* freopen(char const* path, char const* mode, std::FILE* file);
// Memory aligned to a power of two (or better), to be released with alignedFree; null when there is none.
void* alignedMalloc(std::size_t size, std::size_t alignment);
void alignedFree(void* memory);
void sleep(unsigned int seconds);
void redirectStdoutToFile(char const* path);
// Reopens the terminal. Where the process has none, standard output is closed afterwards.
void restoreStdout();
// True on success.
bool chmod(char const* path, unsigned int mode);

} // namespace Foundation::Utils

#endif
