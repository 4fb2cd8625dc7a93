// Feeds the reader of transform files.
//
//     cmake --preset fuzz && cmake --build --preset fuzz
//     mkdir -p build/fuzz/found && build/fuzz/fuzz/ctfFuzzer -dict=fuzz/ctf.dict -max_len=4096 build/fuzz/found fuzz/corpus/ctf
//
// What it finds becomes a test in tests/xml/badDocumentsTest.cpp.
#include "readerFuzzing.h"

#include "xml/xmlTransformReader.h"

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size)
{
    static MemoryFile const file("ctf");
    std::string const document(reinterpret_cast<char const*>(data), size);
    std::string const& path = file.write(document);
    expectAnOutcome<Color::XMLTransformReader>([&](auto const& reader) { reader.parseBuffer(document); });
    expectAnOutcome<Color::XMLTransformReader>([&](auto const& reader) { reader.parseFile(path); });
    Color::Xml::Reader::isLoadableCTF(path);
    return 0;
}
