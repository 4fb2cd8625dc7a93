// The base of all operators: depths, texts, bypass, and what an operator answers when its class says nothing else.
#include "transform/op.h"

#include "transform/opList.h"
#include "utils/errorMessage.h"

#include <array>

namespace Color
{

namespace
{

void requireDepth(BitDepth depth, char const* attribute, Op const& op)
{
    if (depth == Tavrin::BIT_DEPTH_UNKNOWN)
        throw failure(ErrorIds::kOpAttributeMissing, Module::kTransform, attribute, op.getMeaningfullIdentifier());
}

} // namespace

float depthRatio(BitDepth numerator, BitDepth denominator)
{
    return Tavrin::getBitDepthMaxValue(numerator) / Tavrin::getBitDepthMaxValue(denominator);
}

void validateJoint(Op const& first, Op const& second)
{
    if (first.getOutputBitDepth() != second.getInputBitDepth())
        throw failure(ErrorIds::kOpDepthMismatch, Module::kOpList, first.getMeaningfullIdentifier(),
                      second.getMeaningfullIdentifier());
}

std::string const& getOpTypeName(Op::OpType type)
{
    static auto const names = std::to_array<std::string>({
#define TAVRIN_OP(number, Class, name, Family) name,
#include "transform/opTypes.def"
#undef TAVRIN_OP
    });
    return names.at(static_cast<std::size_t>(type));
}

Op::Op(BitDepth in, BitDepth out) : Op(in, out, {}, {}, {}) {}

Op::Op(BitDepth in, BitDepth out, std::string const& id, std::string const& name, Descriptions const& descriptions)
    : m_inBitDepth(in),
      m_outBitDepth(out),
      m_id(id),
      m_name(name),
      m_descriptions(descriptions),
      m_bypass(std::make_shared<BypassDynamicProperty>(false, false))
{
}

Op::Op(Op const& other)
    : m_inBitDepth(other.m_inBitDepth),
      m_outBitDepth(other.m_outBitDepth),
      m_id(other.m_id),
      m_name(other.m_name),
      m_descriptions(other.m_descriptions),
      m_bypass(shareOrCopy(other.m_bypass))
{
}

Op& Op::operator=(Op const& other)
{
    if (this == &other)
        return *this;
    m_inBitDepth = other.m_inBitDepth;
    m_outBitDepth = other.m_outBitDepth;
    m_id = other.m_id;
    m_name = other.m_name;
    m_descriptions = other.m_descriptions;
    setBypass(other.m_bypass);
    return *this;
}

Op::~Op() = default;

void Op::setInputBitDepth(BitDepth depth)
{
    m_inBitDepth = depth;
}

void Op::setOutputBitDepth(BitDepth depth)
{
    m_outBitDepth = depth;
}

void Op::validate() const
{
    requireDepth(m_inBitDepth, "InBitDepth", *this);
    requireDepth(m_outBitDepth, "OutBitDepth", *this);
}

bool Op::isNoop() const
{
    return m_inBitDepth == m_outBitDepth && isIdentity();
}

bool Op::isIdentity() const
{
    return false;
}

bool Op::needsResolving() const
{
    return false;
}

bool Op::isDynamic() const
{
    return m_bypass->isDynamic();
}

bool Op::hasDynamicProperty(DynamicProperty::Ids id) const
{
    return m_bypass->getIdentifier() == id && m_bypass->isDynamic();
}

// Both ask the base's own test: a derived class answers for its own properties before it comes here.
void Op::setDynamicProperty(DynamicProperty const& property)
{
    if (!Op::hasDynamicProperty(property.id))
        throw failure(ErrorIds::kDynamicPropertyNotAvailable, Module::kTransform, DynamicProperty::getName(property.id),
                      getMeaningfullIdentifier());
    m_bypass->setContent(property);
}

void Op::getDynamicProperty(DynamicProperty& property) const
{
    if (!Op::hasDynamicProperty(property.id))
        throw failure(ErrorIds::kDynamicPropertyNotAvailable, Module::kTransform, DynamicProperty::getName(property.id),
                      getMeaningfullIdentifier());
    m_bypass->getContent(property);
}

bool Op::operator==(Op const& other) const
{
    if (this == &other)
        return true;
    return m_inBitDepth == other.m_inBitDepth && m_outBitDepth == other.m_outBitDepth && m_id == other.m_id &&
           m_name == other.m_name && m_descriptions == other.m_descriptions && sameProperty(m_bypass, other.m_bypass);
}

void Op::inverse(OpList&) const
{
    throw failure(ErrorIds::kInverseNotSupported, Module::kTransform, getOpTypeName());
}

void Op::unresolve() {}

float Op::getMinimumVersion() const
{
    return 1.3F;
}

std::string const& Op::getMeaningfullIdentifier() const
{
    if (!m_name.empty())
        return m_name;
    return m_id.empty() ? getOpTypeName() : m_id;
}

void Op::setBypass(std::shared_ptr<BypassDynamicProperty> const& bypass)
{
    m_bypass = shareOrCopy(bypass);
}

float Op::getValueStepSize(BitDepth depth, unsigned int n)
{
    return Tavrin::getBitDepthValueRange(depth) / static_cast<float>(n - 1);
}

} // namespace Color
