// Every instruction set gives the same bytes for pixels with several NaNs, too: which of them comes out is settled.
#include "renderer/pixelModel.h"
#include "renderer/rendererHarness.h"
#include "renderer/shaderSamples.h"

#include "transform/matrixOp.h"
#include "utils/utils.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <cstring>
#include <random>
#include <string>
#include <vector>

using namespace RendererHarness;
using Color::MatrixOp;

namespace
{

// An odd count, so that the last pixels do not fill a vector, and more than a block.
constexpr unsigned int kCount = 4 * 128 + 7;

// Half of the elements are NaNs of any payload and sign, quiet and signalling ones; the others are infinities and numbers.
template <class Bits>
std::vector<unsigned char> pixelsOfNaNs(std::size_t count, Bits infinity, Bits one)
{
    constexpr Bits kSign = Bits{1} << (8 * sizeof(Bits) - 1);
    std::mt19937 generator(7);
    std::vector<unsigned char> pixels(count * sizeof(Bits));
    for (std::size_t i = 0; i < pixels.size(); i += sizeof(Bits))
    {
        Bits const any = static_cast<Bits>(generator());
        unsigned int const sort = generator() % 4;
        Bits const bits = sort == 0 ? infinity | (any & kSign) : sort == 1 ? one ^ (any & kSign) : infinity | any;
        std::memcpy(&pixels[i], &bits, sizeof bits);
    }
    return pixels;
}

std::vector<unsigned char> pixelsOfNaNs(PixelFormat format)
{
    std::size_t const elements = kCount * PixelModel::channels(format).size();
    if (PixelModel::elementBytes(format) == sizeof(float))
        return pixelsOfNaNs<std::uint32_t>(elements, 0x7f800000U, 0x3f800000U);
    return pixelsOfNaNs<std::uint16_t>(elements, 0x7c00U, 0x3c00U);
}

void expectSameBytesOnEveryTarget(std::shared_ptr<Color::Transform> const& transform)
{
    for (PixelFormat const from : {Tavrin::PF_RGBA_32f, Tavrin::PF_BGR_32f, Tavrin::PF_ABGR_16f, Tavrin::PF_RGB_16f})
    {
        std::vector<unsigned char> const source = pixelsOfNaNs(from);
        for (PixelFormat const to : {Tavrin::PF_RGBA_32f, Tavrin::PF_RGB_32f, Tavrin::PF_RGBA_16f, Tavrin::PF_RGBA_16i})
        {
            SCOPED_TRACE(std::string(Tavrin::pfToStr(from)) + " to " + Tavrin::pfToStr(to));
            std::vector<unsigned char> first;
            forEveryTarget(
                [&]
                {
                    std::vector<unsigned char> out(kCount * PixelModel::pixelBytes(to));
                    rendererOf(transform, from, to).apply(source.data(), out.data(), Rendering::ROI(0, 0, kCount, 1), 0, 0);
                    if (first.empty())
                        first = out;
                    EXPECT_TRUE(first == out) << "other bytes than the first target";
                });
        }
    }
}

float floatOf(std::uint32_t bits)
{
    float value;
    std::memcpy(&value, &bits, sizeof value);
    return value;
}

std::vector<std::uint32_t> bitsOf(std::vector<float> const& values)
{
    std::vector<std::uint32_t> bits(values.size());
    std::memcpy(bits.data(), values.data(), values.size() * sizeof(float));
    return bits;
}

// Each coefficient is 1, or where it is not on the diagonal what is given.
MatrixOp matrixOf(float besideDiagonal)
{
    MatrixOp op;
    for (unsigned int i = 0; i < 16; ++i)
        op.setArrayValue(i, i % 5 == 0 ? 1.0F : besideDiagonal);
    return op;
}

class NaNPayloads : public testing::TestWithParam<ShaderSample>
{
};

} // namespace

TEST_P(NaNPayloads, AreTheSameOnEveryTarget)
{
    expectSameBytesOnEveryTarget(GetParam().makeTransform());
}

TEST(NaNPayloads, OfCoefficientsAndOffsetsAreTheSameOnEveryTarget)
{
    std::array<float, 4> const offsets = {floatOf(0x7fc00011U), 0.5F, floatOf(0xffc00012U), floatOf(0x7f800013U)};
    for (MatrixOp op : {matrixOf(0.0F), matrixOf(0.25F), matrixOf(floatOf(0xffc00010U))})
    {
        op.setArrayValue(5, floatOf(0x7fc00014U));
        expectSameBytesOnEveryTarget(transformOf({&op}));
        op.getOffsets().setRGBAValues(offsets.data());
        expectSameBytesOnEveryTarget(transformOf({&op}));
    }
}

#if defined(__x86_64__)
TEST(NaNPayloads, OfAMatrixComeOutInTheOrderOfItsSums)
{
    // A signalling NaN becomes the quiet one of its payload.
    float const red = floatOf(0x7fc00001U);
    float const green = floatOf(0xff800002U);
    float const blue = floatOf(0x7f800003U);
    float const alpha = floatOf(0xffc00004U);
    std::vector<float> const pixels = {red, green, blue, alpha, red, 1, blue, alpha, 1, 1, blue, alpha, 1, 1, blue, 1};
    std::vector<std::uint32_t> const first = {0xffc00002U, 0x7fc00001U, 0xffc00004U, 0x7fc00003U};
    forEveryTarget(
        [&]
        {
            std::vector<std::uint32_t> const out = bitsOf(render(matrixOf(0.25F), pixels));
            for (std::size_t i = 0; i < out.size(); ++i)
                EXPECT_EQ(first[i / 4], out[i]) << i;
        });
}
#endif

INSTANTIATE_TEST_SUITE_P(EveryOperator, NaNPayloads, testing::ValuesIn(shaderSamples()),
                         [](auto const& info) { return info.param.name; });
