// An environment variable that has a value for the length of a test.
#ifndef TAVRIN_TESTS_SUPPORT_SCOPED_ENVIRONMENT_H
#define TAVRIN_TESTS_SUPPORT_SCOPED_ENVIRONMENT_H

#include <cstdlib>
#include <optional>
#include <string>

class ScopedEnvironment
{
public:
    ScopedEnvironment(char const* name, char const* value) : m_name(name)
    {
        if (char const* const before = std::getenv(name))
            m_before = before;
        ::setenv(name, value, 1);
    }
    ScopedEnvironment(ScopedEnvironment const&) = delete;
    ScopedEnvironment& operator=(ScopedEnvironment const&) = delete;
    ~ScopedEnvironment()
    {
        if (m_before)
            ::setenv(m_name, m_before->c_str(), 1);
        else
            ::unsetenv(m_name);
    }

private:
    char const* m_name;
    std::optional<std::string> m_before;
};

#endif
