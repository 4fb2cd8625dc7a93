// An ordered list that owns its operators and keeps the depths of neighbours equal.
#ifndef TAVRIN_TRANSFORM_OP_LIST_H
#define TAVRIN_TRANSFORM_OP_LIST_H

#include "transform/op.h"

#include <memory>
#include <vector>

namespace Color
{

// Operators are owned by one list and never shared between lists. Editing that throws leaves the list as it was.
class OpList
{
public:
    OpList() = default;
    // Clones every operator.
    OpList(OpList const& other);
    OpList& operator=(OpList const& other);
    OpList(OpList&&) noexcept = default;
    OpList& operator=(OpList&&) noexcept = default;
    ~OpList() = default;

    // These take ownership, also when they refuse the operator. The later one of two new neighbours takes the depth of the earlier.
    void append(Op* op);
    void prepend(Op* op);
    void replace(Op* op, unsigned int index);
    // The operator is now the caller's.
    Op* remove(unsigned int index);
    void erase(unsigned int index);

    Op& get(unsigned int index);
    Op const& get(unsigned int index) const;
    unsigned int size() const { return static_cast<unsigned int>(m_ops.size()); }
    bool empty() const { return m_ops.empty(); }

    // Appends clones without any change of depths.
    OpList& operator+=(OpList const& other);
    bool operator==(OpList const& other) const;

    // Validates each operator and the depths between them.
    void validate() const;

    bool hasReferences() const;
    bool hasUnresolvedReferences() const;
    bool hasAliasReferencesToResolve() const;
    void unresolve();

    bool isDynamic() const;
    bool hasDynamicProperty(DynamicProperty::Ids id) const;
    // The first operator with this property answers.
    void getDynamicProperty(DynamicProperty& property) const;
    // Every operator with this property receives it.
    void setDynamicProperty(DynamicProperty const& property);

private:
    std::vector<std::unique_ptr<Op>> m_ops;
};

} // namespace Color

#endif
