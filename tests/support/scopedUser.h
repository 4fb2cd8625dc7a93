// A test as somebody who may not do everything: permissions mean nothing to the superuser.
#ifndef TAVRIN_TESTS_SUPPORT_SCOPED_USER_H
#define TAVRIN_TESTS_SUPPORT_SCOPED_USER_H

#include <exception>
#include <stdexcept>

#include <unistd.h>

// Where the superuser runs the tests, files are opened as somebody else while it lives.
class ScopedUser
{
public:
    ScopedUser()
    {
        if (m_isSuperuser && ::seteuid(kNobody) != 0)
            throw std::runtime_error("can't become somebody else");
    }
    ScopedUser(ScopedUser const&) = delete;
    ScopedUser& operator=(ScopedUser const&) = delete;
    ~ScopedUser()
    {
        if (m_isSuperuser && ::seteuid(0) != 0)
            std::terminate();
    }

private:
    static constexpr uid_t kNobody = 65534;
    bool const m_isSuperuser = ::geteuid() == 0;
};

#endif
