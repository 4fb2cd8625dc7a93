// The catalogs of the process: where they come from, and when they are built.
#include "xml/catalogManagerInstance.h"
#include "support/catalogTransforms.h"
#include "support/failure.h"
#include "support/logCapture.h"
#include "support/ownPreferences.h"
#include "support/scopedUser.h"

#include <gmock/gmock.h>

using namespace CatalogTest;
using Color::Xml::Impl::CatalogManagerInstance;
using testing::ElementsAre;
using testing::IsEmpty;

namespace
{

constexpr char kProduct[] = "Product";

class CatalogsOfTheProcess : public OwnPreferencesTest
{
protected:
    static std::vector<std::string> inputSpaces()
    {
        return CatalogManagerInstance::getInstance().getCatalogManager().getInputSpaceNames(kProduct);
    }
    static void reload() { CatalogManagerInstance::getInstance().reloadCatalogs(); }
    static void write(std::string const& folder, std::string const& name)
    {
        writeFile(folder + "/" + name + ".ctf", transformFile({{name, name, "scene"}, kAces, {"Input", kProduct}, ""}));
    }
    // The lines for everybody.
    static std::vector<std::string> warnings(LogCapture const& log)
    {
        std::vector<std::string> texts;
        for (auto const& [level, text] : log.lines())
        {
            if (level == Color::LOG_USER)
                texts.push_back(text);
        }
        return texts;
    }
};

TEST_F(CatalogsOfTheProcess, HoldInstalledAndSharedTransforms)
{
    write(systemTransforms(), "installed");
    write(shared(), "shared");
    EXPECT_THAT(inputSpaces(), ElementsAre("installed", "shared"));
    EXPECT_TRUE(std::filesystem::exists(systemPath() + "/norv_catalog.cat"));
    EXPECT_TRUE(std::filesystem::exists(shared() + "/shared_catalog.cat"));
}

TEST_F(CatalogsOfTheProcess, AnInstalledCatalogStaysHoweverItsFolderChanges)
{
    write(systemTransforms(), "a");
    EXPECT_THAT(inputSpaces(), ElementsAre("a"));
    write(systemTransforms(), "b");
    touch(systemTransforms());
    reload();
    EXPECT_THAT(inputSpaces(), ElementsAre("a"));
}

TEST_F(CatalogsOfTheProcess, AnInstalledCatalogThatIsGoneIsBuiltAgain)
{
    write(systemTransforms(), "a");
    EXPECT_THAT(inputSpaces(), ElementsAre("a"));
    write(systemTransforms(), "b");
    std::filesystem::remove(systemPath() + "/norv_catalog.cat");
    reload();
    EXPECT_THAT(inputSpaces(), ElementsAre("a", "b"));
}

TEST_F(CatalogsOfTheProcess, ASharedCatalogFollowsWhatAnotherProcessDoesInItsFolder)
{
    write(shared(), "a");
    EXPECT_THAT(inputSpaces(), ElementsAre("a"));
    EXPECT_EQ(std::system(
                  ("cp '" + shared() + "/a.ctf' '" + shared() + "/copy.ctf' && touch -d '+10 seconds' '" + shared() + "'").c_str()),
              0);
    EXPECT_THAT(inputSpaces(), ElementsAre("a"));
    reload();
    EXPECT_THAT(inputSpaces(), ElementsAre("a", "a"));
}

TEST_F(CatalogsOfTheProcess, AreRefusedWithoutAnInstallation)
{
    std::filesystem::remove_all(systemPath());
    EXPECT_EQ(failureOf(inputSpaces), (Failure{0x4b000c, "Tavrin package is not installed: " + systemPath()}));
}

TEST_F(CatalogsOfTheProcess, AreRefusedWithoutInstalledTransforms)
{
    std::filesystem::remove_all(systemTransforms());
    EXPECT_EQ(failureOf(inputSpaces), (Failure{0x4b000a, "Tavrin transforms not installed: " + systemTransforms()}));
}

TEST_F(CatalogsOfTheProcess, AreTriedAnewAfterAFailure)
{
    std::filesystem::remove_all(systemTransforms());
    EXPECT_NE(failureOf(inputSpaces), Failure());
    write(systemTransforms(), "a");
    EXPECT_THAT(inputSpaces(), ElementsAre("a"));
}

TEST_F(CatalogsOfTheProcess, AReloadThatFailsLeavesWhatIsLoaded)
{
    write(systemTransforms(), "a");
    EXPECT_THAT(inputSpaces(), ElementsAre("a"));
    std::filesystem::remove_all(systemTransforms());
    EXPECT_NE(failureOf(reload), Failure());
    EXPECT_THAT(inputSpaces(), ElementsAre("a"));
}

class UnusableSharedFolder : public CatalogsOfTheProcess
{
protected:
    UnusableSharedFolder() { write(systemTransforms(), "installed"); }

    // What is installed works all the same, and one line says why nothing is shared.
    void expectOneLine(std::string const& reason) const
    {
        LogCapture const log;
        EXPECT_THAT(inputSpaces(), ElementsAre("installed"));
        EXPECT_THAT(warnings(log), ElementsAre("Unable to build or load catalog from Shared directory: " + reason));
    }
};

TEST_F(UnusableSharedFolder, ThatIsNotThere)
{
    std::filesystem::remove_all(shared());
    expectOneLine("Directory not found: " + shared());
}

TEST_F(UnusableSharedFolder, ThatIsAFile)
{
    std::filesystem::remove_all(shared());
    writeFile(shared(), "file");
    expectOneLine("Directory not found: " + shared());
}

TEST_F(UnusableSharedFolder, ThatNobodyMayRead)
{
    writeFile(configFile(), "<TavrinConfig version='1.0'/>");
    std::filesystem::permissions(m_folder.path(), std::filesystem::perms::all);
    std::filesystem::permissions(systemPath(), std::filesystem::perms::all);
    std::filesystem::permissions(shared(), std::filesystem::perms::none);
    {
        ScopedUser const user;
        expectOneLine("Illegal catalog filename: " + shared() + "/shared_catalog.cat");
    }
    std::filesystem::permissions(shared(), std::filesystem::perms::all);
}

TEST_F(UnusableSharedFolder, WhoseCatalogCannotBeWritten)
{
    std::filesystem::create_directory(shared() + "/shared_catalog.cat");
    touch(shared());
    expectOneLine("Illegal catalog filename: " + shared() + "/shared_catalog.cat");
}

TEST_F(UnusableSharedFolder, WhoseCatalogIsBroken)
{
    touch(writeFile(shared() + "/shared_catalog.cat", "<Catalog>"));
    expectOneLine("Unable to load transform catalog: " + shared() + "/shared_catalog.cat");
}

TEST_F(CatalogsOfTheProcess, ASharedFolderOfOtherFilesIsEmptyAndNoReasonForALine)
{
    for (int i = 0; i < 100; ++i)
        writeFile(shared() + "/file" + std::to_string(i) + ".xml", "<Other>" + std::to_string(i) + "</Other>");
    LogCapture const log;
    EXPECT_THAT(inputSpaces(), IsEmpty());
    EXPECT_THAT(warnings(log), IsEmpty());
}

} // namespace
