// Which kinds of files there are, and how a file becomes a transform.
#ifndef TAVRIN_XML_FILE_IO_MANAGER_H
#define TAVRIN_XML_FILE_IO_MANAGER_H

#include "transform/transform.h"

#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace Color
{

// Files may be loaded from several threads at once: no state is shared.
class FileIOManager
{
public:
    // Extensions without the dot, with words for people.
    using Formats = std::vector<std::pair<std::string, std::string>>;

    // A reader's name (IOReader::getName), and what it is known to read.
    struct ReaderFormats
    {
        std::string name;
        Formats formats;
    };

    // In the order in which readers are tried. Both tables live to the end of the process.
    static std::vector<ReaderFormats> const& getFormatsByReader();
    static Formats const& getSupportedFileFormats();

    // Whether some reader takes the path's extension; the file need not exist.
    static bool isFileSupported(std::string const& path);

    // A file that was saved with a path inside another installation, and is not there, is looked for in this one's. Gives the path
    // where it is found, or the same path.
    static std::string resolveSystemTransformPath(std::string const& path);

    // Throws what is wrong with the path, or with the file. When several readers take the extension the first that can read the
    // file gives the transform, and if none can, the message holds what each of them says.
    static std::shared_ptr<Transform> loadTransform(std::string const& path);
};

} // namespace Color

#endif
