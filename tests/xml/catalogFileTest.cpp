// The file of a catalog: what it holds, and when it is built anew.
#include "xml/catalogFile.h"
#include "support/catalogTransforms.h"
#include "support/failure.h"
#include "support/temporaryFolder.h"
#include "xml/catalogManager.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>

using namespace CatalogTest;
using Color::buildCatalog;
using std::chrono::seconds;
using testing::ElementsAre;
using testing::IsEmpty;

namespace fs = std::filesystem;

namespace
{

std::string const kTransform = transformFile({kAces, kCieXyz, {"View"}, "View"});

class BuildCatalog : public testing::Test
{
protected:
    std::string path(std::string const& name) const { return (m_files / name).string(); }
    std::string write(std::string const& name, std::string const& content = kTransform) const
    {
        return writeFile(m_files / name, content);
    }
    // The catalog lies outside of the folder, so that its coming leaves the folder's time alone.
    std::string build(bool force = false) const { return buildCatalog(m_catalog, m_files.string(), force); }
    // What an expression finds in the built catalog.
    Color::SearchResults search(std::string const& xpath) const
    {
        Color::CatalogManager manager;
        manager.loadCatalog("catalog", m_catalog);
        return manager.searchTransforms("", xpath);
    }
    std::vector<std::string> transformPaths() const
    {
        std::vector<std::string> paths;
        for (Color::SearchResult const& result : search("/Catalog/CatalogItem"))
            paths.push_back(result.getTransformPath());
        return paths;
    }
    // Everything in the folder, and the catalog, is as old as can be told.
    void age() const
    {
        for (fs::directory_entry const& entry : fs::recursive_directory_iterator(m_folder.path()))
            fs::last_write_time(entry.path(), kLongAgo);
    }

