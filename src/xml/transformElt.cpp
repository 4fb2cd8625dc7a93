// The element <ProcessList>, the root of a transform file, and the texts that describe a transform or an operator.
#include "xml/transformElt.h"

#include "utils/utils.h"
#include "xml/ctfVersions.h"
#include "xml/ctfVocabulary.h"
#include "xml/xmlReaderAttributes.h"
#include "xml/xmlReaderNumbers.h"

namespace Color::Xml::Reader
{

TransformElt::TransformElt(std::string const& name, unsigned int line, std::string const& file)
    : ContainerElt(name, line, file), m_transform(std::make_shared<Transform>())
{
}

std::string const& TransformElt::getTypeName() const
{
    static std::string const name = TAG_PROCESS_LIST;
    return name;
}

void TransformElt::start(char const** attributes)
{
    bool hasVersion = false;
    AttributeReader reader(*this);
    reader.filledText(ATTR_ID, FRIENDLY_ATTR_ID, [&](char const* value) { m_transform->setId(value); }).required(FRIENDLY_ATTR_ID);
    reader.filledText(ATTR_NAME, FRIENDLY_ATTR_NAME, [&](char const* value) { m_transform->setName(value); });
    // Messages cite this one without the blank of its friendly name.
    reader.filledText(ATTR_INVERSE_OF, "InverseOf", [&](char const* value) { m_transform->setInverseOfId(value); });
    reader.filledText(ATTR_VERSION, FRIENDLY_ATTR_VERSION,
                      [&](char const* value)
                      {
                          _readVersion(value);
                          hasVersion = true;
                      });
    reader.read(attributes);
    if (!hasVersion)
    {
        setVersion(Versions::kWithoutAttribute);
    }
}

void TransformElt::_readVersion(char const* text)
{
    float version = 0.0F;
    if (!scanNumber(text, version))
    {
        throw failure(ErrorIds::kVersionInvalid, text, getTypeName());
    }
    setVersion(version);
}

void TransformElt::setVersion(float version)
{
    if (version > Versions::kNewest)
    {
        throw failure(ErrorIds::kVersionUnsupported, Utils::valueString(version), getTypeName());
    }
    m_version = version;
}

void TransformElt::end()
{
    m_transform->setInputDescriptor(m_inputDescriptor);
    m_transform->setOutputDescriptor(m_outputDescriptor);
    m_transform->validate();
}

void TransformElt::appendDescription(std::string const& text)
{
    m_transform->getDescriptions() += text;
}

void DescriptionElt::setRawData(std::string const& text, unsigned int)
{
    getParent()->appendDescription(text);
}

void InputDescriptorElt::setRawData(std::string const& text, unsigned int)
{
    parentAs<TransformElt>().getInputDescriptor() += text;
}

void OutputDescriptorElt::setRawData(std::string const& text, unsigned int)
{
    parentAs<TransformElt>().getOutputDescriptor() += text;
}

} // namespace Color::Xml::Reader
