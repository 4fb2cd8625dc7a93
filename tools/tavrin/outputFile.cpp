// A file that appears under its name whole or not at all.
#include "outputFile.h"

#include "failure.h"
#include "inputFile.h"

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <filesystem>
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

void rememberTemporary(std::string const& path)
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

// Where a chain of symbolic links ends, so that the link stays a link.
std::string followLinks(std::string const& path)
{
    std::error_code error;
    const std::filesystem::path resolved = std::filesystem::weakly_canonical(path, error);
    return error ? path : resolved.string();
}

// The permissions of the file that will be replaced, or those of any new file.
mode_t permissionsFor(std::string const& target)
{
    struct stat status;
    if (::stat(target.c_str(), &status) == 0)
        return status.st_mode & 0777;
    const mode_t mask = ::umask(0);
    ::umask(mask);
    return 0666 & ~mask;
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

} // namespace

OutputFile::OutputFile(std::string const& path) : m_path(path), m_target(followLinks(path)), m_temporary(m_target + ".XXXXXX")
{
    refuseProtected(m_path, m_target);
    m_descriptor = ::mkostemp(m_temporary.data(), O_CLOEXEC);
    if (m_descriptor < 0)
        fail("cannot write '{}': {}", m_path, std::strerror(errno));
    rememberTemporary(m_temporary);
    // Where permissions can't be changed the file keeps its private ones, which harms nobody.
    [[maybe_unused]] const int changed = ::fchmod(m_descriptor, permissionsFor(m_target));
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
