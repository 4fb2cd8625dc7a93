// Transforms read from and written to files and memory.
#ifndef TAVRIN_FILES_H
#define TAVRIN_FILES_H

#include <tavrin/export.h>
#include <tavrin/status.h>
#include <tavrin/transform.h>

namespace Tavrin
{

// Receives the table of file formats. Texts live to the end of the process.
class TAVRIN_API SupportedExtensionsCallBack
{
public:
    virtual ~SupportedExtensionsCallBack();
    // An extension without its dot, and words for people.
    virtual void addExtension(char const* extension, char const* description) = 0;
};

// One call of the callback for each extension that can be read.
TAVRIN_API TavStatus getSupportedFileExtensions(SupportedExtensionsCallBack& callback);

// Receives the same table with the reader of each file format. Texts live to the end of the process.
class TAVRIN_API SupportedFormatsCallBack
{
public:
    virtual ~SupportedFormatsCallBack();
    // An extension without its dot, words for people, and the name by which messages call the reader.
    virtual void addFormat(char const* extension, char const* description, char const* reader) = 0;
};

// One call of the callback for each extension and reader of it. Where several readers take an extension, they are tried in this
// order.
TAVRIN_API TavStatus getSupportedFileFormats(SupportedFormatsCallBack& callback);

// True when some reader takes the file's extension (whether case counts is up to the reader). The file need not exist.
TAVRIN_API bool isFileSupported(char const* path);

// Reads a transform file, or a file of another format (docs/other-formats.md). Relative references inside it are resolved against
// this path. On failure the handle stays as it was.
TAVRIN_API TavStatus loadColorTransform(char const* path, TransformPtr& transform);

// Reads a document of the library's own format (CTF) from zero-terminated text. Messages tell line 0.
TAVRIN_API TavStatus loadColorTransformFromBuffer(char const* text, TransformPtr& transform);

// Receives a document in pieces.
class TAVRIN_API TransformWriterCallback
{
public:
    virtual ~TransformWriterCallback();
    // The next so many characters of the document, with no zero at their end. They live no longer than the call.
    virtual void write(char const* text, unsigned int length) = 0;
};

// Writes a transform file (CTF) of the lowest version that can hold the transform. With resolved, references are replaced by the
// operators of the files that they point at; otherwise they are written as they stand. A file of that name is replaced in one step
// once the new one is whole: on failure it stays as it was.
TAVRIN_API TavStatus saveColorTransform(char const* path, bool resolved, TransformPtr const& transform);

// Hands the document of a transform over to the callback, with references replaced by the operators that they point at.
TAVRIN_API TavStatus saveColorTransformToBuffer(TransformWriterCallback& callback, TransformPtr const& transform);

// The extension of the library's own format: "ctf".
TAVRIN_API char const* getColorTransformFileExtension();

} // namespace Tavrin

#endif
