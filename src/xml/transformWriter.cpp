// Writes <ProcessList>, the root of a transform file, and everything in it.
#include "xml/transformWriter.h"

#include "utils/utils.h"
#include "xml/ctfVersions.h"
#include "xml/ctfVocabulary.h"
#include "xml/opWriters.h"

#include <algorithm>
#include <memory>
#include <vector>

namespace Color::Xml::Writer
{

void TransformWriter::write() const
{
    std::vector<std::unique_ptr<OpWriter>> operators;
    float version = Versions::kOldestWritten;
    for (unsigned int i = 0; i < m_transform.getOps().size(); ++i)
    {
        operators.push_back(createOpWriter(getFormatter(), m_transform.getOps().get(i)));
        version = std::max(version, operators.back()->getMinimumVersion());
    }

    Attributes attributes{{ATTR_VERSION, Utils::valueString(version)}, {ATTR_ID, m_transform.getId()}};
    if (!m_transform.getName().empty())
    {
        attributes.emplace_back(ATTR_NAME, m_transform.getName());
    }
    if (!m_transform.getInverseOfId().empty())
    {
        attributes.emplace_back(ATTR_INVERSE_OF, m_transform.getInverseOfId());
    }
    getFormatter().writeStartTag(TAG_PROCESS_LIST, attributes);
    {
        ScopeIndent const indent(getFormatter());
        writeDescriptions(m_transform.getDescriptions());
        _writeFilled(TAG_INPUT_DESCRIPTOR, m_transform.getInputDescriptor());
        _writeFilled(TAG_OUTPUT_DESCRIPTOR, m_transform.getOutputDescriptor());
        if (!m_transform.getInfo().isEmpty())
        {
            _writeMetadata(m_transform.getInfo());
        }
        for (auto const& writer : operators)
        {
            writer->write();
        }
    }
    getFormatter().writeEndTag(TAG_PROCESS_LIST);
}

void TransformWriter::_writeFilled(char const* tag, std::string const& text) const
{
    if (!text.empty())
    {
        getFormatter().writeContentTag(tag, text);
    }
}

void TransformWriter::_writeMetadata(Metadata const& metadata) const
{
    if (metadata.isLeaf())
    {
        getFormatter().writeContentTag(metadata.getName(), metadata.getValue());
        return;
    }
    getFormatter().writeStartTag(metadata.getName());
    {
        ScopeIndent const indent(getFormatter());
        for (Metadata const& item : metadata.getItems())
        {
            _writeMetadata(item);
        }
    }
    getFormatter().writeEndTag(metadata.getName());
}

} // namespace Color::Xml::Writer
