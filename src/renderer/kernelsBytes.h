// Pixels of 8-bit codes through tables that stand in registers, on targets that can look up in 256 bytes.
#ifndef TAVRIN_RENDERER_KERNELS_BYTES_H
#define TAVRIN_RENDERER_KERNELS_BYTES_H

#include "renderer/block.h"

#include <tavrin/vocabulary.h>

#include <array>
#include <cstddef>
#include <cstdint>

namespace Rendering
{

inline constexpr unsigned int kCodes = 256;

// How 16 pixels of 8 bits fill a register: which of their bytes goes to each place.
struct CodeArrangement
{
    static constexpr unsigned int kPixels = 16;
    static constexpr unsigned int kPlaces = 4 * kPixels;

    // Nothing is put anywhere yet.
    explicit CodeArrangement(Tavrin::PixelFormat in);

    // A channel of a pixel goes to a place: red is 0, alpha 3. Where the format has no alpha it is 255.
    void put(unsigned int pixel, unsigned int channel, unsigned int place);

    unsigned int pixelBytes;
    std::array<int, 4> bytes; // of red, green, blue and alpha in a pixel; -1 for none
    alignas(64) std::uint8_t from[kPlaces];
    alignas(64) std::uint8_t added[kPlaces];
};

// What the codes of each channel are worth, as floats.
struct CodeValues
{
    // Tables hold nothing yet.
    explicit CodeValues(Tavrin::PixelFormat in);

    CodeArrangement arrangement;
    // Of red, green, blue and alpha: the lowest bytes of all floats, and so on to the highest.
    alignas(64) std::uint8_t table[4][4][kCodes];
    // The value of alpha where pixels have none.
    float missingAlpha;
};

// What the codes of each channel become in pixels of 8 or 16 bits a channel.
class CodeEntries
{
public:
    // Of red, green, blue and alpha: the lower bytes of all entries, then the upper ones if they have any. Null leaves codes of
    // 8 bits as they are.
    using Tables = std::array<std::uint8_t const*, 4>;

    struct Table
    {
        std::uint8_t const* bytes;
        std::uint64_t places; // of the register, a bit each
    };

    // Whether there are entries for the pixels of a format: the packed ones, and floats of 32 bits, have none.
    static bool serve(Tavrin::PixelFormat out);

    CodeEntries(Tavrin::PixelFormat in, Tavrin::PixelFormat out);

    // They are not copied. Those that are equal are looked up together, and those that the destination does not have not at all.
    void setTables(Tables const& tables);

    CodeArrangement arrangement;
    unsigned int channels; // of the destination
    unsigned int entryBytes;
    std::array<std::uint64_t, 4> placesOfChannel; // of red, green, blue and alpha
    unsigned int count;
    std::array<Table, 4> table;
};

struct CodeFunctions
{
    // Takes the values of Block::kPixels codes, from one on, into the tables of a channel.
    void (*setValues)(float const* values, std::uint8_t (&table)[4][kCodes], unsigned int firstCode);
    // As loads of formats do.
    void (*load)(CodeValues const& values, void const* source, Places places, Block& block);
    // A destination that streams goes past the caches.
    void (*renderLine)(CodeEntries const& entries, std::uint8_t const* source, std::uint8_t* destination, std::size_t count,
                       bool streams);
};

// Those of the current target; null if it has none.
CodeFunctions const* getCodeFunctions();

} // namespace Rendering

#endif
