// Operators and patterns for tests of the model.
#ifndef TAVRIN_TESTS_TRANSFORM_TEST_OPS_H
#define TAVRIN_TESTS_TRANSFORM_TEST_OPS_H

#include "transform/op.h"

#include <memory>
#include <string>

// Does what the base class does. It passes for a range, whose name messages then show.
class PlainOp : public Color::TypedOp<PlainOp, Color::Op::OpType::RangeOp>
{
public:
    PlainOp(Color::BitDepth in, Color::BitDepth out, std::string const& name = "") : TypedOp(in, out, "", name, {}) {}
};

// Claims to be a reference, unresolved until told otherwise.
class FakeReference : public Color::TypedOp<FakeReference, Color::Op::OpType::ReferenceOp>
{
public:
    explicit FakeReference(bool resolved) : TypedOp(Tavrin::BIT_DEPTH_32f, Tavrin::BIT_DEPTH_32f), m_resolved(resolved) {}

    bool needsResolving() const override { return !m_resolved; }
    void unresolve() override { m_resolved = false; }

private:
    bool m_resolved;
};

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
