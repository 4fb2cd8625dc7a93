// A folder for the files of one test, gone with the test.
#ifndef TAVRIN_TESTS_TEMPORARY_FOLDER_H
#define TAVRIN_TESTS_TEMPORARY_FOLDER_H

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string>
#include <string_view>
#include <system_error>

inline std::string contentOfFile(std::filesystem::path const& path)
{
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

// The name is new each time, so that tests may run side by side.
class TemporaryFolder
{
public:
    TemporaryFolder()
    {
        std::string name = (std::filesystem::temp_directory_path() / "tavrinTest-XXXXXX").string();
        if (!::mkdtemp(name.data()))
        {
            throw std::runtime_error("no temporary folder: " + name);
        }
        m_path = name;
    }
    TemporaryFolder(TemporaryFolder const&) = delete;
    TemporaryFolder& operator=(TemporaryFolder const&) = delete;
    ~TemporaryFolder()
    {
        std::error_code ignored;
        std::filesystem::remove_all(m_path, ignored);
    }

    std::filesystem::path const& path() const { return m_path; }
    // The full name of a file in the folder.
    std::string file(std::string const& name) const { return (m_path / name).string(); }
    // The full name of a new file with this content.
    std::string write(std::string const& name, std::string_view content) const
    {
        std::ofstream(m_path / name, std::ios::binary) << content;
        return file(name);
    }

private:
    std::filesystem::path m_path;
};

#endif