    TemporaryFolder const m_folder;
    fs::path const m_files = m_folder.path() / "files";
    std::string const m_catalog = m_folder.file("x.cat");
    fs::file_time_type const kLongAgo = fs::file_time_type::clock::now() - seconds(1000);

private:
    bool const m_isCreated = fs::create_directory(m_files);
};

TEST_F(BuildCatalog, GivesTheCatalogItsExtension)
{
    EXPECT_EQ(buildCatalog(m_folder.file("x.txt"), m_files.string(), true), m_folder.file("x.cat"));
    EXPECT_TRUE(fs::exists(m_folder.file("x.cat")));
    EXPECT_FALSE(fs::exists(m_folder.file("x.txt")));
}

TEST_F(BuildCatalog, NormalisesItsPath)
{
    EXPECT_EQ(buildCatalog(m_folder.file("files/.././x.cat"), m_files.string(), true), m_folder.file("x.cat"));
}

TEST_F(BuildCatalog, TakesTransformFilesOfAllFoldersInTheOrderOfTheirPaths)
{
    write("b.ctf");
    write("a/z.xml");
    write("a/b/c.ctf");
    build();
    EXPECT_THAT(transformPaths(), ElementsAre(path("a/b/c.ctf"), path("a/z.xml"), path("b.ctf")));
}

TEST_F(BuildCatalog, TellsAbsoluteNormalisedPathsOfARelativeFolder)
{
    write("a.ctf");
    fs::path const relative = fs::relative(m_files) / ".." / "files";
    buildCatalog(m_catalog, relative.string(), true);
    EXPECT_THAT(transformPaths(), ElementsAre(path("a.ctf")));
}

TEST_F(BuildCatalog, KeepsAPathWhateverCharactersItHas)
{
    write("it's <a> & \"b\".ctf");
    build();
    EXPECT_THAT(transformPaths(), ElementsAre(path("it's <a> & \"b\".ctf")));
}

TEST_F(BuildCatalog, LeavesOutWhatIsNoTransform)
{
    write("good.ctf");
    write("other.txt");
    write("upper.CTF");
    write("otherRoot.xml", "<Preferences><ProcessList id='a'/></Preferences>");
    write("broken.ctf", "<ProcessList id='a'><Info></ProcessList>");
    write("open.ctf", "<ProcessList id='a'><Info>");
    write("empty.ctf", "");
    write("noise.ctf", std::string("\0\xff\x7f noise", 10));
    fs::create_directory(m_files / "folder.ctf");
    fs::create_symlink("nowhere.ctf", m_files / "dangling.ctf");
    build();
    EXPECT_THAT(transformPaths(), ElementsAre(path("good.ctf")));
}

TEST_F(BuildCatalog, OfNoTransformsIsEmpty)
{
    build();
    EXPECT_THAT(transformPaths(), IsEmpty());
}

TEST_F(BuildCatalog, LeavesOutTheBulkOfTheData)
{
    write("all.ctf", processList(element("Description", "words") + scaling(2.0) +
                                 "<ASC_CDL inBitDepth='32f' outBitDepth='32f' style='v1.2_Fwd'><SOPNode>" +
                                 element("Slope", "1 1 1") + element("Offset", "0 0 0") + element("Power", "1 1 1") +
                                 "</SOPNode><SatNode>" + element("Saturation", "1") + "</SatNode></ASC_CDL>"));
    build();
    EXPECT_EQ(search("/Catalog/CatalogItem/CatalogTransform/ProcessList[@id='id']/Description[text()='words']").size(), 1U);
    EXPECT_EQ(search("//Matrix[@inBitDepth='32f']/Array[@dim='3 3 3']").size(), 1U);
    EXPECT_EQ(search("//SOPNode/*").size(), 3U);
    for (char const* tag : {"Array", "Slope", "Offset", "Power", "Saturation"})
        EXPECT_THAT(search(std::string("//") + tag + "/text()"), IsEmpty()) << tag;
}

TEST_F(BuildCatalog, RefusesAFolderThatIsNotThere)
{
    std::string const missing = m_folder.file("missing");
    EXPECT_EQ(failureOf([&] { buildCatalog(m_catalog, missing, true); }), (Failure{0x4b0001, "Directory not found: " + missing}));
    EXPECT_FALSE(fs::exists(m_catalog));
}

TEST_F(BuildCatalog, RefusesACatalogThatCannotBeWritten)
{
    std::string const catalog = m_folder.file("missing/x.cat");
    EXPECT_EQ(failureOf([&] { buildCatalog(catalog, m_files.string(), true); }),
              (Failure{0x4b0002, "Illegal catalog filename: " + catalog}));
}

TEST_F(BuildCatalog, LeavesACatalogThatIsAsNewAsEverything)
{
    write("a/b.ctf");
    build();
    writeFile(m_catalog, "<Catalog/>");
    age();
    build();
    EXPECT_THAT(transformPaths(), IsEmpty());
}

TEST_F(BuildCatalog, WithForceBuildsItAllTheSame)
{
    write("b.ctf");
    writeFile(m_catalog, "<Catalog/>");
    age();
    build(true);
    EXPECT_THAT(transformPaths(), ElementsAre(path("b.ctf")));
}

// Parameter: the entry that is newer than the catalog, below the folder.
class StaleCatalog : public BuildCatalog, public testing::WithParamInterface<char const*>
{
};

TEST_P(StaleCatalog, IsBuiltAnew)
{
    write("a/b/c.ctf");
    writeFile(m_catalog, "<Catalog/>");
    age();
    fs::last_write_time(m_files / GetParam(), kLongAgo + seconds(1));
    build();
    EXPECT_THAT(transformPaths(), ElementsAre(path("a/b/c.ctf")));
}

INSTANTIATE_TEST_SUITE_P(All, StaleCatalog, testing::Values("", "a", "a/b", "a/b/c.ctf"));

class CatalogWithinItsFolder : public BuildCatalog
{
protected:
    std::string build() const { return buildCatalog(m_within, m_files.string(), false); }
    bool isRebuilt() const
    {
        fs::file_time_type const before = fs::last_write_time(m_within);
        build();
        return fs::last_write_time(m_within) != before;
    }

    std::string const m_within = path("shared_catalog.cat");
};

TEST_F(CatalogWithinItsFolder, IsNotStaleThroughItsOwnComing)
{
    write("a.ctf");
    build();
    EXPECT_FALSE(isRebuilt());
}

TEST_F(CatalogWithinItsFolder, IsStaleWhenAFileComesOrGoesOrChanges)
{
    build();
    age();
    write("a.ctf");
    EXPECT_TRUE(isRebuilt());
    age();
    fs::last_write_time(path("a.ctf"), kLongAgo + seconds(1));
    EXPECT_TRUE(isRebuilt());
    age();
    fs::remove(path("a.ctf"));
    EXPECT_TRUE(isRebuilt());
}

// What is changed while a catalog is built may or may not be in it.
TEST_F(CatalogWithinItsFolder, StaysStaleWhereSomethingIsNewerThanTheStartOfItsBuilding)
{
    fs::last_write_time(write("a.ctf"), fs::file_time_type::clock::now() + seconds(1000));
    build();
    EXPECT_TRUE(isRebuilt());
}

TEST_F(CatalogWithinItsFolder, LeavesNothingElseBehind)
{
    build();
    EXPECT_EQ(std::distance(fs::directory_iterator(m_files), {}), 1);
}

} // namespace
