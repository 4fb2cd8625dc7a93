// Files that appear whole or not at all.
#include "xml/wholeFile.h"

#include "utils/errorMessage.h"

#include <boost/filesystem.hpp>
#include <fstream>
#include <utility>

#include <fcntl.h>
#include <unistd.h>

namespace Color::Xml::Writer
{

namespace
{

namespace fs = boost::filesystem;

Exception writingFailure(ErrorSite site, fs::path const& path)
{
    return failure(site, Module::kXmlWriter, path.string());
}

// Why a path can't be opened for writing.
Exception openingFailure(fs::path const& path)
{
    if (fs::is_regular_file(path))
    {
        return writingFailure(ErrorIds::kUnableToOverwriteFile, path);
    }
    bool const isInFolder = fs::is_directory(path.has_parent_path() ? path.parent_path() : fs::path("."));
    return writingFailure(isInFolder ? ErrorIds::kUnableToWriteFile : ErrorIds::kInvalidFilePath, path);
}

bool canBeOpened(fs::path const& file)
{
    int const descriptor = ::open(file.c_str(), O_WRONLY | O_CLOEXEC);
    return descriptor >= 0 && ::close(descriptor) == 0;
}

// Creates a file beside the target, under a name that nothing else has. Empty where the folder takes none.
fs::path createBeside(fs::path const& target)
{
    fs::path path = target.parent_path() / fs::unique_path(".tavrin-%%%%%%%%%%%%%%%%");
    int const descriptor = ::open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
    if (descriptor < 0)
    {
        return fs::path();
    }
    ::close(descriptor);
    return path;
}

// A file that goes away unless it is given the name of another one.
class TemporaryFile
{
public:
    explicit TemporaryFile(fs::path path) : m_path(std::move(path)) {}
    TemporaryFile(TemporaryFile const&) = delete;
    TemporaryFile& operator=(TemporaryFile const&) = delete;
    ~TemporaryFile()
    {
        boost::system::error_code ignored;
        if (!m_path.empty())
        {
            fs::remove(m_path, ignored);
        }
    }

    bool exists() const { return !m_path.empty(); }
    fs::path const& path() const { return m_path; }
    void replace(fs::path const& target)
    {
        fs::rename(m_path, target);
        m_path.clear();
    }

private:
    fs::path m_path;
};

void writeTo(fs::path const& path, fs::path const& named, std::function<void(std::ostream&)> const& write)
{
    std::ofstream stream(path.string(), std::ios::binary);
    if (!stream.is_open())
    {
        throw openingFailure(named);
    }
    write(stream);
    stream.close();
    if (!stream)
    {
        throw writingFailure(ErrorIds::kUnableToWriteFile, named);
    }
}

void replaceFile(fs::path const& path, std::function<void(std::ostream&)> const& write)
{
    fs::path const target = fs::weakly_canonical(path);
    fs::file_status const status = fs::status(target);
    bool const isFile = fs::is_regular_file(status);
    if (isFile && !canBeOpened(target))
    {
        throw openingFailure(path);
    }
    bool const isReplaceable = isFile || (!fs::exists(status) && !target.empty());
    TemporaryFile temporary(isReplaceable ? createBeside(target) : fs::path());
    writeTo(temporary.exists() ? temporary.path() : target, path, write);
    if (temporary.exists())
    {
        if (isFile)
        {
            fs::permissions(temporary.path(), status.permissions());
        }
        temporary.replace(target);
    }
}

} // namespace

void writeWholeFile(std::string const& path, std::function<void(std::ostream&)> const& write)
{
    try
    {
        replaceFile(path, write);
    }
    catch (fs::filesystem_error const& error)
    {
        throw failure(ErrorIds::kFilesystemError, Module::kXmlWriter, path, error.what());
    }
}

} // namespace Color::Xml::Writer
