// Browsing a tree of transform files.
#include <tavrin/tavrin.h>

#include "support/scopedUser.h"
#include "support/temporaryFolder.h"
#include "transformFixtures.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <string>
#include <vector>

using namespace Tavrin;
using testing::ElementsAre;
using testing::IsEmpty;
namespace fs = std::filesystem;

namespace
{

using Names = std::vector<std::string>;

class Collector : public TransformPathMonitor::Callback
{
public:
    void onEntry(char const* name) override
    {
        m_names.emplace_back(name);
        if (m_whenCalled)
            m_whenCalled();
    }

    Names m_names;
    std::function<void()> m_whenCalled;
};

Told const kInvalidParameter{0x2020004, "Invalid parameter"};

class PathMonitor : public testing::Test
{
protected:
    PathMonitor()
    {
        fs::permissions(m_folder.path(), fs::perms::all); // Some tests are somebody else.
        fs::create_directories(m_folder.file("looks/film"));
        m_folder.write("b.ctf", "");
        m_folder.write("a.ctf", "");
        m_folder.write("looks/warm.ctf", "");
    }

    Names files(std::string const& relativePath = "")
    {
        Collector collector;
        EXPECT_EQ(told(m_monitor.listFiles(relativePath.c_str(), collector)), kGood);
        return collector.m_names;
    }
    Names folders(std::string const& relativePath = "")
    {
        Collector collector;
        EXPECT_EQ(told(m_monitor.listDirectories(relativePath.c_str(), collector)), kGood);
        return collector.m_names;
    }
    // What both lists say; they say the same.
    Told failureOf(char const* relativePath)
    {
        Collector collector;
        Told const failure = told(m_monitor.listFiles(relativePath, collector));
        EXPECT_EQ(told(m_monitor.listDirectories(relativePath, collector)), failure);
        EXPECT_THAT(collector.m_names, IsEmpty());
        return failure;
    }
    // Changes a folder without a change of its time.
    void addUnnoticed(std::string const& name) const
    {
        fs::path const folder = (m_folder.path() / name).parent_path();
        fs::file_time_type const time = fs::last_write_time(folder);
        m_folder.write(name, "");
        fs::last_write_time(folder, time);
    }
    static void age(fs::path const& folder) { fs::last_write_time(folder, fs::last_write_time(folder) - std::chrono::hours(1)); }

    TemporaryFolder const m_folder;
    TransformPathMonitor m_monitor{m_folder.path().c_str()};
};

} // namespace

TEST_F(PathMonitor, ListsFilesAndFoldersInTheOrderOfTheirNames)
{
    EXPECT_THAT(files(), ElementsAre("a.ctf", "b.ctf"));
    EXPECT_THAT(folders(), ElementsAre("looks"));
    EXPECT_THAT(files("looks"), ElementsAre("warm.ctf"));
    EXPECT_THAT(folders("looks"), ElementsAre("film"));
    EXPECT_THAT(files("looks/film"), IsEmpty());
    EXPECT_THAT(folders("looks/film"), IsEmpty());
}

TEST_F(PathMonitor, ListsOnlyWhatMayBeATransform)
{
    for (char const* const name : {"notes.doc", "ctf", ".ctf.swp", "c.CTF"})
        m_folder.write(std::string("looks/film/") + name, "");
    fs::create_directory(m_folder.file("looks/film/folder.ctf"));
    fs::create_symlink("nowhere.ctf", m_folder.file("looks/film/lost.ctf"));
    fs::create_symlink(m_folder.file("a.ctf"), m_folder.file("looks/film/link.ctf"));
    EXPECT_THAT(files("looks/film"), ElementsAre("link.ctf"));
    EXPECT_THAT(folders("looks/film"), ElementsAre("folder.ctf"));
}

TEST_F(PathMonitor, ReadsAFolderAgainOnlyWhenItsTimeHasChanged)
{
    EXPECT_THAT(files(), ElementsAre("a.ctf", "b.ctf"));
    addUnnoticed("c.ctf");
    EXPECT_THAT(files(), ElementsAre("a.ctf", "b.ctf"));
    EXPECT_THAT(folders(), ElementsAre("looks"));
    age(m_folder.path()); // Any other time will do, an earlier one too.
    EXPECT_THAT(files(), ElementsAre("a.ctf", "b.ctf", "c.ctf"));
}

TEST_F(PathMonitor, DoesNotReadAFolderAgainForAChangeInASubfolder)
{
    EXPECT_THAT(files(), ElementsAre("a.ctf", "b.ctf"));
    EXPECT_THAT(files("looks"), ElementsAre("warm.ctf"));
    addUnnoticed("c.ctf");
    m_folder.write("looks/cold.ctf", "");
    age(m_folder.file("looks"));
    EXPECT_THAT(files(), ElementsAre("a.ctf", "b.ctf"));
    EXPECT_THAT(files("looks"), ElementsAre("cold.ctf", "warm.ctf"));
}

TEST_F(PathMonitor, SeesWhatAnotherProcessDoes)
{
    EXPECT_THAT(files(), ElementsAre("a.ctf", "b.ctf"));
    std::string const folder = m_folder.path().string();
    std::string const command = "rm '" + folder + "/a.ctf' && touch '" + folder + "/c.ctf' && touch -d tomorrow '" + folder + "'";
    ASSERT_EQ(std::system(command.c_str()), 0);
    EXPECT_THAT(files(), ElementsAre("b.ctf", "c.ctf"));
}

