// Feeds the reader of colour decision lists.
//
//     cmake --preset fuzz && cmake --build --preset fuzz
//     mkdir -p build/fuzz/found && build/fuzz/fuzz/cdlFuzzer -dict=fuzz/cdl.dict -max_len=4096 build/fuzz/found fuzz/corpus/cdl
//
// What it finds becomes a test in tests/xml.
#include "readerFuzzing.h"

#include "xml/cdlReader.h"

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size)
{
    static MemoryFile const file("cdl");
    std::string const document(reinterpret_cast<char const*>(data), size);
    std::string const& path = file.write(document);
    expectAnOutcome<Color::CDLReader>([&](auto const& reader) { reader.parseBuffer(document); });
    expectAnOutcome<Color::CDLReader>([&](auto const& reader) { reader.parseFile(path); });
    return 0;
}
