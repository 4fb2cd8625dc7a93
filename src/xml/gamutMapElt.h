// The element <GamutMap>.
#ifndef TAVRIN_XML_GAMUT_MAP_ELT_H
#define TAVRIN_XML_GAMUT_MAP_ELT_H

#include "transform/gamutMapOp.h"
#include "xml/styledOpElt.h"

namespace Color::Xml::Reader
{

class GamutMapElt : public StyledOpElt<GamutMapOp, GamutMapOp::GamutMapStyle, &GamutMapOp::getGamutMapStyle, &GamutMapOp::setStyle>
{
};

} // namespace Color::Xml::Reader

#endif
