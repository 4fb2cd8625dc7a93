// How a command stops: a text of one line for people, and by its type the exit status.
#ifndef TAVRIN_PROGRAM_FAILURE_H
#define TAVRIN_PROGRAM_FAILURE_H

#include <fmt/format.h>

#include <stdexcept>
#include <utility>

namespace Program
{

// The work could not be done: exit status 1.
class Failure : public std::runtime_error
{
public:
    using std::runtime_error::runtime_error;
};

// What was asked for makes no sense: exit status 2.
class UsageFailure : public std::runtime_error
{
public:
    using std::runtime_error::runtime_error;
};

template <class Kind = Failure, class... Args>
[[noreturn]] void fail(fmt::format_string<Args...> format, Args&&... args)
{
    throw Kind(fmt::format(format, std::forward<Args>(args)...));
}

} // namespace Program

#endif
