// Operators and transforms as the text of files.
#ifndef TAVRIN_TESTS_XML_WRITING_H
#define TAVRIN_TESTS_XML_WRITING_H

#include "transform/transform.h"
#include "xml/opWriters.h"
#include "xml/xmlTransformWriter.h"

#include <memory>
#include <sstream>
#include <string>

namespace XmlTest
{

// The element of one operator, with nothing around it.
inline std::string written(Color::Op const& op)
{
    std::ostringstream stream;
    Color::Xml::Writer::Formatter formatter(stream);
    Color::Xml::Writer::createOpWriter(formatter, op)->write();
    return stream.str();
}

// What stands between the tags of an operator.
inline std::string contentOf(Color::Op const& op)
{
    std::string const text = written(op);
    std::size_t const begin = text.find('\n') + 1;
    return text.substr(begin, text.rfind('<') - begin);
}

// The first tag of an operator, with its attributes.
inline std::string startTagOf(Color::Op const& op)
{
    std::string const text = written(op);
    return text.substr(0, text.find('\n'));
}

// The style that the first tag of an operator names.
inline std::string styleOf(Color::Op const& op)
{
    std::string const tag = startTagOf(op);
    std::size_t const begin = tag.find(" style=\"") + 8;
    return tag.substr(begin, tag.find('"', begin) - begin);
}

// A whole document.
inline std::string written(std::shared_ptr<Color::Transform> const& transform)
{
    std::ostringstream stream;
    Color::XMLTransformWriter().writeStream(transform, stream);
    return stream.str();
}

} // namespace XmlTest

#endif
