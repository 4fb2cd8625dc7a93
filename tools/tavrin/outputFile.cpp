// A file that appears under its name whole or not at all.
#include "outputFile.h"

#include "failure.h"
#include "inputFile.h"

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstring>
#include <filesystem>
#include <random>
#include <utility>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace Program
{

namespace
{

// What an interrupt removes. A signal handler may touch nothing but such plain memory.
char g_temporaryPath[4096];
volatile std::sig_atomic_t g_temporaryExists = 0;

extern "C" void removeTemporary(int signal)
{
    if (g_temporaryExists)
        ::unlink(g_temporaryPath);
    std::signal(signal, SIG_DFL);
    std::raise(signal);
}

// Comes before the file is there, so that no moment is left in which an interrupt would leave it behind.
void removeWhenInterrupted(std::string const& path)
{
    if (path.size() >= sizeof(g_temporaryPath))
        return;
    std::memcpy(g_temporaryPath, path.c_str(), path.size() + 1);
    g_temporaryExists = 1;
    for (int signal : {SIGINT, SIGTERM, SIGHUP})
    {
        if (std::signal(signal, removeTemporary) == SIG_IGN)
            std::signal(signal, SIG_IGN);
    }
}

// A name in the target's folder that nothing else has.
std::string temporaryName(std::string const& target)
{
    std::random_device random;
    const std::string name = fmt::format(".tavrin-{:08x}{:08x}", random(), random());
    return (std::filesystem::path(target).parent_path() / name).string();
}

// Where a chain of symbolic links ends, so that the link stays a link.
std::string followLinks(std::string const& path)
{
    std::error_code error;
    const std::filesystem::path resolved = std::filesystem::weakly_canonical(path, error);
    return error ? path : resolved.string();
}

// A device or a folder can't be replaced, and a file that is protected against writing should not be.
void refuseProtected(std::string const& path, std::string const& target)
{
    struct stat status;
    if (::stat(target.c_str(), &status) != 0)
        return;
    if (!S_ISREG(status.st_mode))
        fail("cannot write '{}': it is not a regular file", path);
    if (::access(target.c_str(), W_OK) != 0)
        fail("cannot write '{}': {}", path, std::strerror(errno));
}

// Gives the new file the permissions of the one that it will replace. Where that is not allowed it keeps those of any new file.
void keepPermissions(std::string const& target, int descriptor)
{
    struct stat status;
    if (::stat(target.c_str(), &status) == 0) [[maybe_unused]]
        const int changed = ::fchmod(descriptor, status.st_mode & 0777);
}

} // namespace

OutputFile::OutputFile(std::string const& path) : m_path(path), m_target(followLinks(path)), m_temporary(temporaryName(m_target))
{
    refuseProtected(m_path, m_target);
    removeWhenInterrupted(m_temporary);
    m_descriptor = ::open(m_temporary.c_str(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
    if (m_descriptor < 0)
    {
        const int error = errno;
        g_temporaryExists = 0;
        fail("cannot write '{}': {}", m_path, std::strerror(error));
    }
    keepPermissions(m_target, m_descriptor);
}

OutputFile::~OutputFile()
{
    if (m_descriptor < 0)
        return;
    ::close(m_descriptor);
    ::unlink(m_temporary.c_str());
    g_temporaryExists = 0;
}

bool OutputFile::write(std::uint64_t position, void const* buffer, std::size_t count) noexcept
{
    std::size_t done = 0;
    while (done < count)
    {
        const ssize_t n =
            ::pwrite(m_descriptor, static_cast<char const*>(buffer) + done, count - done, static_cast<off_t>(position + done));
        if (n < 0 && errno == EINTR)
            continue;
        if (n <= 0)
        {
            m_error = n < 0 ? errno : ENOSPC;
            return false;
        }
        done += static_cast<std::size_t>(n);
    }
    m_size = std::max<std::uint64_t>(m_size, position + count);
    return true;
}

std::size_t OutputFile::readSome(std::uint64_t position, void* buffer, std::size_t count) const noexcept
{
    return readAt(m_descriptor, position, buffer, count);
}

void OutputFile::check() const
{
    if (m_error != 0)
        fail("cannot write '{}': {}", m_path, std::strerror(m_error));
}

void OutputFile::commit()
{
    check();
    const int descriptor = std::exchange(m_descriptor, -1);
    // Some file systems tell that they are full only here.
    int error = ::close(descriptor) == 0 ? 0 : errno;
    if (error == 0 && std::rename(m_temporary.c_str(), m_target.c_str()) != 0)
        error = errno;
    if (error != 0)
        ::unlink(m_temporary.c_str());
    g_temporaryExists = 0;
    m_error = error;
    check();
}

} // namespace Program
