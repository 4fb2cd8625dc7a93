// The element <InverseLUT1D>.
#include "xml/invLut1DElt.h"

#include "transform/invLut1DOp.h"

namespace Color::Xml::Reader
{

InvLut1DElt::InvLut1DElt() : BaseLut1DElt(std::make_unique<InvLut1DOp>()) {}

void InvLut1DElt::finalize(unsigned int valuesRead)
{
    BaseLut1DElt::finalize(valuesRead);
    static_cast<InvLut1DOp&>(*getOp()).initializeFromLut1D();
}

} // namespace Color::Xml::Reader
