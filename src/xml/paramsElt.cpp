// The base of the elements that give an operator its parameters as attributes.
#include "xml/paramsElt.h"

#include "xml/ctfVocabulary.h"
#include "xml/xmlReaderAttributes.h"

#include <cctype>
#include <cmath>
#include <limits>

namespace Color::Xml::Reader
{

void ParamsElt::start(char const** attributes)
{
    std::vector<Param> const params = getParams();
    Values found(params.size(), std::numeric_limits<double>::quiet_NaN());
    std::optional<unsigned int> channel;

    AttributeReader reader(*this);
    addRules(reader);
    if (*getChannels() != '\0')
    {
        reader.text(ATTR_CHAN, [&](char const* name) { channel = _getChannelNumber(name); });
    }
    for (std::size_t i = 0; i < params.size(); ++i)
    {
        reader.number(params[i].attribute, found[i]);
    }
    reader.read(attributes);

    setParams(channel, _takeNeeded(params, found));
}

std::vector<ParamsElt::Param> ParamsElt::needed(std::span<char const* const> attributes)
{
    std::vector<Param> params;
    for (char const* const attribute : attributes)
    {
        params.push_back({attribute});
    }
    return params;
}

unsigned int ParamsElt::_getChannelNumber(char const* name) const
{
    std::string const channels = getChannels();
    bool const isLetter = name[0] != '\0' && name[1] == '\0';
    std::size_t const number =
        isLetter ? channels.find(static_cast<char>(std::toupper(static_cast<unsigned char>(name[0])))) : std::string::npos;
    if (number == std::string::npos)
    {
        throw failure(ErrorIds::kChannelAttributeIllegal, getTypeName(), name);
    }
    return static_cast<unsigned int>(number);
}

ParamsElt::Values ParamsElt::_takeNeeded(std::vector<Param> const& params, Values const& found) const
{
    Values values;
    for (std::size_t i = 0; i < params.size(); ++i)
    {
        // No attribute gives a NaN: it is refused as a number.
        bool const isSet = !std::isnan(found[i]);
        if (isSet != params[i].isNeeded)
        {
            throw failure(isSet ? ErrorIds::kParamNotAllowed : ErrorIds::kParamRequired, params[i].attribute, getStyleName(),
                          getTypeName());
        }
        if (isSet)
        {
            values.push_back(found[i]);
        }
    }
    return values;
}

} // namespace Color::Xml::Reader
