// The model of one transform: identity, descriptive fields and the list of operators.
#include "transform/transform.h"

#include "transform/referenceOp.h"
#include "utils/errorMessage.h"
#include "utils/utils.h"

namespace Color
{

namespace
{

constexpr char const* kInfoName = "Info";

template <class Ops>
auto& firstOf(Ops& ops)
{
    if (ops.empty())
        throw failure(ErrorIds::kEmptyTransform, Module::kTransform);
    return ops.get(0);
}

template <class Ops>
auto& lastOf(Ops& ops)
{
    if (ops.empty())
        throw failure(ErrorIds::kEmptyTransform, Module::kTransform);
    return ops.get(ops.size() - 1);
}

bool isLeftOutOfFlatCopies(Op const& op)
{
    return op.getBypass()->getValue() && !op.getBypass()->isDynamic();
}

// Goes through append, which closes the gap in depths that an operator leaves.
void appendFlat(OpList const& ops, OpList& flat)
{
    for (unsigned int i = 0; i < ops.size(); ++i)
    {
        Op const& op = ops.get(i);
        if (isLeftOutOfFlatCopies(op))
            continue;
        if (op.getOpType() == Op::OpType::ReferenceOp)
            appendFlat(static_cast<ReferenceOp const&>(op).getResolvedOps(), flat);
        else
            flat.append(op.clone());
    }
}

} // namespace

Transform::Transform() : Transform(Utils::generateUUID(), {}, {}, {}, {}) {}

Transform::Transform(std::string const& id, std::string const& name, Descriptions const& descriptions,
                     std::string const& inputDescriptor, std::string const& outputDescriptor)
    : m_id(id),
      m_name(name),
      m_info(kInfoName),
      m_descriptions(descriptions),
      m_inputDescriptor(inputDescriptor),
      m_outputDescriptor(outputDescriptor)
{
}

Transform::~Transform() = default;

void Transform::validate()
{
    if (m_id.empty())
        m_id = Utils::generateUUID();
    m_ops.validate();
}

void Transform::setId(std::string const& id)
{
    if (id.empty())
        throw failure(ErrorIds::kTransformIdEmpty, Module::kTransform);
    m_id = id;
}

bool Transform::isInverseOf(Transform const& other) const
{
    return m_inverseOfId == other.m_id;
}

BitDepth Transform::getInputBitDepth() const
{
    return firstOf(m_ops).getInputBitDepth();
}

BitDepth Transform::getOutputBitDepth() const
{
    return lastOf(m_ops).getOutputBitDepth();
}

void Transform::setInputBitDepth(BitDepth depth)
{
    firstOf(m_ops).setInputBitDepth(depth);
}

void Transform::setOutputBitDepth(BitDepth depth)
{
    lastOf(m_ops).setOutputBitDepth(depth);
}

void Transform::append(Transform const& other)
{
    m_descriptions += other.m_descriptions;
    m_ops += other.m_ops;
}

std::shared_ptr<Transform> Transform::clone(CloneType type) const
{
    auto copy = std::make_shared<Transform>(m_id, m_name, m_descriptions, m_inputDescriptor, m_outputDescriptor);
    copy->m_inverseOfId = m_inverseOfId;
    if (type == CloneType::Plain)
        copy->m_ops = m_ops;
    else
        appendFlat(m_ops, copy->m_ops);
    return copy;
}

bool Transform::operator==(Transform const& other) const
{
    return m_id == other.m_id && m_name == other.m_name && m_descriptions == other.m_descriptions &&
           m_inputDescriptor == other.m_inputDescriptor && m_outputDescriptor == other.m_outputDescriptor &&
           m_inverseOfId == other.m_inverseOfId && m_ops == other.m_ops;
}

} // namespace Color
