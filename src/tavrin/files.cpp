// Transforms read from files and from memory.
#include <tavrin/files.h>

#include "tavrin/requireParameter.h"
#include "tavrin/transformImpl.h"
#include "utils/errorMessage.h"
#include "xml/fileIOManager.h"
#include "xml/xmlTransformReader.h"

#include <memory>
#include <string>

namespace Tavrin
{

using namespace Color;

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
            auto loaded = std::make_unique<Impl::Transform>(FileIOManager::loadTransform(path));
            loaded->setFullPath(path);
            transform.reset(loaded.release());
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

char const* getColorTransformFileExtension()
{
    return XMLTransformReader::getColorTransformFileExtension();
}

} // namespace Tavrin
