// Writes elements that hold an operator's parameters as attributes, for all channels or one of them.
#include "xml/paramsWriter.h"

#include "utils/utils.h"
#include "xml/ctfVocabulary.h"

#include <algorithm>
#include <string>

namespace Color::Xml::Writer
{

void addParams(Attributes& attributes, ParamNames names, Params const& values)
{
    for (std::size_t i = 0; i < std::min(names.size(), values.size()); ++i)
    {
        attributes.emplace_back(names[i], Utils::valueString(values[i]));
    }
}

void writeParams(Formatter& formatter, char const* tag, ParamNames names, Params const& values)
{
    Attributes attributes;
    addParams(attributes, names, values);
    formatter.writeEmptyTag(tag, attributes);
}

void writeChannelParams(Formatter& formatter, char const* tag, ParamNames names, std::initializer_list<Params> channels)
{
    char const* letter = CHANNEL_LETTERS;
    for (Params const& values : channels)
    {
        Attributes attributes{{ATTR_CHAN, std::string(1, *letter++)}};
        addParams(attributes, names, values);
        formatter.writeEmptyTag(tag, attributes);
    }
}

} // namespace Color::Xml::Writer
