// What the fuzz targets share: a file in memory, and what may come of reading it.
#ifndef TAVRIN_FUZZ_READER_FUZZING_H
#define TAVRIN_FUZZ_READER_FUZZING_H

#include "utils/errorMessage.h"

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <unistd.h>

// Its content is replaced by each document.
class MemoryFile
{
public:
    explicit MemoryFile(std::string const& extension) : m_path("/dev/shm/tavrinFuzzer" + std::to_string(getpid()) + "." + extension)
    {
    }
    ~MemoryFile() { std::remove(m_path.c_str()); }
    MemoryFile(MemoryFile const&) = delete;
    MemoryFile& operator=(MemoryFile const&) = delete;

    std::string const& write(std::string const& content) const
    {
        std::FILE* const file = std::fopen(m_path.c_str(), "wb");
        if (!file || std::fwrite(content.data(), 1, content.size(), file) != content.size())
        {
            std::abort();
        }
        std::fclose(file);
        return m_path;
    }

private:
    std::string m_path;
};

// A transform or a failure that says what is wrong.
template <class Reader, class Parse>
void expectAnOutcome(Parse&& parse)
{
    Reader const reader;
    try
    {
        parse(reader);
        if (!reader.getTransform())
        {
            std::abort();
        }
    }
    catch (Color::Exception const& exception)
    {
        if (exception.getId() == 0 || exception.getMessage().empty())
        {
            std::abort();
        }
    }
}

// One run of the target of a reader that reads nothing but files.
template <class Reader>
int fuzzFile(char const* extension, std::uint8_t const* data, std::size_t size)
{
    static MemoryFile const file(extension);
    std::string const& path = file.write(std::string(reinterpret_cast<char const*>(data), size));
    expectAnOutcome<Reader>([&](Reader const& reader) { reader.parseFile(path); });
    return 0;
}

#endif
