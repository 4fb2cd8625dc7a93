// Parameter lists per colour channel, and values of the channels as text.
#ifndef TAVRIN_TRANSFORM_CHANNEL_PARAMETERS_H
#define TAVRIN_TRANSFORM_CHANNEL_PARAMETERS_H

#include "utils/utils.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <initializer_list>
#include <string>
#include <vector>

namespace Color
{

// The values as a default stream prints them, with ", " between.
inline std::string joinValues(std::initializer_list<double> values)
{
    std::string text;
    for (double const value : values)
        text += (text.empty() ? "" : ", ") + Utils::valueString(value);
    return text;
}

// One list of parameters for each channel: red, green, blue and, with four of them, alpha.
template <std::size_t kChannels>
class ChannelParameters
{
public:
    using Values = std::vector<double>;

    Values& operator[](std::size_t channel) { return m_values[channel]; }
    Values const& operator[](std::size_t channel) const { return m_values[channel]; }

    void setColour(Values const& values) { std::fill_n(m_values.begin(), kColours, values); }

    // Element by element.
    bool isColourEqual() const { return m_values[0] == m_values[1] && m_values[0] == m_values[2]; }
    bool isAllEqual() const { return isColourEqual() && m_values.back() == m_values.front(); }

    // The parameter at an index: one number when all channels are equal, otherwise those of red, green and blue. Empty when a
    // colour channel has no such parameter.
    std::string getText(std::size_t index) const
    {
        if (std::any_of(m_values.begin(), m_values.begin() + kColours, [=](Values const& v) { return index >= v.size(); }))
            return {};
        if (isAllEqual())
            return joinValues({m_values[0][index]});
        return joinValues({m_values[0][index], m_values[1][index], m_values[2][index]});
    }

    bool operator==(ChannelParameters const& other) const = default;

private:
    static constexpr std::size_t kColours = 3;
    static_assert(kChannels >= kColours);

    std::array<Values, kChannels> m_values;
};

} // namespace Color

#endif
