// The base of the operators' writers.
#include "xml/opWriter.h"

#include "xml/ctfElements.h"
#include "xml/ctfVocabulary.h"

namespace Color::Xml::Writer
{

void OpWriter::write() const
{
    char const* const tag = Reader::getOperatorTag(m_op.getOpType());
    Attributes attributes;
    _getAttributes(attributes);
    getFormatter().writeStartTag(tag, attributes);
    {
        ScopeIndent const indent(getFormatter());
        writeDescriptions(m_op.getDescriptions());
        if (m_op.getBypass()->isDynamic())
        {
            writeDynamicParameter(getFormatter(), TAG_LOOK);
        }
        _writeContent();
    }
    getFormatter().writeEndTag(tag);
}

void OpWriter::_getAttributes(Attributes& attributes) const
{
    if (!m_op.getId().empty())
    {
        attributes.emplace_back(ATTR_ID, m_op.getId());
    }
    if (!m_op.getName().empty())
    {
        attributes.emplace_back(ATTR_NAME, m_op.getName());
    }
    attributes.emplace_back(ATTR_IN_BIT_DEPTH, Tavrin::getBitDepthName(m_op.getInputBitDepth()));
    attributes.emplace_back(ATTR_OUT_BIT_DEPTH, Tavrin::getBitDepthName(m_op.getOutputBitDepth()));
    if (m_op.getBypass()->getValue())
    {
        attributes.emplace_back(ATTR_BYPASS, "true");
    }
}

void writeDynamicParameter(Formatter& formatter, char const* name)
{
    formatter.writeEmptyTag(TAG_DYNAMIC_PARAMETER, {{ATTR_PARAM, name}});
}

} // namespace Color::Xml::Writer
