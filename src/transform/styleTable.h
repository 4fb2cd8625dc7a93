// The names of an operator's styles, for files and messages, in both directions.
#ifndef TAVRIN_TRANSFORM_STYLE_TABLE_H
#define TAVRIN_TRANSFORM_STYLE_TABLE_H

#include "utils/errorMessage.h"
#include "utils/nameTable.h"

#include <cstddef>
#include <optional>

namespace Color
{

// A table of names whose enumeration is numbered from 0 without gaps; the names stand in the order of its values.
//
//     constexpr StyleTable<Style, 3> kStyles{"video", "log", "linear"};
template <class Style, std::size_t kCount>
class StyleTable
{
public:
    template <class... Names>
    explicit constexpr StyleTable(Names... names)
    {
        static_assert(sizeof...(names) == kCount);
        std::size_t i = 0;
        ((m_table.rows[i] = {static_cast<Style>(i), names}, ++i), ...);
    }

    // The value of a name, compared without regard to case; none for null and for other texts.
    std::optional<Style> find(char const* name) const { return m_table.findIgnoringCase(name); }

    // Throws the failure that the site names, with the text as argument; a null text counts as empty.
    Style parse(char const* name, ErrorSite unrecognized, char const* moduleTag) const
    {
        if (auto const style = find(name))
            return *style;
        throw failure(unrecognized, moduleTag, name != nullptr ? name : "");
    }

    // Empty for a value that has no name.
    char const* getName(Style style) const { return m_table.nameOf(style, ""); }

private:
    Utils::NameTable<Style, kCount> m_table{};
};

} // namespace Color

#endif
