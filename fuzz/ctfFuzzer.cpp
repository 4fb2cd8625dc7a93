// Feeds the reader of transform files, and the writer with what was read.
//
//     cmake --preset fuzz && cmake --build --preset fuzz
//     mkdir -p build/fuzz/found && build/fuzz/fuzz/ctfFuzzer -dict=fuzz/ctf.dict -max_len=4096 build/fuzz/found fuzz/corpus/ctf
//
// What it finds becomes a test in tests/xml/badDocumentsTest.cpp or tests/xml/roundTripTest.cpp.
#include "readerFuzzing.h"

#include "transform/invLut1DOp.h"
#include "xml/xmlTransformReader.h"
#include "xml/xmlTransformWriter.h"

#include <memory>
#include <sstream>

namespace
{

using TransformPointer = std::shared_ptr<Color::Transform>;

std::string written(TransformPointer const& transform)
{
    std::ostringstream stream;
    Color::XMLTransformWriter().writeStream(transform, stream);
    return stream.str();
}

// Reading takes the raw halfs of an inverse table as numbers, and writing takes its numbers as halfs.
bool isAsymmetric(Color::Op const& op)
{
    auto const* const table = dynamic_cast<Color::InvLut1DOp const*>(&op);
    return table && table->isOutputRawHalfs();
}

bool isAsymmetric(Color::OpList const& ops)
{
    for (unsigned int i = 0; i < ops.size(); ++i)
    {
        if (isAsymmetric(ops.get(i)))
        {
            return true;
        }
    }
    return false;
}

// Numbers are written with few digits, so that an operator may refuse what is read again: limits that were apart are equal then.
bool isRefusedByAnOperator(Color::Exception const& exception)
{
    return exception.getId() >> 20U == 2;
}

// What is written can be read, and then written as the same text.
void expectRoundTrip(TransformPointer const& transform)
{
    std::string const text = written(transform);
    Color::XMLTransformReader const reader;
    try
    {
        reader.parseBuffer(text);
    }
    catch (Color::Exception const& exception)
    {
        if (isRefusedByAnOperator(exception))
        {
            return;
        }
        std::abort();
    }
    if (!isAsymmetric(transform->getOps()) && written(reader.getTransform()) != text)
    {
        std::abort();
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size)
{
    static MemoryFile const file("ctf");
    std::string const document(reinterpret_cast<char const*>(data), size);
    std::string const& path = file.write(document);
    TransformPointer transform;
    expectAnOutcome<Color::XMLTransformReader>(
        [&](auto const& reader)
        {
            reader.parseBuffer(document);
            transform = reader.getTransform();
        });
    if (transform)
    {
        expectRoundTrip(transform);
    }
    expectAnOutcome<Color::XMLTransformReader>([&](auto const& reader) { reader.parseFile(path); });
    Color::Xml::Reader::isLoadableCTF(path);
    return 0;
}
