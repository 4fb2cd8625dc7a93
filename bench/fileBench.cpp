// What it costs to write a transform file and to read it.
#include "cases.h"

#include <filesystem>
#include <string>
#include <system_error>

#include <unistd.h>

namespace Bench
{

namespace
{

// The name of a file that goes with the program.
class TemporaryFile
{
public:
    TemporaryFile() : m_path(std::filesystem::temp_directory_path() / ("tavrinBench" + std::to_string(::getpid()) + ".ctf")) {}
    TemporaryFile(TemporaryFile const&) = delete;
    TemporaryFile& operator=(TemporaryFile const&) = delete;
    ~TemporaryFile()
    {
        std::error_code ignored;
        std::filesystem::remove(m_path, ignored);
    }

    char const* name() const { return m_path.c_str(); }

private:
    std::filesystem::path m_path;
};

// Reading finds what writing left: the two are registered one after the other.
void addWriteAndRead(std::string const& name, Tavrin::TransformPtr const& transform, TemporaryFile const& file)
{
    addCall("file/write " + name, [=, &file] { return Tavrin::saveColorTransform(file.name(), true, transform); });
    addCall("file/read " + name,
            [&file]
            {
                Tavrin::TransformPtr read;
                return Tavrin::loadColorTransform(file.name(), read);
            });
}

} // namespace

void addFiles()
{
    static TemporaryFile const file;
    addWriteAndRead("1D 65536", table1D(65536), file);
    for (unsigned int points : {33U, 65U, 129U})
        addWriteAndRead("3D " + std::to_string(points), table3D(points), file);
}

} // namespace Bench
