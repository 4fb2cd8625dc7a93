// Feeds the reader of plain-text tables of one dimension.
//
//     cmake --preset fuzz && cmake --build --preset fuzz
//     mkdir -p build/fuzz/found && build/fuzz/fuzz/lut1dFuzzer -dict=fuzz/lut1d.dict -max_len=4096 build/fuzz/found
//     fuzz/corpus/lut1d
//
// What it finds becomes a test in tests/xml.
#include "readerFuzzing.h"

#include "xml/ostrand1DReader.h"

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size)
{
    return fuzzFile<Color::Ostrand1DReader>("lut", data, size);
}
