// Documents with one operator, and what their reading comes to.
#ifndef TAVRIN_TESTS_XML_OP_DOCUMENTS_H
#define TAVRIN_TESTS_XML_OP_DOCUMENTS_H

#include "support/failure.h"
#include "transform/transform.h"
#include "xml/xmlTransformReader.h"

#include <memory>
#include <stdexcept>
#include <string>

namespace XmlTest
{

// For a buffer, whose lines all have the number 0. Attributes are further ones of the operator.
inline std::string opDocument(std::string const& version, std::string const& tag, std::string const& attributes,
                              std::string const& content)
{
    return "<ProcessList id='a' version='" + version + "'><" + tag + " inBitDepth='8i' outBitDepth='10i' " + attributes + ">" +
           content + "</" + tag + "></ProcessList>";
}

template <class Operator>
Operator readOp(std::string const& document)
{
    Color::XMLTransformReader const reader;
    reader.parseBuffer(document);
    Color::OpList const& ops = reader.getTransform()->getOps();
    if (ops.size() != 1)
        throw std::runtime_error("not one operator");
    return dynamic_cast<Operator const&>(ops.get(0));
}

inline Failure failureOfDocument(std::string const& document)
{
    return failureOf(
        [&]
        {
            Color::XMLTransformReader const reader;
            reader.parseBuffer(document);
        });
}

} // namespace XmlTest

#endif
