// The base of all operators.
#ifndef TAVRIN_TRANSFORM_OP_H
#define TAVRIN_TRANSFORM_OP_H

#include "transform/descriptions.h"
#include "utils/dynamicPropertyImp.h"

#include <tavrin/vocabulary.h>

#include <memory>
#include <string>

namespace Color
{

using Tavrin::BitDepth;

class OpList;

// One step of a transform. It works on values in the code-value scale of its own depths: a change of a depth rescales its
// parameters, so that the same signal gives the same signal, and no stage of a pipeline converts depths.
class Op
{
public:
    enum class OpType : unsigned int
    {
#define TAVRIN_OP(number, Class, name, Family) Class = number,
#include "transform/opTypes.def"
#undef TAVRIN_OP
    };

    Op(BitDepth in, BitDepth out);
    Op(BitDepth in, BitDepth out, std::string const& id, std::string const& name, Descriptions const& descriptions);
    // Copies share a dynamic bypass and own a static one.
    Op(Op const& other);
    Op& operator=(Op const& other);

    virtual ~Op();
    // A deep copy that the caller owns.
    virtual Op* clone() const = 0;
    virtual void setInputBitDepth(BitDepth depth);
    virtual void setOutputBitDepth(BitDepth depth);
    // Throws when the operator can't work.
    virtual void validate() const;
    virtual OpType getOpType() const = 0;
    virtual std::string const& getOpTypeName() const = 0;
    // Does nothing at all: an identity between equal depths.
    virtual bool isNoop() const;
    virtual bool isIdentity() const;
    virtual bool needsResolving() const;
    // Has some dynamic property.
    virtual bool isDynamic() const;
    virtual bool hasDynamicProperty(DynamicProperty::Ids id) const;
    virtual void setDynamicProperty(DynamicProperty const& property);
    virtual void getDynamicProperty(DynamicProperty& property) const;
    virtual bool operator==(Op const& other) const;
    // Appends the inverse to the list.
    virtual void inverse(OpList& list) const;
    virtual void unresolve();
    // The lowest version of a transform file that can hold this operator.
    virtual float getMinimumVersion() const;

    BitDepth getInputBitDepth() const
    {
        return m_inBitDepth;
    }
    BitDepth getOutputBitDepth() const
    {
        return m_outBitDepth;
    }
    std::string const& getId() const
    {
        return m_id;
    }
    std::string const& getName() const
    {
        return m_name;
    }
    void setId(std::string const& id)
    {
        m_id = id;
    }
    void setName(std::string const& name)
    {
        m_name = name;
    }
    Descriptions const& getDescriptions() const
    {
        return m_descriptions;
    }
    Descriptions& getDescriptions()
    {
        return m_descriptions;
    }

    // How messages cite the operator: its name, else its id, else the name of its type.
    std::string const& getMeaningfullIdentifier() const;

    // Never null. A dynamic one is shared with its giver, of a static one the value is copied.
    std::shared_ptr<BypassDynamicProperty> const& getBypass() const
    {
        return m_bypass;
    }
    void setBypass(std::shared_ptr<BypassDynamicProperty> const& bypass);

    // The value range of a depth divided by n - 1.
    static float getValueStepSize(BitDepth depth, unsigned int n);

private:
    BitDepth m_inBitDepth;
    BitDepth m_outBitDepth;
    std::string m_id;
    std::string m_name;
    Descriptions m_descriptions;
    std::shared_ptr<BypassDynamicProperty> m_bypass;
};

// Full signal of one depth divided by full signal of another: the factor of a change of depth.
float depthRatio(BitDepth numerator, BitDepth denominator);

// Throws when two neighbours disagree about the depth between them.
void validateJoint(Op const& first, Op const& second);

// The name of a type in messages; it lives for the whole run.
std::string const& getOpTypeName(Op::OpType type);

// What every operator class says about itself. Base is Op, or the operator that it refines.
template <class Derived, Op::OpType kType, class Base = Op>
class TypedOp : public Base
{
public:
    using Base::Base;

    Op* clone() const override { return new Derived(static_cast<Derived const&>(*this)); }
    Op::OpType getOpType() const override { return kType; }
    std::string const& getOpTypeName() const override { return Color::getOpTypeName(kType); }
};

} // namespace Color

#endif
