// A file that is read at any position.
#ifndef TAVRIN_PROGRAM_INPUT_FILE_H
#define TAVRIN_PROGRAM_INPUT_FILE_H

#include <cstddef>
#include <cstdint>
#include <string>

namespace Program
{

// Reads from an open file; returns how many bytes there were: fewer than asked for only at its end or after an error.
std::size_t readAt(int descriptor, std::uint64_t position, void* buffer, std::size_t count) noexcept;

// Holds the file open. Reading has no state, so one file may be read from several threads.
class InputFile
{
public:
    // Throws Failure, with the system's reason, when the path is no regular file that can be read.
    explicit InputFile(std::string path);
    InputFile(InputFile const&) = delete;
    InputFile& operator=(InputFile const&) = delete;
    ~InputFile();

    std::string const& path() const { return m_path; }
    std::uint64_t size() const { return m_size; }

    // As readAt.
    std::size_t readSome(std::uint64_t position, void* buffer, std::size_t count) const noexcept;
    // All bytes, or a Failure that says that the file is cut off.
    void read(std::uint64_t position, void* buffer, std::size_t count) const;

private:
    std::string m_path;
    int m_descriptor;
    std::uint64_t m_size = 0;
};

} // namespace Program

#endif
