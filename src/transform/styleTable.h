// The names of an enumeration's values, for files and messages, in both directions.
#ifndef TAVRIN_TRANSFORM_STYLE_TABLE_H
#define TAVRIN_TRANSFORM_STYLE_TABLE_H

#include "utils/errorMessage.h"
#include "utils/utils.h"

#include <array>
#include <cstddef>
#include <optional>

namespace Color
{

// Style is an enumeration numbered from 0 without gaps; the names stand in the order of its values.
//
//     constexpr StyleTable<Style, 3> kStyles{"video", "log", "linear"};
template <class Style, std::size_t kCount>
class StyleTable
{
public:
    template <class... Names>
    explicit constexpr StyleTable(Names... names) : m_names{names...}
    {
        static_assert(sizeof...(names) == kCount);
    }

    // The value of a name, compared without regard to case; none for null and for other texts.
    std::optional<Style> find(char const* name) const
    {
        for (std::size_t i = 0; name != nullptr && i < kCount; ++i)
        {
            if (Foundation::Utils::strcasecmp(name, m_names[i]) == 0)
                return static_cast<Style>(i);
        }
        return std::nullopt;
    }

    // Throws the failure that the site names, with the text as argument; a null text counts as empty.
    Style parse(char const* name, ErrorSite unrecognized, char const* moduleTag) const
    {
        if (auto const style = find(name))
            return *style;
        throw failure(unrecognized, moduleTag, name != nullptr ? name : "");
    }

    // Empty for a value that has no name.
    constexpr char const* getName(Style style) const
    {
        auto const index = static_cast<std::size_t>(style);
        return index < kCount ? m_names[index] : "";
    }

private:
    std::array<char const*, kCount> m_names;
};

} // namespace Color

#endif
