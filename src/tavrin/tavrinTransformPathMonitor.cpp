// A tree of transform files, for applications that let people browse it.
#include <tavrin/transformPathMonitor.h>

#include "utils/errorMessage.h"
#include "utils/utils.h"
#include "xml/fileIOManager.h"

#include <algorithm>
#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace Tavrin
{

namespace
{

namespace fs = std::filesystem; // Its times are finer than a second.
namespace ErrorIds = Color::ErrorIds;
using Names = std::vector<std::string>;

Color::Exception pathFailure(Color::ErrorSite site, fs::path const& path)
{
    return Color::failure(site, Color::Module::kLibraryPath, path.string());
}

template <class... Pointers>
void requireParameters(Pointers const*... pointers)
{
    bool const isOneMissing = ((pointers == nullptr) || ...);
    if (isOneMissing)
        throw Color::failure(ErrorIds::kInvalidParameter, Color::Module::kLibraryPath);
}

// A relative path stays below the folder, even if it begins with a slash.
fs::path joined(fs::path const& folder, fs::path const& relativePath)
{
    fs::path const below = relativePath.relative_path();
    return below.empty() ? folder : folder / below;
}

// What is in one folder.
class DirectoryMonitor
{
public:
    explicit DirectoryMonitor(fs::path const& path) : m_path(path) {}

    Names const& getFiles() const { return m_files; }
    Names const& getDirectories() const { return m_directories; }

    // Reads the folder if it has changed.
    void update()
    {
        try
        {
            _requireDirectory();
            fs::file_time_type const time = fs::last_write_time(m_path);
            if (time != m_lastWriteTime)
            {
                _read();
                m_lastWriteTime = time;
            }
        }
        catch (fs::filesystem_error const&)
        {
            throw pathFailure(ErrorIds::kPathReadError, m_path);
        }
    }

    void clear()
    {
        m_files.clear();
        m_directories.clear();
    }

private:
    void _requireDirectory() const
    {
        fs::file_status const status = fs::status(m_path);
        if (!fs::exists(status))
            throw pathFailure(ErrorIds::kPathNotFound, m_path);
        if (!fs::is_directory(status))
            throw pathFailure(ErrorIds::kPathNotADirectory, m_path);
    }

    // An entry of which nothing can be told, such as a link that leads nowhere, is left out.
    void _read()
    {
        clear();
        for (fs::directory_entry const& entry : fs::directory_iterator(m_path))
        {
            std::error_code ignored;
            std::string const name = entry.path().filename().string();
            if (entry.is_directory(ignored))
                m_directories.push_back(name);
            else if (entry.is_regular_file(ignored) && Color::FileIOManager::isFileSupported(entry.path().string()))
                m_files.push_back(name);
        }
        std::sort(m_files.begin(), m_files.end());
        std::sort(m_directories.begin(), m_directories.end());
    }

    fs::path m_path;
    Names m_files;
    Names m_directories;
    std::optional<fs::file_time_type> m_lastWriteTime; // As last seen.
};

} // namespace

class TransformPathMonitor::Impl
{
public:
    explicit Impl(char const* path) : m_path(path == nullptr ? "" : path) {}

    std::string const& getPath() const { return m_path; }

    // A copy, since a callback may use the monitor again.
    Names list(char const* relativePath, Names const& (DirectoryMonitor::*getNames)() const)
    {
        DirectoryMonitor& monitor = _getDirectoryMonitor(relativePath);
        monitor.update();
        return (monitor.*getNames)();
    }

private:
    DirectoryMonitor& _getDirectoryMonitor(char const* relativePath)
    {
        requireParameters(relativePath);
        return m_monitors.try_emplace(relativePath, joined(m_path, relativePath)).first->second;
    }

    std::string m_path;
    std::map<std::string, DirectoryMonitor> m_monitors; // by relative path
};

namespace
{

void tell(Names const& names, TransformPathMonitor::Callback& callback)
{
    for (std::string const& name : names)
        callback.onEntry(name.c_str());
}

} // namespace

TransformPathMonitor::Callback::~Callback() = default;

TransformPathMonitor::TransformPathMonitor(char const* path) : m_impl(std::make_unique<Impl>(path)) {}

TransformPathMonitor::~TransformPathMonitor() = default;

char const* TransformPathMonitor::getPath() const
{
    return m_impl->getPath().c_str();
}

TavStatus TransformPathMonitor::setPath(char const* path)
{
    return Color::statusOf(
        [&]
        {
            requireParameters(path);
            m_impl = std::make_unique<Impl>(path);
        });
}

TavStatus TransformPathMonitor::listFiles(char const* relativePath, Callback& callback)
{
    return Color::statusOf([&] { tell(m_impl->list(relativePath, &DirectoryMonitor::getFiles), callback); });
}

TavStatus TransformPathMonitor::listDirectories(char const* relativePath, Callback& callback)
{
    return Color::statusOf([&] { tell(m_impl->list(relativePath, &DirectoryMonitor::getDirectories), callback); });
}

TavStatus TransformPathMonitor::getFileFullPath(char const* relativePath, char const* name, char* buffer,
                                                unsigned int bufferSize) const
{
    return Color::statusOf(
        [&]
        {
            requireParameters(relativePath, name, buffer);
            std::string const path = joined(joined(m_impl->getPath(), relativePath), name).string();
            Foundation::Utils::snprintf(buffer, bufferSize, "%s", path.c_str());
        });
}

} // namespace Tavrin
