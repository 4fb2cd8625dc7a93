// The base of the operators' elements.
#include "xml/opElt.h"

#include "xml/ctfVocabulary.h"
#include "xml/xmlReaderAttributes.h"

namespace Color::Xml::Reader
{

OpElt::OpElt(std::unique_ptr<Op> op) : m_unlistedOp(std::move(op)), m_op(m_unlistedOp.get()) {}

OpElt::~OpElt() = default;

void OpElt::setContext(std::string const& name, std::shared_ptr<Transform> const& transform, unsigned int line,
                       std::string const& file)
{
    ContainerElt::setContext(name, line, file);
    m_transform = transform;
    if (!m_transform)
    {
        throw failure(ErrorIds::kXmlTagMissing, TAG_PROCESS_LIST);
    }
}

void OpElt::start(char const** attributes)
{
    m_transform->getOps().append(m_unlistedOp.release());

    AttributeReader reader(*this);
    reader.text(ATTR_ID, [this](char const* value) { m_op->setId(value); });
    reader.text(ATTR_NAME, [this](char const* value) { m_op->setName(value); });
    reader.depth(ATTR_IN_BIT_DEPTH, FRIENDLY_ATTR_IN_BIT_DEPTH, [this](BitDepth depth) { m_op->setInputBitDepth(depth); })
        .required(FRIENDLY_ATTR_IN_BIT_DEPTH);
    reader.depth(ATTR_OUT_BIT_DEPTH, FRIENDLY_ATTR_OUT_BIT_DEPTH, [this](BitDepth depth) { m_op->setOutputBitDepth(depth); })
        .required(FRIENDLY_ATTR_OUT_BIT_DEPTH);
    reader.trimmedWord(ATTR_BYPASS, "true", ErrorIds::kBypassAttributeIllegal, [this] { m_op->getBypass()->setValue(true); });
    reader.read(attributes);
}

void OpElt::end()
{
    m_op->validate();
}

void OpElt::appendDescription(std::string const& text)
{
    m_op->getDescriptions() += text;
}

bool OpElt::makeDynamic(DynamicProperty::Ids id)
{
    bool const isBypass = id == DynamicProperty::BYPASS;
    if (isBypass)
    {
        m_op->getBypass()->setDynamic(true);
    }
    return isBypass;
}

} // namespace Color::Xml::Reader
