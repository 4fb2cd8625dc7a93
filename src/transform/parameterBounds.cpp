// The check of parameter vectors that operators share.
#include "transform/parameterBounds.h"

#include <cstddef>

namespace Color
{

void validateParams(std::vector<double> const& params, std::span<ParameterBounds const> bounds, ErrorSite wrongCount,
                    char const* moduleTag)
{
    if (params.size() != bounds.size())
        throw failure(wrongCount, moduleTag, static_cast<unsigned int>(bounds.size()));
    for (std::size_t i = 0; i < bounds.size(); ++i)
    {
        if (bounds[i].lower > params[i])
            throw failure(ErrorIds::kParameterBelow, moduleTag, params[i], bounds[i].lower);
        if (params[i] > bounds[i].upper)
            throw failure(ErrorIds::kParameterAbove, moduleTag, params[i], bounds[i].upper);
    }
}

} // namespace Color
