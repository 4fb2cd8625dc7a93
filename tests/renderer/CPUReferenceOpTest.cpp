// References left in a list of operators that is to be rendered.
#include "rendererHarness.h"

#include "support/failure.h"
#include "transform/matrixOp.h"
#include "transform/referenceOp.h"

namespace
{

Failure const kUnresolved{0x810005, "Unresolved transform"};

Color::ReferenceOp reference()
{
    return {Tavrin::BIT_DEPTH_32f, Tavrin::BIT_DEPTH_32f, "", "", Color::Descriptions(), "alias"};
}

TEST(ReferenceRenderer, RefusesAnUnresolvedReference)
{
    EXPECT_EQ(failureOf([] { RendererHarness::kindsOf(reference()); }), kUnresolved);
}

// Its operators have to take its place first.
TEST(ReferenceRenderer, RefusesAResolvedReferenceThatIsLeftInTheList)
{
    Color::OpList ops;
    ops.append(new Color::MatrixOp());
    Color::ReferenceOp resolved = reference();
    resolved.setResolvedOps(ops);
    EXPECT_EQ(failureOf([&] { RendererHarness::kindsOf(resolved); }), kUnresolved);
}

} // namespace
