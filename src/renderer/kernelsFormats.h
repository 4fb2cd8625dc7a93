// How pixels of each format come into a block and leave it.
#ifndef TAVRIN_RENDERER_KERNELS_FORMATS_H
#define TAVRIN_RENDERER_KERNELS_FORMATS_H

#include "renderer/block.h"

#include <tavrin/vocabulary.h>

namespace Rendering
{

using Tavrin::PixelFormat;

struct Lut1DParameters;

// Reads pixels into places of the block: code values as floats; where there is no alpha it is the depth's maximum. The places
// behind them are overwritten as well, so those of one block are filled in order.
using LoadFunction = void (*)(void const* source, Places places, Block& block);

// The source pixels that come after those of the block. They are fetched into the cache while the block is stored, when the memory
// has nothing else to read; the address need not be valid.
struct UpcomingPixels
{
    void const* begin;
    unsigned int pixelBytes;
    // Not into the first level, which waits for some two dozen lines of the cache at a time: too few to keep the memory busy.
    bool intoSecondLevel = false;
};

// Writes pixels of the block. Integer depths: 0.5 is added, then clamped and truncated, a NaN becomes 0; halfs are
// rounded to nearest even; floats pass as they are.
using StoreFunction = void (*)(Block const& block, Places places, void* destination, UpcomingPixels upcoming);

// The same for a block of codes: colours are the entries of these rows of the tables, as they stand, and alpha is scaled and stored
// as a value.
using EntryStoreFunction = void (*)(Lut1DParameters const& tables, Block const& block, Places places, void* destination,
                                    UpcomingPixels upcoming);

struct FormatFunctions
{
    LoadFunction load;
    // The same, but colours come as codes: the integers of integer formats and the bit patterns of halfs, as 32-bit integers in the
    // places of the floats. Alpha comes as a value. Floats have no codes.
    LoadFunction loadCodes;
    StoreFunction store;
    // Goes past the caches; for large destinations that nobody reads soon, and never for memory that is also the source. End a run
    // of such stores with finishStreaming().
    StoreFunction stream;
    // Entries of the type that the depth stores.
    EntryStoreFunction storeEntries;
    EntryStoreFunction streamEntries;
};

// The functions of the current target; throws "Illegal pixel format" for a value that is no format.
FormatFunctions const& getFormatFunctions(PixelFormat format);

// Makes streamed pixels visible to other threads in order.
void finishStreaming();

} // namespace Rendering

#endif
