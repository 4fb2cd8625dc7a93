// A run of pixels on their way through the renderers: one plane per channel, small enough for the first-level cache.
#ifndef TAVRIN_RENDERER_BLOCK_H
#define TAVRIN_RENDERER_BLOCK_H

namespace Rendering
{

// Planes begin on 64 bytes; channels hold code values of the depth that the next renderer takes. Loaders and kernels work in whole
// vectors, so the places behind the last pixel hold values that nobody stores.
struct Block
{
    // So few that the planes and the pixels of both sides stay in the first-level cache together, and that the stores of one block
    // are still on their way to memory while the next one is reckoned; so many that the calls per block cost next to nothing.
    static constexpr unsigned int kPixels = 128;
    // Room for a vector that begins with the last pixel. It also keeps equal places of the planes off the same address modulo 4096,
    // which would stall loads behind stores.
    static constexpr unsigned int kGap = 16;

    alignas(64) float red[kPixels + kGap];
    alignas(64) float green[kPixels + kGap];
    alignas(64) float blue[kPixels + kGap];
    alignas(64) float alpha[kPixels + kGap];
    // Room for what a kernel keeps from one loop to the next.
    alignas(64) float interim[kPixels + kGap];
};

// Some places of a block, one after the other.
struct Places
{
    unsigned int first;
    unsigned int count;
};

// Where in the image a block's first pixel stands.
struct ImagePosition
{
    unsigned int column;
    unsigned int row;
};

// What is wanted of a renderer. Colours are the same either way; where they are all, alpha stays as it is.
enum class Outputs
{
    ColorsAndAlpha,
    Colors
};

// Runs one renderer's arithmetic in place over the first pixels of a block.
using BlockFunction = void (*)(void const* parameters, Block& block, unsigned int count, ImagePosition position, Outputs outputs);

} // namespace Rendering

#endif
