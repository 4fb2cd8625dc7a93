// The owning list of operators. Where an edit makes new neighbours, the later one takes the depth of the earlier, before the list
// itself changes: a refusal leaves the list as it was.
#include "transform/opList.h"

#include "transform/referenceOp.h"
#include "utils/errorMessage.h"

#include <algorithm>

namespace Color
{

namespace
{

template <class Ops>
void requireIndex(Ops const& ops, unsigned int index)
{
    if (index >= ops.size())
        throw failure(ErrorIds::kOpIndexOutOfRange, Module::kOpList, index);
}

void requireOp(Op const* op)
{
    if (op == nullptr)
        throw failure(ErrorIds::kOpNull, Module::kOpList);
}

bool isReference(Op const& op)
{
    return op.getOpType() == Op::OpType::ReferenceOp;
}

void join(Op const& earlier, Op& later)
{
    later.setInputBitDepth(earlier.getOutputBitDepth());
}

} // namespace

OpList::OpList(OpList const& other)
{
    *this += other;
}

OpList& OpList::operator=(OpList const& other)
{
    if (this != &other)
        *this = OpList(other);
    return *this;
}

void OpList::append(Op* op)
{
    std::unique_ptr<Op> owned(op);
    requireOp(op);
    if (!m_ops.empty())
        join(*m_ops.back(), *owned);
    m_ops.push_back(std::move(owned));
}

void OpList::prepend(Op* op)
{
    std::unique_ptr<Op> owned(op);
    requireOp(op);
    if (!m_ops.empty())
        join(*owned, *m_ops.front());
    m_ops.insert(m_ops.begin(), std::move(owned));
}

void OpList::replace(Op* op, unsigned int index)
{
    std::unique_ptr<Op> owned(op);
    requireOp(op);
    requireIndex(m_ops, index);
    m_ops[index] = std::move(owned);
    if (index > 0)
        join(*m_ops[index - 1], *m_ops[index]);
    if (index + 1 < m_ops.size())
        join(*m_ops[index], *m_ops[index + 1]);
}

Op* OpList::remove(unsigned int index)
{
    requireIndex(m_ops, index);
    if (index > 0 && index + 1 < m_ops.size())
        join(*m_ops[index - 1], *m_ops[index + 1]);
    Op* const removed = m_ops[index].release();
    m_ops.erase(m_ops.begin() + index);
    return removed;
}

void OpList::erase(unsigned int index)
{
    delete remove(index);
}

Op& OpList::get(unsigned int index)
{
    requireIndex(m_ops, index);
    return *m_ops[index];
}

Op const& OpList::get(unsigned int index) const
{
    requireIndex(m_ops, index);
    return *m_ops[index];
}

OpList& OpList::operator+=(OpList const& other)
{
    std::size_t const count = other.m_ops.size(); // Fixed here, since the other list may be this one.
    m_ops.reserve(m_ops.size() + count);
    for (std::size_t i = 0; i < count; ++i)
        m_ops.emplace_back(other.m_ops[i]->clone());
    return *this;
}

bool OpList::operator==(OpList const& other) const
{
    return std::equal(m_ops.begin(), m_ops.end(), other.m_ops.begin(), other.m_ops.end(),
                      [](auto const& a, auto const& b) { return a == b || *a == *b; });
}

void OpList::validate() const
{
    for (std::size_t i = 0; i < m_ops.size(); ++i)
    {
        m_ops[i]->validate();
        if (i > 0)
            validateJoint(*m_ops[i - 1], *m_ops[i]);
    }
}

bool OpList::hasReferences() const
{
    return std::any_of(m_ops.begin(), m_ops.end(), [](auto const& op) { return isReference(*op); });
}

bool OpList::hasUnresolvedReferences() const
{
    return std::any_of(m_ops.begin(), m_ops.end(), [](auto const& op) { return op->needsResolving(); });
}

bool OpList::hasAliasReferencesToResolve() const
{
    return std::any_of(m_ops.begin(), m_ops.end(),
                       [](auto const& op) { return isReference(*op) && static_cast<ReferenceOp const&>(*op).isAliasToResolve(); });
}

void OpList::unresolve()
{
    for (auto const& op : m_ops)
        op->unresolve();
}

bool OpList::isDynamic() const
{
    return std::any_of(m_ops.begin(), m_ops.end(), [](auto const& op) { return op->isDynamic(); });
}

bool OpList::hasDynamicProperty(DynamicProperty::Ids id) const
{
    return std::any_of(m_ops.begin(), m_ops.end(), [id](auto const& op) { return op->hasDynamicProperty(id); });
}

void OpList::getDynamicProperty(DynamicProperty& property) const
{
    auto const found =
        std::find_if(m_ops.begin(), m_ops.end(), [&](auto const& op) { return op->hasDynamicProperty(property.id); });
    if (found == m_ops.end())
        throw failure(ErrorIds::kDynamicPropertyNotAvailable, Module::kTransform, DynamicProperty::getName(property.id), "");
    (*found)->getDynamicProperty(property);
}

void OpList::setDynamicProperty(DynamicProperty const& property)
{
    if (!hasDynamicProperty(property.id))
        throw failure(ErrorIds::kDynamicPropertyNotAvailable, Module::kTransform, DynamicProperty::getName(property.id), "");
    for (auto const& op : m_ops)
    {
        if (op->hasDynamicProperty(property.id))
            op->setDynamicProperty(property);
    }
}

} // namespace Color
