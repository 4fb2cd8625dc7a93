// Transforms read from and written to files and memory.
#include <tavrin/files.h>

#include "tavrin/requireParameter.h"
#include "tavrin/transformImpl.h"
#include "tavrin/writerSink.h"
#include "utils/errorMessage.h"
#include "xml/fileIOManager.h"
#include "xml/xmlTransformReader.h"
#include "xml/xmlTransformWriter.h"

#include <memory>
#include <ostream>
#include <string>

namespace Tavrin
{

using namespace Color;

namespace
{

// The model that a document is to hold: with references replaced by what they point at, or as it stands.
std::shared_ptr<Color::Transform> getModelToSave(TransformPtr const& handle, bool resolved)
{
    auto const* const transform = dynamic_cast<Impl::Transform const*>(handle.get());
    if (transform == nullptr)
        throw failure(ErrorIds::kSaveTransformNull, Module::kXmlWriter);
    return resolved ? transform->getResolvedTransform() : Impl::Transform::getModel(handle);
}

} // namespace

TavStatus getSupportedFileExtensions(SupportedExtensionsCallBack& callback)
{
    return statusOf(
        [&]
        {
            for (auto const& [extension, description] : FileIOManager::getSupportedFileFormats())
            {
                callback.addExtension(extension.c_str(), description.c_str());
            }
        });
}

TavStatus getSupportedFileFormats(SupportedFormatsCallBack& callback)
{
    return statusOf(
        [&]
        {
            for (FileIOManager::ReaderFormats const& reader : FileIOManager::getFormatsByReader())
            {
                for (auto const& [extension, description] : reader.formats)
                {
                    callback.addFormat(extension.c_str(), description.c_str(), reader.name.c_str());
                }
            }
        });
}

bool isFileSupported(char const* path)
{
    bool isSupported = false;
    TavStatus const status = statusOf(
        [&]
        {
            requireParameter(path, "path");
            isSupported = FileIOManager::isFileSupported(path);
        });
    return status && isSupported;
}

TavStatus loadColorTransform(char const* path, TransformPtr& transform)
{
    return statusOf(
        [&]
        {
            requireParameter(path, "path");
            transform.reset(new Impl::Transform(FileIOManager::loadTransform(path), path));
        });
}

TavStatus loadColorTransformFromBuffer(char const* text, TransformPtr& transform)
{
    return statusOf(
        [&]
        {
            requireParameter(text, "text");
            XMLTransformReader const reader;
            reader.parseBuffer(text);
            transform.reset(new Impl::Transform(reader.getTransform()));
        });
}

TavStatus saveColorTransform(char const* path, bool resolved, TransformPtr const& transform)
{
    return statusOf(
        [&]
        {
            requireParameter(path, "path");
            XMLTransformWriter().writeFile(getModelToSave(transform, resolved), path);
        });
}

TavStatus saveColorTransformToBuffer(TransformWriterCallback& callback, TransformPtr const& transform)
{
    return statusOf(
        [&]
        {
            WriterSink sink(callback);
            std::ostream stream(&sink);
            stream.exceptions(std::ios::badbit); // So that what the callback throws passes through the stream.
            XMLTransformWriter().writeStream(getModelToSave(transform, true), stream);
            stream.flush();
        });
}

char const* getColorTransformFileExtension()
{
    return XMLTransformReader::getColorTransformFileExtension();
}

} // namespace Tavrin
