// The element <Dither>.
#include "xml/ditherElt.h"

#include "xml/ctfVocabulary.h"
#include "xml/xmlReaderAttributes.h"

namespace Color::Xml::Reader
{

void DitherElt::start(char const** attributes)
{
    OpElt::start(attributes);
    AttributeReader reader(*this);
    reader.depth(ATTR_DITHER_BIT_DEPTH, FRIENDLY_ATTR_DITHER_BIT_DEPTH, [this](BitDepth depth) { op().setDitherBitDepth(depth); })
        .required(FRIENDLY_ATTR_DITHER_BIT_DEPTH);
    reader.read(attributes);
}

} // namespace Color::Xml::Reader
