// What a test expects of a failure inside the library: its id and its words.
#ifndef TAVRIN_TESTS_SUPPORT_FAILURE_H
#define TAVRIN_TESTS_SUPPORT_FAILURE_H

#include "utils/errorMessage.h"

#include <ostream>
#include <string>

struct Failure
{
    Color::ErrorId id = 0;
    std::string words;

    bool operator==(Failure const&) const = default;
};

inline void PrintTo(Failure const& failure, std::ostream* out)
{
    *out << "0x" << std::hex << failure.id << std::dec << " \"" << failure.words << '"';
}

// The failure that the body throws; id 0 when it throws none.
template <class Body>
Failure failureOf(Body&& body)
{
    try
    {
        body();
    }
    catch (Color::Exception const& exception)
    {
        return {exception.getId(), exception.getMessage()};
    }
    return {};
}

#endif
