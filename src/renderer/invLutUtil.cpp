// Samples an inverse table by rendering the identity of its input through it.
#include "renderer/invLutUtil.h"

#include "renderer/compose.h"

namespace Rendering::InvLutUtil
{

std::unique_ptr<Color::Lut1DOp> makeFastLut1D(Color::InvLut1DOp const& op, bool forGPU)
{
    Color::InvLut1DOp exact(op);
    exact.setInvStyle(Color::InvLut1DOp::InvStyle::Exact);
    exact.setBypass(std::make_shared<Color::BypassDynamicProperty>(false, false)); // The table is wanted when it is off again.
    Tavrin::BitDepth const depth = forGPU && !exact.hasExtendedDomain() ? Tavrin::BIT_DEPTH_12i : exact.getInputBitDepth();
    std::unique_ptr<Color::Lut1DOp> const domain = exact.makeLookupDomain(depth);
    domain->setOutputBitDepth(exact.getInputBitDepth());
    std::unique_ptr<Color::Lut1DOp> fast =
        Color::TransformTools::compose(*domain, exact, Color::TransformTools::ComposeMethod::FirstGrid);
    fast->setBypass(op.getBypass());
    return fast;
}

} // namespace Rendering::InvLutUtil
