// Tests of what a process has once: its locations and its preferences.
#ifndef TAVRIN_TESTS_SUPPORT_OWN_PREFERENCES_H
#define TAVRIN_TESTS_SUPPORT_OWN_PREFERENCES_H

#include "support/scopedEnvironment.h"
#include "support/temporaryFolder.h"

#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <string>

// A test that needs a process in which nothing has been asked for yet. ctest gives each test one of its own; where a test program
// runs several tests, these are skipped.
class OwnProcessTest : public testing::Test
{
protected:
    void SetUp() override
    {
        if (testing::UnitTest::GetInstance()->test_to_run_count() > 1)
            GTEST_SKIP() << "needs a process of its own, as ctest gives it";
    }
};

// The whole of a test's locations, in a folder of its own.
class OwnPreferencesTest : public OwnProcessTest
{
protected:
    OwnPreferencesTest()
    {
        std::filesystem::create_directories(systemTransforms());
        std::filesystem::create_directory(shared());
    }

    std::string systemPath() const { return m_folder.file("system"); }
    std::string systemTransforms() const { return m_folder.file("system/transforms"); }
    std::string shared() const { return m_folder.file("shared"); }
    std::string configFile() const { return m_folder.file("tavrinConfig.xml"); }
    std::string configuration() const { return contentOfFile(configFile()); }
    // The folder or file becomes newer than all others, also those of this very moment.
    static void touch(std::string const& path)
    {
        std::filesystem::last_write_time(path, std::filesystem::file_time_type::clock::now() + std::chrono::seconds(10));
    }

    TemporaryFolder const m_folder;

private:
    ScopedEnvironment const m_system{"TAVRIN_OVERRIDE_SYSTEM_TRANSFORM_LOCATION", systemPath().c_str()};
    ScopedEnvironment const m_config{"TAVRIN_OVERRIDE_CONFIG_PATH", configFile().c_str()};
    ScopedEnvironment const m_shared{"TAVRIN_OVERRIDE_SHARED_PATH", shared().c_str()};
};

#endif
