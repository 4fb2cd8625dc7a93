// Simplifies an operator list before renderers are built: operators that do nothing go, neighbours become one.
#ifndef TAVRIN_RENDERER_OPTIMIZER_H
#define TAVRIN_RENDERER_OPTIMIZER_H

#include "transform/transform.h"

#include <tavrin/vocabulary.h>

#include <memory>

namespace Color::TransformTools
{

enum class OptimActionType : unsigned int
{
    None = 0,
    // An operator that does nothing; a table leaves the clamp to its domain behind.
    Remove = 1,
    // A range that only clamps, in front of an operator that clamps anyway.
    DropClamp = 2,
    ComposeMatrices = 3,
    ComposeLut1Ds = 4,
    ComposeLut3Ds = 5
};

// One simplification of a list.
struct OptimAction
{
    OptimActionType type = OptimActionType::None;
    unsigned int index = 0; // of the first operator concerned
    unsigned int priority = 0;

    void resetAction() { *this = OptimAction(); }
    // Becomes the one of the highest priority in the list, the first of equals; none when there is nothing to simplify.
    void findAction(std::shared_ptr<Transform> const& transform, bool keepDynamic);
    // What can be done at that index, which has to be inside the list; perhaps nothing. An operator with a dynamic property that is
    // to be kept is neither removed nor joined with one that has none.
    static OptimAction nextAction(OpList const& ops, int index, bool keepDynamic);
    // Carries itself out and is none afterwards. Throws when it was none before.
    void applyAction(std::shared_ptr<Transform>& transform);
};

// Whether the operators at the index and behind it are of these types.
bool checkForPair(OpList const& ops, unsigned int index, Op::OpType first, Op::OpType second);

// What the environment says in place of a caller's flags; a negative number says nothing.
struct OptimizerOverrides
{
    long threshold = -1;
    long keepDynamic = -1;

    // "TAVRIN_OPTIMIZER_VALUE" and "TAVRIN_OPTIMIZER_KEEP_DYNAMIC_OPS".
    static OptimizerOverrides fromEnvironment();
};

// Carries out, in place, all actions whose priority is at least the threshold in the flags, the best one first, and validates the
// result; a list with no such action is left as it was. A threshold of 0 always ends in a failure, one above 100 does nothing. A
// failure leaves the list partly simplified. The overrides are those that the environment had when the library was loaded.
void optimize(std::shared_ptr<Transform>& transform, Tavrin::OptimizerFlags flags);
void optimize(std::shared_ptr<Transform>& transform, Tavrin::OptimizerFlags flags, OptimizerOverrides const& overrides);

} // namespace Color::TransformTools

#endif
