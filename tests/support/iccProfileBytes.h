// ICC profiles built byte by byte, by the layout that the standard of the International Color Consortium gives.
#ifndef TAVRIN_TESTS_SUPPORT_ICC_PROFILE_BYTES_H
#define TAVRIN_TESTS_SUPPORT_ICC_PROFILE_BYTES_H

#include <cmath>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

namespace XmlTest
{

inline std::string bytes16(unsigned int number)
{
    return {static_cast<char>(number >> 8U), static_cast<char>(number)};
}

inline std::string bytes32(std::uint32_t number)
{
    return bytes16(number >> 16U) + bytes16(number & 0xffffU);
}

// Sixteen of the bits are behind the point.
inline std::string fixedPoint(double number)
{
    return bytes32(static_cast<std::uint32_t>(static_cast<std::int32_t>(std::lround(number * 65536))));
}

// The start of a tag: its type and reserved bytes.
inline std::string tagOf(std::string const& type, std::string const& content)
{
    return type + bytes32(0) + content;
}

inline std::string xyzTag(double x, double y, double z)
{
    return tagOf("XYZ ", fixedPoint(x) + fixedPoint(y) + fixedPoint(z));
}

inline std::string curveTag(std::vector<unsigned int> const& entries)
{
    std::string content = bytes32(static_cast<std::uint32_t>(entries.size()));
    for (unsigned int entry : entries)
        content += bytes16(entry);
    return tagOf("curv", content);
}

// A display with the primaries of sRGB, adapted to D50 and rounded, and a gamma of 563/256.
struct ProfileBytes
{
    struct Tag
    {
        std::string signature;
        std::string content;
    };

    std::string version = bytes32(0x02400000);
    std::string deviceClass = "mntr";
    std::string deviceSpace = "RGB ";
    std::string connectionSpace = "XYZ ";
    std::string date = bytes16(2024) + bytes16(6) + bytes16(7) + bytes16(12) + bytes16(0) + bytes16(0);
    std::string intent = bytes32(0);
    std::string illuminant = bytes32(0xf6d6) + bytes32(0x10000) + bytes32(0xd32d);
    std::vector<Tag> tags = {
        {"desc", tagOf("desc", std::string(90, '\0'))},
        {"cprt", tagOf("text", "none\0\0\0\0")},
        {"wtpt", xyzTag(0.9642, 1, 0.8249)},
        {"rXYZ", xyzTag(0.4361, 0.2225, 0.0139)},
        {"gXYZ", xyzTag(0.3851, 0.7169, 0.0971)},
        {"bXYZ", xyzTag(0.1431, 0.0606, 0.7141)},
        {"rTRC", curveTag({0x233})},
        {"gTRC", curveTag({0x233})},
        {"bTRC", curveTag({0x233})},
    };

    ProfileBytes& set(std::string const& signature, std::string const& content)
    {
        for (Tag& tag : tags)
        {
            if (tag.signature == signature)
                tag.content = content;
        }
        return *this;
    }
    ProfileBytes& setCurves(std::vector<unsigned int> const& entries)
    {
        return set("rTRC", curveTag(entries)).set("gTRC", curveTag(entries)).set("bTRC", curveTag(entries));
    }
    ProfileBytes& remove(std::string const& signature)
    {
        std::erase_if(tags, [&](Tag const& tag) { return tag.signature == signature; });
        return *this;
    }

    // Where a tag's entry of the directory begins.
    static std::size_t entryOffset(std::size_t index) { return 132 + 12 * index; }

    std::string build() const
    {
        std::string directory = bytes32(static_cast<std::uint32_t>(tags.size()));
        std::string content;
        for (Tag const& tag : tags)
        {
            directory += tag.signature + bytes32(static_cast<std::uint32_t>(entryOffset(tags.size()) + content.size())) +
                         bytes32(static_cast<std::uint32_t>(tag.content.size()));
            content += tag.content;
            content.resize((content.size() + 3) / 4 * 4);
        }
        std::string const rest = "none" + version + deviceClass + deviceSpace + connectionSpace + date + "acsp" + "none" +
                                 bytes32(0) + "none" + "none" + bytes32(0) + bytes32(0) + intent + illuminant + "none";
        std::string const all = rest + std::string(128 - 4 - rest.size(), '\0') + directory + content;
        return bytes32(static_cast<std::uint32_t>(all.size() + 4)) + all;
    }
};

} // namespace XmlTest

#endif
