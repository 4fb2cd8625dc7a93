// The base of the operators' writers.
#ifndef TAVRIN_XML_OP_WRITER_H
#define TAVRIN_XML_OP_WRITER_H

#include "transform/op.h"
#include "xml/elementWriter.h"

namespace Color::Xml::Writer
{

// Writes what all operators have; a derived class adds attributes and content of its own.
class OpWriter : public ElementWriter
{
public:
    OpWriter(Formatter& formatter, Op const& op) : ElementWriter(formatter), m_op(op) {}

    void write() const override;
    // The version that a file has to state, at least, to hold the operator.
    virtual float getMinimumVersion() const { return m_op.getMinimumVersion(); }

protected:
    Op const& getOp() const { return m_op; }
    // A derived class appends its own to those of its base.
    virtual void _getAttributes(Attributes& attributes) const;
    virtual void _writeContent() const {}

private:
    Op const& m_op;
};

// The writer of one class of operators.
template <class Operator>
class TypedOpWriter : public OpWriter
{
public:
    TypedOpWriter(Formatter& formatter, Operator const& op) : OpWriter(formatter, op) {}

protected:
    Operator const& op() const { return static_cast<Operator const&>(getOp()); }
};

// <DynamicParameter>: the named value can change while the transform renders.
void writeDynamicParameter(Formatter& formatter, char const* name);

} // namespace Color::Xml::Writer

#endif
