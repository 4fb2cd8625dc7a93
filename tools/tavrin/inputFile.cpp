// A file that is read at any position.
#include "inputFile.h"

#include "failure.h"

#include <cerrno>
#include <cstring>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace Program
{

std::size_t readAt(int descriptor, std::uint64_t position, void* buffer, std::size_t count) noexcept
{
    std::size_t done = 0;
    while (done < count)
    {
        const ssize_t n = ::pread(descriptor, static_cast<char*>(buffer) + done, count - done, static_cast<off_t>(position + done));
        if (n < 0 && errno == EINTR)
            continue;
        if (n <= 0)
            break;
        done += static_cast<std::size_t>(n);
    }
    return done;
}

InputFile::InputFile(std::string path) : m_path(std::move(path)), m_descriptor(::open(m_path.c_str(), O_RDONLY | O_CLOEXEC))
{
    if (m_descriptor < 0)
        fail("cannot open '{}': {}", m_path, std::strerror(errno));
    struct stat status;
    const bool known = ::fstat(m_descriptor, &status) == 0;
    if (!known || !S_ISREG(status.st_mode))
    {
        ::close(m_descriptor);
        fail("cannot read '{}': it is not a regular file", m_path);
    }
    m_size = static_cast<std::uint64_t>(status.st_size);
}

InputFile::~InputFile()
{
    ::close(m_descriptor);
}

std::size_t InputFile::readSome(std::uint64_t position, void* buffer, std::size_t count) const noexcept
{
    return readAt(m_descriptor, position, buffer, count);
}

void InputFile::read(std::uint64_t position, void* buffer, std::size_t count) const
{
    if (readSome(position, buffer, count) != count)
        fail("'{}' is cut off: it ends before byte {}", m_path, position + count);
}

} // namespace Program
