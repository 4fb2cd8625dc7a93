// The base of the operators' elements.
#ifndef TAVRIN_XML_OP_ELT_H
#define TAVRIN_XML_OP_ELT_H

#include "transform/transform.h"
#include "xml/xmlReaderElements.h"

#include <memory>
#include <string>
#include <utility>

namespace Color::Xml::Reader
{

// Builds one operator. The operator is the element's until start, which appends it to the transform.
class OpElt : public ContainerElt
{
public:
    // The element that reads an operator in a document of this version, null when that version does not know the operator.
    static std::unique_ptr<OpElt> getReader(Op::OpType type, float version);

    explicit OpElt(std::unique_ptr<Op> op);
    ~OpElt() override;

    // An operator needs a transform to go to; throws when there is none.
    void setContext(std::string const& name, std::shared_ptr<Transform> const& transform, unsigned int line,
                    std::string const& file);

    // Appends the operator and reads the attributes that all operators have.
    void start(char const** attributes) override;
    // Validates the operator.
    void end() override;
    std::string const& getIdentifier() const override { return m_op->getId(); }
    std::string const& getTypeName() const override { return m_op->getOpTypeName(); }
    void appendDescription(std::string const& text) override;
    // Lets a caller change a property of the operator while it renders; false when the operator does not have it. All have a
    // bypass.
    virtual bool makeDynamic(DynamicProperty::Ids id);

    Op* getOp() const { return m_op; }

private:
    std::shared_ptr<Transform> m_transform;
    std::unique_ptr<Op> m_unlistedOp;
    Op* m_op;
};

// The element of one class of operators; what the operator's constructor takes is handed on.
template <class Operator>
class TypedOpElt : public OpElt
{
public:
    template <class... Arguments>
    explicit TypedOpElt(Arguments&&... arguments) : OpElt(std::make_unique<Operator>(std::forward<Arguments>(arguments)...))
    {
    }

    Operator& op() const { return static_cast<Operator&>(*getOp()); }
};

} // namespace Color::Xml::Reader

#endif
