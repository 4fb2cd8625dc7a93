// Transforms read from files and from memory.
#include <tavrin/files.h>

#include "tavrin/transformImpl.h"
#include "utils/errorMessage.h"
#include "xml/fileIOManager.h"
#include "xml/xmlTransformReader.h"

#include <memory>
#include <string>

namespace Tavrin
{

namespace
{

using namespace Color;

void requireText(char const* text, char const* parameter)
{
    if (!text)
    {
        throw failure(ErrorIds::kNullParameter, Module::kLibrary, parameter);
    }
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

bool isFileSupported(char const* path)
{
    bool isSupported = false;
    TavStatus const status = statusOf(
        [&]
        {
            requireText(path, "path");
            isSupported = FileIOManager::isFileSupported(path);
        });
    return status && isSupported;
}

TavStatus loadColorTransform(char const* path, TransformPtr& transform)
{
    return statusOf(
        [&]
        {
            requireText(path, "path");
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
            requireText(text, "text");
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
