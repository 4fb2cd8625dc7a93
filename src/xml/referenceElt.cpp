// The element <Reference>.
#include "xml/referenceElt.h"

#include "xml/ctfVocabulary.h"
#include "xml/xmlReaderAttributes.h"

#include <string>

namespace Color::Xml::Reader
{

void ReferenceElt::start(char const** attributes)
{
    OpElt::start(attributes);

    std::string alias;
    std::string path;
    BasePath basePath = Tavrin::BASE_PATH_NONE;
    AttributeReader reader(*this);
    reader.text(ATTR_ALIAS, [&](char const* value) { alias = value; });
    reader.text(ATTR_PATH, [&](char const* value) { path = value; });
    reader.knownName(ATTR_BASE_PATH, ATTR_BASE_PATH, Tavrin::getBasePath, [&](BasePath value) { basePath = value; });
    reader.read(attributes);

    if (alias.empty())
    {
        if (path.empty())
        {
            throw failure(ErrorIds::kXmlAttributeMissing, ATTR_PATH, getTypeName());
        }
        op().setPath(path, basePath);
        return;
    }
    if (!path.empty())
    {
        throw failure(ErrorIds::kXmlAttributeNotSupportedWithAlias, ATTR_PATH, getTypeName());
    }
    if (basePath != Tavrin::BASE_PATH_NONE)
    {
        throw failure(ErrorIds::kXmlAttributeNotSupportedWithAlias, ATTR_BASE_PATH, getTypeName());
    }
    op().setAlias(alias);
}

} // namespace Color::Xml::Reader
