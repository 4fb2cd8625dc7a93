// The base of what writes an element of a transform file.
#include "xml/elementWriter.h"

#include "xml/ctfVocabulary.h"

namespace Color::Xml::Writer
{

void ElementWriter::writeDescriptions(Descriptions const& descriptions) const
{
    for (std::string const& text : descriptions.getList())
    {
        m_formatter.writeContentTag(TAG_DESCRIPTION, text);
    }
}

} // namespace Color::Xml::Writer
