// Texts that are held against files of tests/data.
#ifndef TAVRIN_TESTS_SUPPORT_EXPECTED_FILE_H
#define TAVRIN_TESTS_SUPPORT_EXPECTED_FILE_H

#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <sstream>
#include <string>

// Byte for byte. With TAVRIN_REWRITE_EXPECTED set in the environment, a file that differs is rewritten instead, so that an intended
// change can be looked through as a difference between versions; its test fails that once.
inline void expectFileHolds(std::string const& path, std::string const& text)
{
    std::ostringstream expected;
    expected << std::ifstream(path, std::ios::binary).rdbuf();
    if (expected.str() == text)
        return;
    if (std::getenv("TAVRIN_REWRITE_EXPECTED") != nullptr)
    {
        std::ofstream(path, std::ios::binary) << text;
        FAIL() << path << " was rewritten: look through the difference";
    }
    EXPECT_EQ(expected.str(), text) << path;
}

#endif