TEST_F(PathMonitor, ForgetsWhatItHasSeenWithItsPath)
{
    EXPECT_EQ(m_monitor.getPath(), m_folder.path());
    EXPECT_THAT(files(), ElementsAre("a.ctf", "b.ctf"));
    addUnnoticed("c.ctf");
    EXPECT_EQ(told(m_monitor.setPath(nullptr)), kInvalidParameter);
    EXPECT_EQ(m_monitor.getPath(), m_folder.path());
    EXPECT_EQ(told(m_monitor.setPath(m_folder.path().c_str())), kGood);
    EXPECT_THAT(files(), ElementsAre("a.ctf", "b.ctf", "c.ctf"));
    EXPECT_EQ(told(m_monitor.setPath(m_folder.file("looks").c_str())), kGood);
    EXPECT_EQ(m_monitor.getPath(), m_folder.file("looks"));
    EXPECT_THAT(files(), ElementsAre("warm.ctf"));
}

TEST_F(PathMonitor, TellsWhatIsNoFolder)
{
    EXPECT_EQ(failureOf(nullptr), kInvalidParameter);
    EXPECT_EQ(failureOf("none"), Told(0x2020001, "Path not found: '" + m_folder.file("none") + "'"));
    EXPECT_EQ(failureOf("a.ctf"), Told(0x2020002, "Path is not a directory: '" + m_folder.file("a.ctf") + "'"));
}

TEST_F(PathMonitor, FindsNothingWithoutAPath)
{
    TransformPathMonitor monitor(nullptr);
    Collector collector;
    EXPECT_STREQ(monitor.getPath(), "");
    EXPECT_EQ(told(monitor.listFiles("", collector)), Told(0x2020001, "Path not found: ''"));
}

TEST_F(PathMonitor, TellsOfAFolderThatHasGone)
{
    EXPECT_THAT(files("looks"), ElementsAre("warm.ctf"));
    fs::remove_all(m_folder.file("looks"));
    EXPECT_EQ(failureOf("looks"), Told(0x2020001, "Path not found: '" + m_folder.file("looks") + "'"));
}

TEST_F(PathMonitor, ReadsAClosedFolderOnceItIsOpen)
{
    fs::permissions(m_folder.file("looks"), fs::perms::owner_exec);
    {
        ScopedUser const somebody;
        EXPECT_EQ(failureOf("looks"), Told(0x2020003, "Read error: '" + m_folder.file("looks") + "'"));
        EXPECT_EQ(failureOf("looks/film"), Told(0x2020003, "Read error: '" + m_folder.file("looks/film") + "'"));
    }
    fs::permissions(m_folder.file("looks"), fs::perms::all);
    EXPECT_THAT(files("looks"), ElementsAre("warm.ctf"));
}

TEST_F(PathMonitor, MayBeUsedByItsCallback)
{
    Collector collector;
    collector.m_whenCalled = [&]
    {
        EXPECT_THAT(folders(), ElementsAre("looks"));
        EXPECT_EQ(told(m_monitor.setPath(m_folder.path().c_str())), kGood);
    };
    EXPECT_EQ(told(m_monitor.listFiles("", collector)), kGood);
    EXPECT_THAT(collector.m_names, ElementsAre("a.ctf", "b.ctf"));
}

TEST_F(PathMonitor, StaysBelowItsPath)
{
    EXPECT_THAT(files("/looks"), ElementsAre("warm.ctf"));
}

TEST_F(PathMonitor, GivesTheFullPathOfAFile)
{
    char buffer[256];
    EXPECT_EQ(told(m_monitor.getFileFullPath("looks", "warm.ctf", buffer, sizeof buffer)), kGood);
    EXPECT_EQ(buffer, m_folder.file("looks/warm.ctf"));
    EXPECT_EQ(told(m_monitor.getFileFullPath("", "a.ctf", buffer, sizeof buffer)), kGood);
    EXPECT_EQ(buffer, m_folder.file("a.ctf"));
}

TEST_F(PathMonitor, CutsTheFullPathToTheBuffer)
{
    char buffer[] = "0123456789";
    EXPECT_EQ(told(m_monitor.getFileFullPath("", "a.ctf", buffer, 4)), kGood);
    EXPECT_EQ(buffer, m_folder.path().string().substr(0, 3));
    EXPECT_EQ(std::string(buffer + 4), "456789");
    EXPECT_EQ(told(m_monitor.getFileFullPath("", "a.ctf", buffer + 4, 0)), kGood);
    EXPECT_EQ(std::string(buffer + 4), "456789");
}

TEST_F(PathMonitor, RefusesNullForAFullPath)
{
    char buffer[8];
    EXPECT_EQ(told(m_monitor.getFileFullPath(nullptr, "a", buffer, sizeof buffer)), kInvalidParameter);
    EXPECT_EQ(told(m_monitor.getFileFullPath("a", nullptr, buffer, sizeof buffer)), kInvalidParameter);
    EXPECT_EQ(told(m_monitor.getFileFullPath("a", "b", nullptr, 8)), kInvalidParameter);
}
