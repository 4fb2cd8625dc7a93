// Small helpers and the thin layer over the system.
#include "utils/utils.h"

#include "utils/errorMessage.h"

#include <boost/random/mersenne_twister.hpp>
#include <boost/uuid/random_generator.hpp>
#include <boost/uuid/uuid_io.hpp>

#include <algorithm>
#include <bit>
#include <charconv>
#include <chrono>
#include <cmath>
#include <cstdlib>
#include <limits>
#include <random>
#include <string_view>
#include <thread>

#include <strings.h>
#include <sys/stat.h>

namespace Color::Utils
{

namespace
{

// Numbers as a stream prints them in the classic locale, whatever locale the caller's process has.
template <class Number>
std::string printNumber(Number value, std::chars_format format, int precision)
{
    char buffer[64]; // The largest float in fixed notation has 39 digits, a point, 4 more and a sign.
    std::to_chars_result const result = std::to_chars(std::begin(buffer), std::end(buffer), value, format, precision);
    return std::string(buffer, result.ptr);
}

} // namespace

// A generator of its own for each call, so that there is nothing to share between threads or with a forked process. Its seed holds
// more random bits than the UUID; the generator's own way, a random word for each of its 624, takes ten times as long.
std::string generateUUID()
{
    std::random_device entropy;
    std::seed_seq seed{entropy(), entropy(), entropy(), entropy(), entropy(), entropy(), entropy(), entropy()};
    boost::mt19937 twister(seed);
    boost::uuids::basic_random_generator<boost::mt19937> generator(twister);
    return boost::uuids::to_string(generator());
}

std::string trimString(std::string const& text)
{
    constexpr char const* kWhiteSpace = " \t\n\v\f\r";
    std::size_t const begin = text.find_first_not_of(kWhiteSpace);
    if (begin == std::string::npos)
    {
        return std::string();
    }
    return text.substr(begin, text.find_last_not_of(kWhiteSpace) + 1 - begin);
}

std::string getFileExtension(std::string const& path)
{
    std::string_view const name = std::string_view(path).substr(path.rfind('/') + 1);
    std::size_t const dot = name.rfind('.');
    return dot == std::string_view::npos ? std::string() : std::string(name.substr(dot + 1));
}

std::string valueString(double value, int precision)
{
    return printNumber(value, std::chars_format::general, precision);
}

std::string formatFloat(float value)
{
    constexpr std::size_t kWidth = 12;
    constexpr float kSmallestFixed = 0.0001F;
    bool const isSmall = value != 0.0F && std::abs(value) < kSmallestFixed;
    std::string const number = printNumber(value, isSmall ? std::chars_format::scientific : std::chars_format::fixed, 4);
    return std::string(kWidth - std::min(kWidth, number.size()), ' ') + number;
}

void validateROI(Tavrin::ROI const& roi)
{
    if (roi.width > roi.imageWidth)
    {
        throw failure(ErrorIds::kRoiMismatch, Module::kUtils, "active width", "image width");
    }
    if (roi.height > roi.imageHeight)
    {
        throw failure(ErrorIds::kRoiMismatch, Module::kUtils, "active height", "image height");
    }
}

} // namespace Color::Utils

namespace Foundation::Utils
{

namespace
{

constexpr char const* kTerminal = "/dev/tty";

} // namespace

int strcasecmp(char const* a, char const* b)
{
    return ::strcasecmp(a, b);
}

int strncasecmp(char const* a, char const* b, std::size_t count)
{
    return ::strncasecmp(a, b, count);
}

double log2(double value)
{
    return std::log2(value);
}

int snprintf(char* buffer, unsigned int size, char const* format, ...)
{
    std::va_list arguments;
    va_start(arguments, format);
    int const length = vsnprintf(buffer, size, format, arguments);
    va_end(arguments);
    return length;
}

int sprintf(char* buffer, unsigned int size, char const* format, ...)
{
    std::va_list arguments;
    va_start(arguments, format);
    int const length = vsnprintf(buffer, size, format, arguments);
    va_end(arguments);
    return length;
}

int vsnprintf(char* buffer, unsigned int size, char const* format, std::va_list arguments)
{
    return std::vsnprintf(buffer, size, format, arguments);
}

char const* getEnv(char const* name)
{
    return std::getenv(name);
}

bool setEnv(char const* name, char const* value)
{
    return ::setenv(name, value, 1) == 0;
}

std::FILE* freopen(char const* path, char const* mode, std::FILE* file)
{
    return std::freopen(path, mode, file);
}

void* alignedMalloc(std::size_t size, std::size_t alignment)
{
    std::size_t const step = std::max(alignment, alignof(std::max_align_t));
    if (!std::has_single_bit(step) || size > std::numeric_limits<std::size_t>::max() - step)
    {
        return nullptr;
    }
    std::size_t const wholeSteps = (std::max<std::size_t>(size, 1) + step - 1) / step * step;
    return std::aligned_alloc(step, wholeSteps);
}

void alignedFree(void* memory)
{
    std::free(memory);
}

void sleep(unsigned int seconds)
{
    std::this_thread::sleep_for(std::chrono::seconds(seconds));
}

void redirectStdoutToFile(char const* path)
{
    Utils::freopen(path, "w", stdout);
}

void restoreStdout()
{
    Utils::freopen(kTerminal, "w", stdout);
}

bool chmod(char const* path, unsigned int mode)
{
    return ::chmod(path, mode) == 0;
}

} // namespace Foundation::Utils
