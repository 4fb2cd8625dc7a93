// The element <DynamicParameter>.
#include "xml/dynamicParamElt.h"

#include "utils/utils.h"
#include "xml/ctfVocabulary.h"
#include "xml/opElt.h"
#include "xml/xmlReaderAttributes.h"

#include <algorithm>
#include <iterator>

namespace Color::Xml::Reader
{

namespace
{

struct Parameter
{
    char const* name;
    DynamicProperty::Ids property;
};

constexpr Parameter kParameters[] = {
    {TAG_EXPOSURE, DynamicProperty::EXPOSURE},
    {TAG_CONTRAST, DynamicProperty::CONTRAST},
    {TAG_LOOK, DynamicProperty::BYPASS},
};

} // namespace

void DynamicParamElt::start(char const** attributes)
{
    AttributeReader reader(*this);
    reader.text(ATTR_PARAM,
                [this](char const* value)
                {
                    auto& parent = parentAs<OpElt>();
                    auto const* const parameter =
                        std::find_if(std::begin(kParameters), std::end(kParameters),
                                     [&](Parameter const& known) { return Foundation::Utils::strcasecmp(value, known.name) == 0; });
                    if (parameter == std::end(kParameters) || !parent.makeDynamic(parameter->property))
                    {
                        throw Color::failure(ErrorIds::kDynamicParameterInvalid, Module::kXmlReader, value, parent.getTypeName());
                    }
                });
    reader.read(attributes);
}

} // namespace Color::Xml::Reader
