// The element <ASC_CDL>, and those of its numbers, which files of colour decisions have too.
#ifndef TAVRIN_XML_CDL_ELT_H
#define TAVRIN_XML_CDL_ELT_H

#include "transform/CDLOp.h"
#include "xml/numberListElt.h"
#include "xml/styledOpElt.h"

#include <array>
#include <cstddef>
#include <string>

namespace Color::Xml::Reader
{

class CDLElt : public StyledOpElt<CDLOp, CDLOp::CDLStyle, &CDLOp::getCDLStyle, &CDLOp::setCDLStyle>
{
};

// What holds a part of a colour decision; where the operator is depends on the kind of file.
class CDLNodeElt : public ComplexElt
{
public:
    using ComplexElt::ComplexElt;

    virtual CDLOp* getCDLOp() const = 0;
    void appendDescription(std::string const& text) override;
};

// <SOPNode>: slope, offset and power, all of them.
class SOPNodeBaseElt : public CDLNodeElt
{
public:
    using CDLNodeElt::CDLNodeElt;

    void start(char const** attributes) override;
    void end() override;
    // Which of the three: its place in the order of the name.
    void markSet(std::size_t value) { m_isSet.at(value) = true; }

private:
    std::array<bool, 3> m_isSet{};
};

// <SatNode>: the saturation.
class SatNodeBaseElt : public CDLNodeElt
{
public:
    using CDLNodeElt::CDLNodeElt;
};

// A node whose operator is that of the element around it.
template <class Node, class Parent>
class NodeInElt : public Node
{
public:
    using Node::Node;

    CDLOp* getCDLOp() const override { return &dynamic_cast<Parent&>(*this->getParent()).op(); }
};

// Of a transform file.
using SOPNodeElt = NodeInElt<SOPNodeBaseElt, CDLElt>;
using SatNodeElt = NodeInElt<SatNodeBaseElt, CDLElt>;

// <Slope>, <Offset> and <Power>: three numbers each.
class SOPValueElt : public NumberListElt
{
public:
    // The parent is a SOPNodeBaseElt.
    SOPValueElt(std::string const& name, ContainerElt* parent, unsigned int line, std::string const& file);

protected:
    void setNumbers(std::vector<double> const& numbers) override;
};

// <Saturation>: one number.
class SaturationElt : public NumberListElt
{
public:
    // The parent is a SatNodeBaseElt.
    SaturationElt(std::string const& name, ContainerElt* parent, unsigned int line, std::string const& file);

protected:
    void setNumbers(std::vector<double> const& numbers) override;
};

} // namespace Color::Xml::Reader

#endif
