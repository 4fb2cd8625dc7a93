// The outcome of a call. Members of this class lie low in the library, since the failures of every layer end in one.
#include <tavrin/status.h>

#include <cstring>
#include <utility>

namespace Tavrin
{

namespace
{

char* copyOf(char const* text)
{
    if (!text || !*text)
    {
        return nullptr;
    }
    std::size_t const size = std::strlen(text) + 1;
    return static_cast<char*>(std::memcpy(new char[size], text, size));
}

} // namespace

TavStatus::TavStatus() : m_code(0), m_message(nullptr) {}

TavStatus::TavStatus(TavStatus const& other) : m_code(other.m_code), m_message(copyOf(other.m_message)) {}

TavStatus& TavStatus::operator=(TavStatus const& other)
{
    if (this != &other)
    {
        setErrorMessage(other.m_message);
        m_code = other.m_code;
    }
    return *this;
}

TavStatus::~TavStatus()
{
    delete[] m_message;
}

void TavStatus::setErrorCode(ErrorId code)
{
    m_code = code;
}

ErrorId TavStatus::getErrorCode() const
{
    return m_code;
}

// The copy comes first: the text may be a part of the present message.
void TavStatus::setErrorMessage(char const* message)
{
    char* const copy = copyOf(message);
    delete[] std::exchange(m_message, copy);
}

char const* TavStatus::getErrorMessage() const
{
    return m_message;
}

TavStatus::operator bool() const
{
    return m_code == 0;
}

} // namespace Tavrin
