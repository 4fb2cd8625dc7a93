// The built program as a subprocess, and a folder to run it in.
#ifndef TAVRIN_TESTS_PROGRAM_RUN_H
#define TAVRIN_TESTS_PROGRAM_RUN_H

#include "support/temporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

// A folder whose files are named short: folder / "in.png".
class WorkFolder : public TemporaryFolder
{
public:
    std::string operator/(std::string const& name) const { return file(name); }
    // The names of all files in it, sorted.
    std::vector<std::string> names() const;
};

struct Outcome
{
    int status; // the exit status, or -1 when the program ended by a signal
    std::string out;
    std::string err;
};

// Runs the program in that folder. A limit above 0 is the largest size in bytes of a file that it can write.
Outcome runProgram(WorkFolder const& folder, std::vector<std::string> const& arguments, std::size_t fileSizeLimit = 0);

// Starts the program in that folder, its outputs thrown away, and sends it the signal as soon as the folder holds a file whose name
// begins so and goes on. Returns the signal by which it ended, 0 when it exited.
int interruptProgram(WorkFolder const& folder, std::vector<std::string> const& arguments, std::string const& begin, int signal);

std::string readText(std::string const& path);
void writeText(std::string const& path, std::string const& text);

// A transform file that multiplies a pixel by the nine numbers, rows of three, at float depths.
void writeMatrixTransform(std::string const& path, std::string const& numbers);

// A transform that changes nothing.
void writeIdentityTransform(std::string const& path);

// A test with a folder and the program in it.
class ProgramTest : public testing::Test
{
protected:
    Outcome run(std::vector<std::string> const& arguments) { return runProgram(folder, arguments); }

    WorkFolder folder;
};

// The one line that a failing run prints, and nothing else; the match is on the line without its end.
inline void expectFailure(Outcome const& outcome, int status, testing::Matcher<std::string const&> const& line)
{
    EXPECT_EQ(outcome.status, status);
    EXPECT_EQ(outcome.out, "");
    ASSERT_THAT(outcome.err, testing::EndsWith("\n"));
    const std::string text = outcome.err.substr(0, outcome.err.size() - 1);
    EXPECT_THAT(text, testing::Not(testing::HasSubstr("\n")));
    EXPECT_THAT(text, testing::StartsWith("tavrin: "));
    EXPECT_THAT(text, line);
}

#endif
