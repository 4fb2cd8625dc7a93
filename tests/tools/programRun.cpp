// The built program as a subprocess, and a folder to run it in.
#include "programRun.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <csignal>
#include <filesystem>
#include <fstream>
#include <sstream>

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace fs = std::filesystem;

std::vector<std::string> WorkFolder::names() const
{
    std::vector<std::string> names;
    for (fs::directory_entry const& entry : fs::directory_iterator(path()))
        names.push_back(entry.path().filename().string());
    std::sort(names.begin(), names.end());
    return names;
}

namespace
{

// In the child: nothing but calls that are safe after a fork.
[[noreturn]] void becomeProgram(char const* folder, std::vector<char*> const& arguments, int out, int err,
                                std::size_t fileSizeLimit)
{
    ::dup2(out, STDOUT_FILENO);
    ::dup2(err, STDERR_FILENO);
    if (fileSizeLimit > 0)
    {
        const rlimit limit = {fileSizeLimit, fileSizeLimit};
        ::setrlimit(RLIMIT_FSIZE, &limit);
        // Writing then fails as on a full disk.
        ::signal(SIGXFSZ, SIG_IGN);
    }
    if (::chdir(folder) == 0)
        ::execv(TAVRIN_PROGRAM, arguments.data());
    ::_exit(127);
}

// The child's process id. Its outputs go to the two files.
pid_t start(WorkFolder const& folder, std::vector<std::string> const& arguments, std::string const& outPath,
            std::string const& errPath, std::size_t fileSizeLimit)
{
    const int out = ::open(outPath.c_str(), O_WRONLY | O_CREAT | O_CLOEXEC, 0600);
    const int err = ::open(errPath.c_str(), O_WRONLY | O_CREAT | O_CLOEXEC, 0600);

    std::vector<std::string> texts = {TAVRIN_PROGRAM};
    texts.insert(texts.end(), arguments.begin(), arguments.end());
    std::vector<char*> pointers;
    for (std::string& text : texts)
        pointers.push_back(text.data());
    pointers.push_back(nullptr);
    const std::string folderPath = folder.path().string();

    const pid_t child = ::fork();
    if (child == 0)
        becomeProgram(folderPath.c_str(), pointers, out, err, fileSizeLimit);
    ::close(out);
    ::close(err);
    return child;
}

} // namespace

Outcome runProgram(WorkFolder const& folder, std::vector<std::string> const& arguments, std::size_t fileSizeLimit)
{
    const WorkFolder outputs;
    const pid_t child = start(folder, arguments, outputs / "out", outputs / "err", fileSizeLimit);
    int status = 0;
    ::waitpid(child, &status, 0);
    return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, readText(outputs / "out"), readText(outputs / "err")};
}

int interruptProgram(WorkFolder const& folder, std::vector<std::string> const& arguments, std::string const& begin, int signal)
{
    const pid_t child = start(folder, arguments, "/dev/null", "/dev/null", 0);
    const auto hasBegun = [&]
    {
        const std::vector<std::string> names = folder.names();
        return std::any_of(names.begin(), names.end(),
                           [&](std::string const& name)
                           { return name.size() > begin.size() && name.compare(0, begin.size(), begin) == 0; });
    };
    int status = 0;
    while (!hasBegun() && ::waitpid(child, &status, WNOHANG) == 0)
        ::usleep(500);
    ::kill(child, signal);
    ::waitpid(child, &status, 0);
    return WIFSIGNALED(status) ? WTERMSIG(status) : 0;
}

std::string readText(std::string const& path)
{
    std::ifstream file(path, std::ios::binary);
    std::stringstream text;
    text << file.rdbuf();
    return text.str();
}

void writeText(std::string const& path, std::string const& text)
{
    std::ofstream file(path, std::ios::binary);
    file << text;
}

void writeMatrixTransform(std::string const& path, std::string const& numbers)
{
    writeText(path, "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
                    "<ProcessList version=\"1.3\" id=\"test\">\n"
                    "    <Matrix inBitDepth=\"32f\" outBitDepth=\"32f\">\n"
                    "        <Array dim=\"3 3 3\">" +
                        numbers +
                        "</Array>\n"
                        "    </Matrix>\n"
                        "</ProcessList>\n");
}

void writeIdentityTransform(std::string const& path)
{
    writeMatrixTransform(path, "1 0 0  0 1 0  0 0 1");
}
