// The pixel engine: pushes a region of an image through a row of renderers, from any pixel format to any other.
#ifndef TAVRIN_RENDERER_CPU_SELECTOR_H
#define TAVRIN_RENDERER_CPU_SELECTOR_H

#include "renderer/kernelsFormats.h"
#include "renderer/virtualRenderer.h"

#include <tavrin/vocabulary.h>

namespace Rendering
{

using Tavrin::ROI;

class ValueTables;

// Works line by line, and a line in blocks that stay in the first-level cache: a block is loaded, every renderer runs over it, and
// it is stored, so that memory is read once and written once. Lines that are shorter than a block share one. Keeps no state,
// allocates nothing, and may run in several threads at once.
class CPUEngine
{
public:
    // Throws "Illegal pixel format" for a value that is no format.
    CPUEngine(PixelFormat in, PixelFormat out);

    // Paddings are the bytes at the end of each row beyond the image width. Offsets of the first pixel are counted in 32 bits.
    // Source and destination may be the same memory when the formats are the same. Tables, if there are any, are for these
    // renderers between these formats.
    void apply(void const* source, void* destination, ROI const& roi, unsigned int sourcePadding, unsigned int destinationPadding,
               TransformProcessor const& renderers, ValueTables const* valueTables = nullptr) const;

private:
    PixelFormat m_in;
    PixelFormat m_out;
    FormatFunctions m_source;
    FormatFunctions m_destination;
};

// Converts a region from one format to another without any scaling: code values stay as numbers, and integer depths clamp them. The
// active sizes of the two regions must be equal.
void copyBuffer(void const* source, PixelFormat sourceFormat, unsigned int sourcePadding, ROI const& sourceRoi, void* destination,
                PixelFormat destinationFormat, unsigned int destinationPadding, ROI const& destinationRoi);

} // namespace Rendering

#endif
