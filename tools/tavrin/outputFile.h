// A file that appears under its name whole or not at all.
#ifndef TAVRIN_PROGRAM_OUTPUT_FILE_H
#define TAVRIN_PROGRAM_OUTPUT_FILE_H

#include <cstddef>
#include <cstdint>
#include <string>

namespace Program
{

// Everything is written to a temporary file beside the target, and commit gives it the target's name in one step. Until then a
// file of that name stays as it was; without a commit, and when the program is interrupted, the temporary file goes away.
// One output file at a time.
class OutputFile
{
public:
    // Throws Failure, with the system's reason, when the folder can't be written to or the target is no regular file.
    // A symbolic link is followed; an existing file's permissions are taken over.
    explicit OutputFile(std::string const& path);
    OutputFile(OutputFile const&) = delete;
    OutputFile& operator=(OutputFile const&) = delete;
    ~OutputFile();

    // The name as it was given.
    std::string const& path() const { return m_path; }
    std::uint64_t size() const { return m_size; }

    // False, and remembered, when the bytes could not be written; it throws nothing, since C libraries call it.
    bool write(std::uint64_t position, void const* buffer, std::size_t count) noexcept;
    // Reads back what was written; returns how many bytes there are.
    std::size_t readSome(std::uint64_t position, void* buffer, std::size_t count) const noexcept;

    // Throws the remembered failure of a write, if there is one.
    void check() const;
    void commit();

private:
    std::string m_path;
    std::string m_target;
    std::string m_temporary;
    int m_descriptor = -1;
    int m_error = 0;
    std::uint64_t m_size = 0;
};

} // namespace Program

#endif
