// Renders a million numbers on every instruction set, and holds them against one pixel at a time in plain single precision.
#ifndef TAVRIN_TESTS_RENDERER_KERNEL_HARNESS_H
#define TAVRIN_TESTS_RENDERER_KERNEL_HARNESS_H

#include "renderer/rendererHarness.h"

#include <algorithm>
#include <array>
#include <cstring>

namespace RendererHarness
{

using RGBA = std::array<float, 4>;

// 250000 pixels: all kinds of numbers, NaN, infinities and denormals among them, the same in every run.
inline std::vector<float> const& aMillionFloats()
{
    static std::vector<float> const floats = nastyFloats(1000000, 20);
    return floats;
}

// Model: RGBA to RGBA.
template <class Model>
void expectEveryTargetToMatch(Color::Op const& op, Model model)
{
    std::vector<float> const& in = aMillionFloats();
    std::vector<float> expected(in.size());
    for (std::size_t i = 0; i < in.size(); i += 4)
    {
        RGBA const out = model(RGBA{in[i], in[i + 1], in[i + 2], in[i + 3]});
        std::copy(out.begin(), out.end(), expected.begin() + static_cast<std::ptrdiff_t>(i));
    }
    std::vector<float> first;
    forEveryTarget(
        [&]
        {
            std::vector<float> const out =
                renderAs<float, float>(op, Tavrin::PF_RGBA_32f, Tavrin::PF_RGBA_32f, in, static_cast<unsigned int>(in.size() / 4));
            expectSameFloats(expected, out);
            if (first.empty())
                first = out;
            EXPECT_EQ(std::memcmp(first.data(), out.data(), out.size() * sizeof(float)), 0) << "other bytes than the first target";
        });
}

// All codes of 10 bits, in every channel, in different orders.
inline std::vector<std::uint16_t> allCodes()
{
    std::vector<std::uint16_t> codes;
    for (unsigned int i = 0; i < 1024; ++i)
    {
        for (unsigned int const factor : {1U, 3U, 5U, 7U})
            codes.push_back(static_cast<std::uint16_t>(i * factor % 1024));
    }
    return codes;
}

// The same between floats and codes of 10 bits, where the scale of the depths is part of the operator's arithmetic: makeModel gives
// the model for the maximum values of the two depths.
template <class MakeModel>
void expectScalesOfDepths(Color::Op const& op, MakeModel const& makeModel)
{
    std::vector<std::uint16_t> const codes = allCodes();
    std::vector<float> expectedFloats;
    auto fromCodes = makeModel(1023.0F, 1.0F);
    for (std::size_t i = 0; i < codes.size(); i += 4)
    {
        RGBA const in = {static_cast<float>(codes[i]), static_cast<float>(codes[i + 1]), static_cast<float>(codes[i + 2]),
                         static_cast<float>(codes[i + 3])};
        RGBA const out = fromCodes(in);
        expectedFloats.insert(expectedFloats.end(), out.begin(), out.end());
    }

    std::vector<float> const floats(aMillionFloats().begin(), aMillionFloats().begin() + 40000);
    std::vector<std::uint16_t> expectedCodes;
    auto toCodes = makeModel(1.0F, 1023.0F);
    for (std::size_t i = 0; i < floats.size(); i += 4)
    {
        for (float const value : toCodes(RGBA{floats[i], floats[i + 1], floats[i + 2], floats[i + 3]}))
        {
            float const rounded = value + 0.5F;
            expectedCodes.push_back(static_cast<std::uint16_t>(rounded > 0.0F ? std::min(rounded, 1023.0F) : 0.0F));
        }
    }

    forEveryTarget(
        [&]
        {
            expectSameFloats(expectedFloats, renderAs<std::uint16_t, float>(op, Tavrin::PF_RGBA_10i, Tavrin::PF_RGBA_32f, codes,
                                                                            static_cast<unsigned int>(codes.size() / 4)));
            EXPECT_EQ(expectedCodes, (renderAs<float, std::uint16_t>(op, Tavrin::PF_RGBA_32f, Tavrin::PF_RGBA_10i, floats,
                                                                     static_cast<unsigned int>(floats.size() / 4))));
        });
}

} // namespace RendererHarness

#endif
