// Which kinds of files there are, and how a file becomes a transform.
#include "xml/fileIOManager.h"

#include "support/ownPreferences.h"
#include "utils/locations.h"
#include "xml/documents.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <boost/filesystem.hpp>

#include <filesystem>
#include <string>
#include <vector>

using namespace XmlTest;
using Color::FileIOManager;

namespace
{

Failure failureOfPath(std::string const& path)
{
    return failureOf([&] { FileIOManager::loadTransform(path); });
}

} // namespace

TEST(FileFormats, StandInTheOrderOfTheirReaders)
{
    std::vector<std::string> extensions;
    for (auto const& [extension, description] : FileIOManager::getSupportedFileFormats())
        extensions.push_back(extension);
    // What comes after depends on the libraries that this build has.
    std::vector<std::string> const own = {"ctf", "cdl", "ccc", "cc", "lut", "3dl", "icm", "icc", "pf"};
    ASSERT_GE(extensions.size(), own.size());
    extensions.resize(own.size());
    EXPECT_EQ(extensions, own);
}

TEST(FileFormats, AreToldOnce)
{
    EXPECT_EQ(&FileIOManager::getSupportedFileFormats(), &FileIOManager::getSupportedFileFormats());
}

TEST(FileFormats, AreToldByTheExtensionInItsExactSpelling)
{
    EXPECT_TRUE(FileIOManager::isFileSupported("no/such/file.ctf"));
    EXPECT_TRUE(FileIOManager::isFileSupported("a.xml"));
    EXPECT_FALSE(FileIOManager::isFileSupported("a.CTF"));
    EXPECT_FALSE(FileIOManager::isFileSupported("ctf"));
    EXPECT_FALSE(FileIOManager::isFileSupported(""));
}

TEST(FileLoading, GivesTheTransform)
{
    TemporaryFolder const folder;
    for (char const* name : {"a.ctf", "a.xml", "wide name \xc3\xa4 100%s.ctf"})
        EXPECT_EQ(FileIOManager::loadTransform(folder.write(name, inRoot(kIdentityRange)))->getId(), "a") << name;
}

TEST(FileLoading, GivesTheFirstOfSeveralColourCorrections)
{
    TemporaryFolder const folder;
    std::string const corrections = "<ColorCorrectionCollection><ColorCorrection id='1'/><ColorCorrection id='2'/>"
                                    "</ColorCorrectionCollection>";
    EXPECT_EQ(FileIOManager::loadTransform(folder.write("a.CCC", corrections))->getId(), "1");
}

TEST(FileLoading, TellsAPathThatIsNoFile)
{
    TemporaryFolder const folder;
    std::filesystem::create_directory(folder.file("folder.ctf"));
    EXPECT_EQ(failureOfPath(folder.file("folder.ctf")), (Failure{0x460002, "Not a file: '" + folder.file("folder.ctf") + "'"}));
    EXPECT_EQ(failureOfPath(folder.file("missing.ctf")),
              (Failure{0x460003, "No file found: '" + folder.file("missing.ctf") + "'"}));
    EXPECT_EQ(failureOfPath(""), (Failure{0x460003, "No file found: ''"}));
    // A file in the place of a folder.
    std::string const path = folder.write("a.ctf", "") + "/b.ctf";
    EXPECT_EQ(failureOfPath(path), (Failure{0x460003, "No file found: '" + path + "'"}));
}

TEST(FileLoading, TellsAPathBeforeItsKind)
{
    EXPECT_EQ(failureOfPath("/missing.tif").id, 0x460003U);
    EXPECT_EQ(failureOfPath("/").id, 0x460002U);
}

TEST(FileLoading, TellsAKindThatNoReaderTakes)
{
    TemporaryFolder const folder;
    for (char const* name : {"a.CTF", "a", "a.tif"})
    {
        std::string const path = folder.write(name, inRoot(kIdentityRange));
        EXPECT_EQ(failureOfPath(path), (Failure{0x460001, "Unsupported file format: '" + path + "'"}));
    }
}

TEST(FileLoading, TellsWhatTheFileSystemSays)
{
    std::string const path = "/" + std::string(300, 'n') + ".ctf";
    std::string words;
    try
    {
        boost::filesystem::status(path);
    }
    catch (boost::filesystem::filesystem_error const& error)
    {
        words = error.what();
    }
    ASSERT_NE(words, "");
    EXPECT_EQ(failureOfPath(path), (Failure{0x460004, "Filesystem error for '" + path + "': '" + words}));
}

// With one reader for the file its own message arrives, with the line.
TEST(FileLoading, TellsTheOnlyReadersMessageAsItIs)
{
    TemporaryFolder const folder;
    std::string const path = folder.write("a.ctf", "<ProcessList id='a'>\n<Range/></ProcessList>");
    EXPECT_EQ(failureOfPath(path), (Failure{0x420006, "Required attribute 'Input Bit Depth' missing in 'Range' line 2: " + path}));
}

namespace
{

// There is a file misc/a.ctf among the system's transforms.
class FilesOfInstallations : public OwnPreferencesTest
{
protected:
    FilesOfInstallations()
    {
        std::filesystem::create_directory(systemTransforms() + "/misc");
        m_here = m_folder.write("system/transforms/misc/a.ctf", inRoot(kIdentityRange));
    }

    std::string m_here;
    std::string const m_gone = "/gone/Norvane/Halvard/Tavrin/2014.1/transforms/misc/a.ctf";
};

} // namespace

TEST_F(FilesOfInstallations, AreFoundInThisOneInPlaceOfAnother)
{
    Color::Utils::getSystemPath();
    EXPECT_EQ(FileIOManager::resolveSystemTransformPath(m_gone), m_here);
    EXPECT_EQ(FileIOManager::loadTransform(m_gone)->getId(), "a");
    EXPECT_EQ(failureOfPath("/gone/Norvane/Halvard/Tavrin/2014.1/transforms/misc"),
              (Failure{0x460002, "Not a file: '" + systemTransforms() + "/misc'"}));
}

TEST_F(FilesOfInstallations, AreTakenWhereTheyAre)
{
    Color::Utils::getSystemPath();
    std::filesystem::create_directories(m_folder.file("Norvane/Halvard/Tavrin/2014.1/transforms/misc"));
    std::string const there = m_folder.write("Norvane/Halvard/Tavrin/2014.1/transforms/misc/a.ctf", inRoot(kIdentityRange));
    EXPECT_EQ(FileIOManager::resolveSystemTransformPath(there), there);
}

TEST_F(FilesOfInstallations, AreNotLookedForElsewhere)
{
    Color::Utils::getSystemPath();
    for (std::string const path :
         {"", "a.ctf", "/gone/transforms/misc/a.ctf", "/gone/Norvane/Halvard/Tavrin/2014.1/transforms/misc/b.ctf",
          "/gone/Norvane/Halvard/Tavrin", "/gone/Norvane/Halvard/Tavrin/2014.1"})
        EXPECT_EQ(FileIOManager::resolveSystemTransformPath(path), path);
}

TEST_F(FilesOfInstallations, AreNotLookedForAsLongAsNothingIsKnownOfTheSystem)
{
    EXPECT_EQ(FileIOManager::resolveSystemTransformPath(m_gone), m_gone);
    EXPECT_EQ(failureOfPath(m_gone), (Failure{0x460003, "No file found: '" + m_gone + "'"}));
}
