// Enumerators and their names, to be looked up in both directions.
#ifndef TAVRIN_UTILS_NAME_TABLE_H
#define TAVRIN_UTILS_NAME_TABLE_H

#include "utils/utils.h"

#include <array>
#include <cstddef>
#include <cstring>
#include <optional>

namespace Color::Utils
{

// A constant list, to be made at namespace scope: constexpr NameTable<Style, 2> kStyles{{{{Style::A, "a"}, {Style::B, "b"}}}};
template <class Enumerator, std::size_t kCount>
struct NameTable
{
    struct Row
    {
        Enumerator value;
        char const* name;
    };
    std::array<Row, kCount> rows;

    // Case counts. Null has no value.
    std::optional<Enumerator> find(char const* name) const
    {
        return _find(name, [](char const* a, char const* b) { return std::strcmp(a, b); });
    }
    std::optional<Enumerator> findIgnoringCase(char const* name) const { return _find(name, Foundation::Utils::strcasecmp); }

    // The fallback stands for a value without a row.
    char const* nameOf(Enumerator value, char const* fallback) const
    {
        for (Row const& row : rows)
        {
            if (row.value == value)
                return row.name;
        }
        return fallback;
    }

private:
    template <class Compare>
    std::optional<Enumerator> _find(char const* name, Compare compare) const
    {
        for (Row const& row : rows)
        {
            if (name != nullptr && compare(row.name, name) == 0)
                return row.value;
        }
        return std::nullopt;
    }
};

} // namespace Color::Utils

#endif
