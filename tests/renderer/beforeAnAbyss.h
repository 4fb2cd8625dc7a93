// Memory for pictures of which nothing beyond the pixels may be touched.
#ifndef TAVRIN_TESTS_RENDERER_BEFORE_AN_ABYSS_H
#define TAVRIN_TESTS_RENDERER_BEFORE_AN_ABYSS_H

#include <gtest/gtest.h>

#include <sys/mman.h>
#include <unistd.h>

#include <cstddef>

// Memory whose end nobody may read or write beyond.
class BeforeAnAbyss
{
public:
    explicit BeforeAnAbyss(std::size_t bytes) : m_size((bytes / pageSize() + 1) * pageSize() + pageSize())
    {
        m_memory = static_cast<unsigned char*>(mmap(nullptr, m_size, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0));
        m_begin = m_memory + m_size - pageSize() - bytes;
        EXPECT_EQ(0, mprotect(m_memory + m_size - pageSize(), pageSize(), PROT_NONE));
    }
    BeforeAnAbyss(BeforeAnAbyss const&) = delete;
    BeforeAnAbyss& operator=(BeforeAnAbyss const&) = delete;
    ~BeforeAnAbyss() { munmap(m_memory, m_size); }

    unsigned char* begin() const { return m_begin; }

private:
    static std::size_t pageSize() { return static_cast<std::size_t>(sysconf(_SC_PAGESIZE)); }

    std::size_t m_size;
    unsigned char* m_memory;
    unsigned char* m_begin;
};

#endif
