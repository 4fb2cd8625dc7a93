// Writes transform files (CTF).
#include "xml/xmlTransformWriter.h"

#include "utils/errorMessage.h"
#include "xml/transformWriter.h"
#include "xml/wholeFile.h"

#include <ostream>

namespace Color
{

namespace
{

void validate(Transform& transform)
{
    try
    {
        transform.validate();
    }
    catch (Exception const& exception)
    {
        throw failure(ErrorIds::kTransformFileInvalid, Module::kXmlWriter, exception.getMessage());
    }
}

} // namespace

void XMLTransformWriter::writeStream(std::shared_ptr<Transform> const& transform, std::ostream& stream) const
{
    if (transform == nullptr)
    {
        throw failure(ErrorIds::kSaveTransformNull, Module::kXmlWriter);
    }
    validate(*transform);
    stream << Xml::Writer::kProlog;
    Xml::Writer::Formatter formatter(stream);
    Xml::Writer::TransformWriter(formatter, *transform).write();
}

void XMLTransformWriter::writeFile(std::shared_ptr<Transform> const& transform, std::string const& path) const
{
    Xml::Writer::writeWholeFile(path, [&](std::ostream& stream) { writeStream(transform, stream); });
}

} // namespace Color
