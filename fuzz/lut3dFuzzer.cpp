// Feeds the reader of plain-text tables of three dimensions.
//
//     cmake --preset fuzz && cmake --build --preset fuzz
//     mkdir -p build/fuzz/found && build/fuzz/fuzz/lut3dFuzzer -dict=fuzz/lut3d.dict -max_len=4096 build/fuzz/found
//     fuzz/corpus/lut3d
//
// What it finds becomes a test in tests/xml.
#include "readerFuzzing.h"

#include "xml/ostrand3DReader.h"

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size)
{
    return fuzzFile<Color::Ostrand3DReader>("3dl", data, size);
}
