// Feeds the reader of ICC profiles.
//
//     cmake --preset fuzz && cmake --build --preset fuzz
//     mkdir -p build/fuzz/found && build/fuzz/fuzz/iccFuzzer -dict=fuzz/icc.dict -max_len=4096 build/fuzz/found fuzz/corpus/icc
//
// What it finds becomes a test in tests/xml.
#include "readerFuzzing.h"

#include "xml/iccProfileReader.h"

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size)
{
    return fuzzFile<Color::ICCProfileReader>("icc", data, size);
}
