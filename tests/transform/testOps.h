// Operators and patterns for tests of the model.
#ifndef TAVRIN_TESTS_TRANSFORM_TEST_OPS_H
#define TAVRIN_TESTS_TRANSFORM_TEST_OPS_H

#include "transform/referenceOp.h"

#include <memory>
#include <string>

// Does what the base class does. It passes for a range, whose name messages then show.
class PlainOp : public Color::TypedOp<PlainOp, Color::Op::OpType::RangeOp>
{
public:
    PlainOp(Color::BitDepth in, Color::BitDepth out, std::string const& name = "") : TypedOp(in, out, "", name, {}) {}
};

// 32f to 32f, by this alias.
inline std::unique_ptr<Color::ReferenceOp> unresolvedReference(std::string const& alias)
{
    return std::make_unique<Color::ReferenceOp>(Tavrin::BIT_DEPTH_32f, Tavrin::BIT_DEPTH_32f, "", "", Color::Descriptions(), alias);
}

// The same, resolved to these operators.
inline std::unique_ptr<Color::ReferenceOp> resolvedReference(std::string const& alias, Color::OpList const& ops)
{
    auto reference = unresolvedReference(alias);
    reference->setResolvedOps(ops);
    return reference;
}

// What a generated id looks like.
inline constexpr char const* kUuid = "[0-9a-f]{8}-[0-9a-f]{4}-[0-9a-f]{4}-[0-9a-f]{4}-[0-9a-f]{12}";

// By the operators' own test. Its argument is the base class, so that two objects of one class compare through that.
inline bool areEqual(Color::Op const& a, Color::Op const& b)
{
    return a == b;
}

inline std::shared_ptr<Color::BypassDynamicProperty> bypass(bool value, bool isDynamic)
{
    return std::make_shared<Color::BypassDynamicProperty>(value, isDynamic);
}

#endif
