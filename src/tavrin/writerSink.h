// A stream's way to a caller who takes a document in pieces.
#ifndef TAVRIN_TAVRIN_WRITER_SINK_H
#define TAVRIN_TAVRIN_WRITER_SINK_H

#include <tavrin/files.h>

#include <array>
#include <streambuf>

namespace Tavrin
{

// Passes blocks to the callback, the last one when the stream is flushed. After an exception of the callback it is not called
// again.
class WriterSink : public std::streambuf
{
public:
    explicit WriterSink(TransformWriterCallback& callback) : m_callback(callback) { _makeRoom(); }

protected:
    int_type overflow(int_type character) override
    {
        _pass();
        return traits_type::eq_int_type(character, traits_type::eof()) ? traits_type::not_eof(character)
                                                                       : sputc(traits_type::to_char_type(character));
    }

    int sync() override
    {
        _pass();
        return 0;
    }

private:
    void _pass()
    {
        auto const length = static_cast<unsigned int>(pptr() - pbase());
        _makeRoom();
        if (length > 0)
            m_callback.write(m_block.data(), length);
    }

    void _makeRoom() { setp(m_block.data(), m_block.data() + m_block.size()); }

    TransformWriterCallback& m_callback;
    std::array<char, 65536> m_block;
};

} // namespace Tavrin

#endif
