// Feeds the reader of transform files.
//
//     cmake --preset fuzz && cmake --build --preset fuzz
//     mkdir -p build/fuzz/found && build/fuzz/fuzz/ctfFuzzer -dict=fuzz/ctf.dict -max_len=4096 build/fuzz/found fuzz/corpus/ctf
//
// What it finds becomes a test in tests/xml/badDocumentsTest.cpp.
#include "utils/errorMessage.h"
#include "xml/xmlTransformReader.h"

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <unistd.h>

namespace
{

// A file in memory, whose content each document replaces.
class MemoryFile
{
public:
    MemoryFile() : m_path("/dev/shm/tavrinCtfFuzzer" + std::to_string(getpid()) + ".ctf") {}
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
template <class Parse>
void expectAnOutcome(Parse&& parse)
{
    Color::XMLTransformReader const reader;
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

} // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size)
{
    static MemoryFile const file;
    std::string const document(reinterpret_cast<char const*>(data), size);
    std::string const& path = file.write(document);
    expectAnOutcome([&](Color::XMLTransformReader const& reader) { reader.parseBuffer(document); });
    expectAnOutcome([&](Color::XMLTransformReader const& reader) { reader.parseFile(path); });
    Color::Xml::Reader::isLoadableCTF(path);
    return 0;
}
