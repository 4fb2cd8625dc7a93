// The element <Range>, and those of its limits.
#include "xml/rangeElt.h"

#include "utils/utils.h"
#include "xml/ctfVocabulary.h"
#include "xml/xmlReaderNumbers.h"

#include <vector>

namespace Color::Xml::Reader
{

namespace
{

struct Limit
{
    char const* tag;
    void (RangeOp::*set)(double value);
};

constexpr Limit kLimits[] = {
    {TAG_MIN_IN_VALUE, &RangeOp::setMinInValue},
    {TAG_MAX_IN_VALUE, &RangeOp::setMaxInValue},
    {TAG_MIN_OUT_VALUE, &RangeOp::setMinOutValue},
    {TAG_MAX_OUT_VALUE, &RangeOp::setMaxOutValue},
};

} // namespace

void RangeValueElt::setRawData(std::string const& text, unsigned int line)
{
    std::vector<float> numbers;
    try
    {
        numbers = getNumbers<float>(text);
    }
    catch (Exception const&)
    {
        throw failureAt(ErrorIds::kValuesIllegal, line, truncateString(text), getTypeName());
    }
    if (numbers.size() != 1)
    {
        throw failureAt(ErrorIds::kRangeValueNotSingle, line, getTypeName());
    }
    for (Limit const& limit : kLimits)
    {
        if (Foundation::Utils::strcasecmp(getName().c_str(), limit.tag) == 0)
        {
            (parentAs<RangeElt>().op().*limit.set)(numbers.front());
        }
    }
}

} // namespace Color::Xml::Reader
