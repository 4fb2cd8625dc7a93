// A tree of transform files, for applications that let people browse it.
#ifndef TAVRIN_TRANSFORM_PATH_MONITOR_H
#define TAVRIN_TRANSFORM_PATH_MONITOR_H

#include <tavrin/export.h>
#include <tavrin/status.h>

#include <memory>

namespace Tavrin
{

// Remembers what is in each folder that was asked for, and reads it anew only when the folder's time of modification has changed.
// Belongs to one thread at a time.
class TAVRIN_API TransformPathMonitor
{
public:
    class TAVRIN_API Callback
    {
    public:
        virtual ~Callback();
        // Called once for each entry. The name lives as long as the call.
        virtual void onEntry(char const* name) = 0;
    };

    // The folder at the top of the tree. Null counts as an empty path, in which nothing is found.
    explicit TransformPathMonitor(char const* path);
    TransformPathMonitor(TransformPathMonitor const&) = delete;
    TransformPathMonitor& operator=(TransformPathMonitor const&) = delete;
    ~TransformPathMonitor();

    // The text stays valid until another path is set.
    char const* getPath() const;
    // Forgets everything that was seen. The path can't be null.
    TavStatus setPath(char const* path);

    // What is in a folder of the tree, in the order of the names: files that the library may be able to read, by their extension,
    // and folders. The relative path is empty for the top; it can't be null.
    TavStatus listFiles(char const* relativePath, Callback& callback);
    TavStatus listDirectories(char const* relativePath, Callback& callback);

    // Writes the full path of a file, terminated and cut to the size of the buffer in bytes. Nothing may be null.
    TavStatus getFileFullPath(char const* relativePath, char const* name, char* buffer, unsigned int bufferSize) const;

private:
    class Impl;
    std::unique_ptr<Impl> m_impl;
};

} // namespace Tavrin

#endif
