// The optimizer is a greedy rewriter: rules say what can be done where, actions have priorities, and the best action is carried out
// until none is left that is good enough.
#include "renderer/optimizer.h"

#include "renderer/compose.h"
#include "transform/rangeOp.h"
#include "utils/errorMessage.h"
#include "utils/utils.h"

#include <array>
#include <cstdlib>

namespace Color::TransformTools
{

namespace
{

using OpType = Op::OpType;

// ---------------------------------------------------------------- rules

// Two neighbours, of which the second is missing at the end of a list.
struct Place
{
    Op const& op() const { return ops.get(index); }
    Op const& next() const { return ops.get(index + 1); }
    bool isLone() const { return ops.size() == 1; }
    bool isKept() const { return keepDynamic && op().isDynamic(); }

    OpList const& ops;
    unsigned int index;
    bool keepDynamic;
};

bool isBypassed(Place const& place)
{
    return place.op().getBypass()->getValue() && !place.isKept();
}

// A 3D table clamps, and is never worth the test of all its values. A lone matrix or range has to be something: there is always a
// renderer.
bool isNeedless(Place const& place)
{
    OpType const type = place.op().getOpType();
    if (type == OpType::Lut3DOp || (place.isLone() && (type == OpType::MatrixOp || type == OpType::RangeOp)))
        return false;
    return !place.isKept() && place.op().isIdentity();
}

bool isLast(Place const& place)
{
    return place.index + 1 == place.ops.size();
}

bool wouldMixDynamicWithStatic(Place const& place)
{
    return place.keepDynamic && place.op().isDynamic() != place.next().isDynamic();
}

// A half domain has rows for every input, and so clamps nothing.
bool clampsItsInput(Op const& op)
{
    switch (op.getOpType())
    {
    case OpType::Lut3DOp:
        return true;
    case OpType::Lut1DOp:
        return !static_cast<Lut1DOp const&>(op).isInputHalfDomain();
    case OpType::RangeOp:
        return static_cast<RangeOp const&>(op).clampsToLutDomain();
    default:
        return false;
    }
}

bool isClampBeforeClamp(Place const& place)
{
    if (place.op().getOpType() != OpType::RangeOp || static_cast<RangeOp const&>(place.op()).scales(true))
        return false;
    return clampsItsInput(place.next());
}

template <OpType kType>
bool arePair(Place const& place)
{
    return checkForPair(place.ops, place.index, kType, kType);
}

// A hue adjustment mixes the channels, which a table of three columns can't.
bool arePlainLut1Ds(Place const& place)
{
    auto const isPlain = [](Op const& op) { return static_cast<Lut1DOp const&>(op).getHueAdjust() == Lut1DOp::HueAdjust::None; };
    return arePair<OpType::Lut1DOp>(place) && isPlain(place.op()) && isPlain(place.next());
}

struct Rule
{
    bool (*applies)(Place const& place);
    OptimActionType action;
};

// The first rule that applies decides.
constexpr Rule kRules[] = {
    {isBypassed, OptimActionType::Remove},
    {isNeedless, OptimActionType::Remove},
    {isLast, OptimActionType::None},
    {wouldMixDynamicWithStatic, OptimActionType::None},
    {isClampBeforeClamp, OptimActionType::DropClamp},
    {arePair<OpType::MatrixOp>, OptimActionType::ComposeMatrices},
    {arePlainLut1Ds, OptimActionType::ComposeLut1Ds},
    {arePair<OpType::Lut3DOp>, OptimActionType::ComposeLut3Ds},
};

// ---------------------------------------------------------------- actions

void refuse(OpList&, unsigned int)
{
    throw failure(ErrorIds::kNullOptimizerAction, Module::kRenderer);
}

bool isTable(Op const& op)
{
    return op.getOpType() == OpType::Lut1DOp || op.getOpType() == OpType::InvLut1DOp || op.getOpType() == OpType::Lut3DOp;
}

// The clamp that a table does, whatever its values.
Op* makeDomainClamp(BitDepth in, BitDepth out)
{
    return new RangeOp(in, out, 0.0, Tavrin::getBitDepthMaxValue(in), 0.0, Tavrin::getBitDepthMaxValue(out));
}

// A list never becomes empty.
void removeOp(OpList& ops, unsigned int index)
{
    Op const& op = ops.get(index);
    BitDepth const in = op.getInputBitDepth();
    BitDepth const out = op.getOutputBitDepth();
    if (isTable(op))
        ops.replace(makeDomainClamp(in, out), index);
    else if (ops.size() == 1)
        ops.replace(new MatrixOp(in, out, {}, {}, {}), index);
    else
        ops.erase(index);
}

void dropOp(OpList& ops, unsigned int index)
{
    ops.erase(index);
}

void replacePair(OpList& ops, unsigned int index, std::unique_ptr<Op> both)
{
    ops.replace(both.release(), index);
    ops.erase(index + 1);
}

template <class Operator>
Operator const& opAt(OpList const& ops, unsigned int index)
{
    return static_cast<Operator const&>(ops.get(index));
}

void composeMatrices(OpList& ops, unsigned int index)
{
    auto const& first = opAt<MatrixOp>(ops, index);
    std::unique_ptr<MatrixOp> both = compose(first, opAt<MatrixOp>(ops, index + 1));
    both->setBypass(first.getBypass());
    replacePair(ops, index, std::move(both));
}

void composeLut1Ds(OpList& ops, unsigned int index)
{
    replacePair(ops, index, compose(opAt<Lut1DOp>(ops, index), opAt<Lut1DOp>(ops, index + 1), ComposeMethod::FullGrid));
}

void composeLut3Ds(OpList& ops, unsigned int index)
{
    replacePair(ops, index, compose(opAt<Lut3DOp>(ops, index), opAt<Lut3DOp>(ops, index + 1)));
}

struct Action
{
    unsigned int priority;
    void (*apply)(OpList& ops, unsigned int index);
};

// In the order of OptimActionType.
constexpr std::array kActions = {
    Action{0, refuse},           // None
    Action{100, removeOp},       // Remove
    Action{99, dropOp},          // DropClamp
    Action{95, composeMatrices}, // ComposeMatrices
    Action{75, composeLut1Ds},   // ComposeLut1Ds
    Action{45, composeLut3Ds},   // ComposeLut3Ds
};

Action const& actionOf(OptimActionType type)
{
    return kActions.at(static_cast<std::size_t>(type));
}

// An action above this one shortens the list at hardly any cost, so the search for a better one is not worth while.
constexpr unsigned int kPriorityWorthASearch = 95;

// ---------------------------------------------------------------- environment

long readOverride(char const* variable)
{
    char const* const value = Foundation::Utils::getEnv(variable);
    return value == nullptr ? -1 : std::strtol(value, nullptr, 10);
}

OptimizerOverrides const kOverridesAtLoad = OptimizerOverrides::fromEnvironment();

void validate(Transform& transform)
{
    try
    {
        transform.validate();
    }
    catch (Exception const& cause)
    {
        throw failure(cause, ErrorIds::kOptimizationFailed, Module::kRenderer);
    }
}

} // namespace

void OptimAction::findAction(std::shared_ptr<Transform> const& transform, bool keepDynamic)
{
    resetAction();
    OpList const& ops = transform->getOps();
    for (unsigned int i = 0; i < ops.size() && priority <= kPriorityWorthASearch; ++i)
    {
        OptimAction const candidate = nextAction(ops, static_cast<int>(i), keepDynamic);
        if (candidate.priority > priority)
            *this = candidate;
    }
}

OptimAction OptimAction::nextAction(OpList const& ops, int index, bool keepDynamic)
{
    Place const place{ops, static_cast<unsigned int>(index), keepDynamic};
    for (Rule const& rule : kRules)
    {
        if (!rule.applies(place))
            continue;
        if (rule.action == OptimActionType::None)
            break;
        return {rule.action, place.index, actionOf(rule.action).priority};
    }
    return {};
}

void OptimAction::applyAction(std::shared_ptr<Transform>& transform)
{
    actionOf(type).apply(transform->getOps(), index);
    resetAction();
}

bool checkForPair(OpList const& ops, unsigned int index, Op::OpType first, Op::OpType second)
{
    return index + 1 < ops.size() && ops.get(index).getOpType() == first && ops.get(index + 1).getOpType() == second;
}

// Numbers in base 10, as strtol reads them: what is none counts as 0.
OptimizerOverrides OptimizerOverrides::fromEnvironment()
{
    return {readOverride("TAVRIN_OPTIMIZER_VALUE"), readOverride("TAVRIN_OPTIMIZER_KEEP_DYNAMIC_OPS")};
}

void optimize(std::shared_ptr<Transform>& transform, Tavrin::OptimizerFlags flags)
{
    optimize(transform, flags, kOverridesAtLoad);
}

void optimize(std::shared_ptr<Transform>& transform, Tavrin::OptimizerFlags flags, OptimizerOverrides const& overrides)
{
    unsigned long const threshold = overrides.threshold >= 0 ? static_cast<unsigned long>(overrides.threshold)
                                                             : flags & ~static_cast<unsigned int>(Tavrin::OPTIMIZER_KEEP_DYNAMIC);
    bool const keepDynamic = overrides.keepDynamic >= 0 ? overrides.keepDynamic > 0 : (flags & Tavrin::OPTIMIZER_KEEP_DYNAMIC) != 0;

    OptimAction action;
    action.findAction(transform, keepDynamic);
    if (action.priority < threshold)
        return;
    while (action.priority >= threshold)
    {
        action.applyAction(transform);
        action.findAction(transform, keepDynamic);
    }
    validate(*transform);
}

} // namespace Color::TransformTools
