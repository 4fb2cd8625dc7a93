// Searches in catalogs: names for menus, and pipelines between spaces.
#include "xml/catalogManager.h"
#include "support/catalogTransforms.h"
#include "support/failure.h"
#include "support/temporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace CatalogTest;
using Color::CatalogManager;
using Color::SearchResults;
using testing::ElementsAre;
using testing::IsEmpty;

namespace
{

constexpr char kProduct[] = "Product";
constexpr char kBase[] = "/Catalog/CatalogItem/CatalogTransform/ProcessList/Info";

Space const kCamera{"camera", "Camera", "scene"};
Space const kLinear{"linear", "Linear", "scene"};
Space const kVideo{"video", "Video", "output"};
Space const kDisplay{"display", "Display", "output"};

// Two catalogs over two folders. Files are written first, then the catalogs are loaded.
class Catalogs : public testing::Test
{
protected:
    std::string path(std::string const& name) const { return m_folder.file(name); }
    std::string write(std::string const& name, Information const& information) const
    {
        return writeFile(m_folder.path() / name, transformFile(information));
    }
    CatalogManager const& load()
    {
        for (char const* const name : {"Norvane", "Shared"})
        {
            std::filesystem::create_directories(m_folder.path() / name);
            m_manager.loadCatalog(name, m_manager.buildCatalog(path(std::string(name) + ".cat"), path(name), true));
        }
        return m_manager;
    }

    // The stages of a pipeline, aliases in angle brackets.
    using Stages = std::vector<std::string>;
    static Stages stagesOf(Color::ViewingPipeline const& pipeline)
    {
        Stages stages;
        for (Color::ViewingPipelineStage const& stage : pipeline)
            stages.push_back(stage.isAlias ? "<" + stage.path + ">" : stage.path);
        return stages;
    }

    TemporaryFolder const m_folder;
    CatalogManager m_manager;
};

// --- Catalogs in memory

TEST_F(Catalogs, RefuseAnEmptyName)
{
    std::string const file = writeFile(m_folder.path() / "c.cat", "<Catalog/>");
    EXPECT_EQ(failureOf([&] { m_manager.loadCatalog("", file); }), (Failure{0x4b0002, "Illegal catalog filename: "}));
}

TEST_F(Catalogs, RefuseAFileThatIsNoXml)
{
    std::string const file = writeFile(m_folder.path() / "c.cat", "<Catalog>");
    EXPECT_EQ(failureOf([&] { m_manager.loadCatalog("c", file); }),
              (Failure{0x4b0003, "Unable to load transform catalog: " + file}));
}

TEST_F(Catalogs, RefuseAFileThatIsNotThere)
{
    std::string const file = path("missing.cat");
    EXPECT_EQ(failureOf([&] { m_manager.loadCatalog("c", file); }),
              (Failure{0x4b0003, "Unable to load transform catalog: " + file}));
}

TEST_F(Catalogs, KeepACatalogOfTheSameName)
{
    m_manager.loadCatalog("c", writeFile(m_folder.path() / "1.cat", "<Catalog><CatalogItem/></Catalog>"));
    m_manager.loadCatalog("c", writeFile(m_folder.path() / "2.cat", "<Catalog/>"));
    EXPECT_EQ(m_manager.searchTransforms("c", "/Catalog/CatalogItem").size(), 1U);
}

TEST_F(Catalogs, AreSearchedInTheOrderOfTheirNamesAndByName)
{
    std::string const catalog = "<Catalog><CatalogItem><CatalogTransformPath>/";
    std::string const end = "</CatalogTransformPath></CatalogItem></Catalog>";
    m_manager.loadCatalog("b", writeFile(m_folder.path() / "b.cat", catalog + "b" + end));
    m_manager.loadCatalog("a", writeFile(m_folder.path() / "a.cat", catalog + "a" + end));
    auto const paths = [&](std::string const& name)
    {
        std::vector<std::string> found;
        for (Color::SearchResult const& result : m_manager.searchTransforms(name, "/Catalog/CatalogItem"))
            found.push_back(result.getTransformPath());
        return found;
    };
    EXPECT_THAT(paths(""), ElementsAre("/a", "/b"));
    EXPECT_THAT(paths("b"), ElementsAre("/b"));
    EXPECT_THAT(paths("c"), IsEmpty());
    m_manager.clearCatalog("a");
    EXPECT_THAT(paths(""), ElementsAre("/b"));
    m_manager.clearCatalog("");
    EXPECT_THAT(paths(""), IsEmpty());
}

// --- Results

TEST_F(Catalogs, ResultsOfDifferentQueriesMeetAtTheInfoOfATransform)
{
    write("Norvane/a.ctf", {kLinear, kAces, {}, ""});
    write("Norvane/b.ctf", {kLinear, kCieXyz, {}, ""});
    write("Norvane/c.ctf", {kCamera, kAces, {}, ""});
    load();
    SearchResults const linear = m_manager.searchTransforms("", std::string(kBase) + "/InputSpace/ID[text()='linear']");
    SearchResults const aces = m_manager.searchTransforms("", std::string(kBase) + "/OutputSpace/ShortName[text()='ACES2065-1']");
    auto const paths = [](SearchResults const& results)
    {
        std::vector<std::string> found;
        for (Color::SearchResult const& result : results)
            found.push_back(result.getTransformPath());
        return found;
    };
    EXPECT_THAT(paths(linear && aces), ElementsAre(path("Norvane/a.ctf")));
    EXPECT_THAT(paths(linear || aces), ElementsAre(path("Norvane/a.ctf"), path("Norvane/b.ctf"), path("Norvane/c.ctf")));
    EXPECT_THAT(paths(aces || linear), ElementsAre(path("Norvane/a.ctf"), path("Norvane/c.ctf"), path("Norvane/b.ctf")));
    EXPECT_STREQ(linear.front().node.name(), "Info");
    EXPECT_TRUE(linear.front() == aces.front());
    EXPECT_TRUE(linear.back() != aces.front());
}

TEST_F(Catalogs, AResultOutlivesItsCatalog)
{
    write("Norvane/a.ctf", {kLinear, kAces, {}, ""});
    load();
    Color::SearchResult const result = m_manager.searchTransforms("", kBase).at(0);
    m_manager.clearCatalog("");
    EXPECT_EQ(result.getTransformPath(), path("Norvane/a.ctf"));
    EXPECT_THAT(result.getSearchResultValues("/CatalogItem/CatalogTransform/ProcessList/Info/*/ID/text()"),
                ElementsAre("linear", "1"));
    EXPECT_THAT(result.getSearchResultValues("/CatalogItem/CatalogTransform/ProcessList/@version"), ElementsAre("1.3"));
    EXPECT_THAT(result.getSearchResultValues("/CatalogItem/CatalogTransform/ProcessList/Info/OutputSpace/ID"), ElementsAre("1"));
    EXPECT_THAT(result.getSearchResultValues("/Nothing"), IsEmpty());
}

// --- Names

TEST_F(Catalogs, NamesAreThoseOfTheTagSorted)
{
    write("Norvane/1.ctf", {kVideo, kCieXyz, {"Input", "VideoWorkingSpace", kProduct}, ""});
    write("Norvane/2.ctf", {kCamera, kAces, {"Input", kProduct}, ""});
    write("Norvane/3.ctf", {kLinear, kAces, {"SceneLinearWorkingSpace", kProduct}, ""});
    write("Norvane/4.ctf", {kCieXyz, kDisplay, {"View", kProduct}, "To a display"});
    write("Norvane/5.ctf", {kDisplay, kCieXyz, {"Input", "VideoWorkingSpace", "View", "Other"}, "Other"});
    write("Shared/1.ctf", {kCieXyz, kVideo, {"View", kProduct}, "Another view"});
    load();
    EXPECT_THAT(m_manager.getInputSpaceNames(kProduct), ElementsAre("Camera", "Video"));
    EXPECT_THAT(m_manager.getWorkingSpaceNames(kProduct), ElementsAre("Linear", "Video"));
    EXPECT_THAT(m_manager.getViewTransformNames(kProduct), ElementsAre("Another view", "To a display"));
    EXPECT_THAT(m_manager.getInputSpaceNames("Other"), ElementsAre("Display"));
    EXPECT_THAT(m_manager.getInputSpaceNames("Nobody"), IsEmpty());
}

TEST_F(Catalogs, OnlyTransformsWithANameAreOffered)
{
    write("Norvane/1.ctf", {{"id", "", "scene"}, kAces, {"Input", kProduct}, ""});
    write("Norvane/2.ctf", {kCieXyz, kDisplay, {"View", kProduct}, ""});
    writeFile(m_folder.path() / "Norvane/3.ctf",
              processList("<Info name=''><InputSpace><ShortName> </ShortName></InputSpace><Category><Tags><Input/><View/><Product/>"
                          "</Tags></Category></Info>"));
    load();
    EXPECT_THAT(m_manager.getInputSpaceNames(kProduct), IsEmpty());
    EXPECT_THAT(m_manager.getViewTransformNames(kProduct), IsEmpty());
}

// Parameter: a name of a stranger's choice.
class OddNames : public Catalogs, public testing::WithParamInterface<char const*>
{
};

TEST_P(OddNames, AreData)
{
    std::string const odd = GetParam();
    std::string const working =
        write("Norvane/working.ctf", {{odd, odd, "scene"}, kCieXyz, {"SceneLinearWorkingSpace", kProduct}, ""});
    std::string const other = write("Norvane/a.ctf", {kLinear, kCieXyz, {"SceneLinearWorkingSpace", kProduct}, ""});
    std::string const view = write("Norvane/view.ctf", {kCieXyz, kDisplay, {"View", kProduct}, odd});
    std::string const input = write("Norvane/input.ctf", {kCamera, {odd, odd, "scene"}, {"Input", kProduct}, ""});
    load();
    EXPECT_THAT(m_manager.getWorkingSpaceNames(kProduct), testing::UnorderedElementsAre(odd, "Linear"));
    EXPECT_THAT(m_manager.getViewTransformNames(kProduct), ElementsAre(odd));
    EXPECT_EQ(stagesOf(m_manager.getViewingPipeline(kProduct, odd, odd)), (Stages{working, view}));
    EXPECT_EQ(stagesOf(m_manager.getInputPipeline(kProduct, "Camera", odd)), Stages{input});
    EXPECT_THAT(m_manager.getInputSpaceNames(odd), IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(All, OddNames,
                         testing::Values("O'Brien", "5\" tape", "both ' and \"", "a & b < c", "x'] | //*[text()='Linear", "$text",
                                         "Gr\xc3\xa4"
                                         "f\xc3\xbc"
                                         "rbung"));

// What a reader of transforms has: the lines of a text without white space at their ends, joined.
TEST_F(Catalogs, TextsAreTrimmedAndTheirLinesJoined)
{
    writeFile(m_folder.path() / "Norvane/a.ctf",
              processList("<Info><InputSpace><ShortName>\n  O&apos;\n Brien &amp; \tSons  \n</ShortName></InputSpace>"
                          "<Category><Tags><Input/><Product/></Tags></Category></Info>"));
    load();
    EXPECT_THAT(m_manager.getInputSpaceNames(kProduct), ElementsAre("O'Brien & \tSons"));
}

// --- Pipelines

Information const kToAces{kLinear, kAces, {"SceneLinearWorkingSpace", kProduct}, ""};
Information const kToXyz{kVideo, kCieXyz, {"VideoWorkingSpace", kProduct}, ""};
Information const kXyzView{kCieXyz, kDisplay, {"View", kProduct}, "View"};

TEST_F(Catalogs, AWorkingSpaceThatEndsWhereTheViewBeginsNeedsNothingBetween)
{
    std::string const working = write("Norvane/w.ctf", kToXyz);
    std::string const view = write("Norvane/v.ctf", kXyzView);
    load();
    EXPECT_EQ(stagesOf(m_manager.getViewingPipeline(kProduct, "Video", "View")), (Stages{working, view}));
}

TEST_F(Catalogs, ABridgeLeadsFromScenesToDisplays)
{
    std::string const working = write("Norvane/w.ctf", kToAces);
    std::string const view = write("Norvane/v.ctf", kXyzView);
    load();
    EXPECT_EQ(stagesOf(m_manager.getViewingPipeline(kProduct, "Linear", "View")), (Stages{working, "<SceneToOutputBridge>", view}));
}

TEST_F(Catalogs, ABridgeLeadsFromDisplaysToScenes)
{
    std::string const working = write("Norvane/w.ctf", kToXyz);
    std::string const view = write("Norvane/v.ctf", {kAces, kLinear, {"View", kProduct}, "View"});
    load();
    EXPECT_EQ(stagesOf(m_manager.getViewingPipeline(kProduct, "Video", "View")), (Stages{working, "<OutputToSceneBridge>", view}));
}

TEST_F(Catalogs, AViewWithoutAnInputSpaceStandsAlone)
{
    write("Norvane/w.ctf", kToAces);
    std::string const view = write("Norvane/v.ctf", {{}, {}, {"View", kProduct}, "Raw"});
    load();
    EXPECT_EQ(stagesOf(m_manager.getViewingPipeline(kProduct, "Linear", "Raw")), Stages{view});
}

TEST_F(Catalogs, NothingLeadsToAWorkingSpaceWithoutAnId)
{
    write("Norvane/i.ctf", {kCamera, kAces, {"Input", kProduct}, ""});
    write("Norvane/w.ctf", {{"", "Linear", "scene"}, kAces, {"SceneLinearWorkingSpace", kProduct}, ""});
    load();
    EXPECT_EQ(stagesOf(m_manager.getInputPipeline(kProduct, "Camera", "Linear")), Stages{});
}

TEST_F(Catalogs, OneTransformLeadsFromAnInputToAWorkingSpace)
{
    std::string const input = write("Norvane/i.ctf", {kCamera, kAces, {"Input", kProduct}, ""});
    std::string const between = write("Norvane/between.ctf", {kAces, kLinear, {}, ""});
    write("Norvane/w.ctf", kToAces);
    load();
    EXPECT_EQ(stagesOf(m_manager.getInputPipeline(kProduct, "Camera", "Linear")), (Stages{input, between}));
}

Space const kLog{"log", "Log", "scene"};

TEST_F(Catalogs, TwoTransformsLeadThroughAConnectionSpace)
{
    std::string const input = write("Norvane/i.ctf", {kCamera, kLog, {"Input", kProduct}, ""});
    std::string const to = write("Norvane/to.ctf", {kLog, kAces, {}, ""});
    std::string const from = write("Norvane/from.ctf", {kAces, kLinear, {}, ""});
    write("Norvane/w.ctf", kToAces);
    load();
    EXPECT_EQ(stagesOf(m_manager.getInputPipeline(kProduct, "Camera", "Linear")), (Stages{input, to, from}));
}

TEST_F(Catalogs, TwoTransformsAndABridgeLeadThroughBothConnectionSpaces)
{
    std::string const input = write("Norvane/i.ctf", {kCamera, kLog, {"Input", kProduct}, ""});
    std::string const to = write("Norvane/to.ctf", {kLog, kAces, {}, ""});
    std::string const from = write("Norvane/from.ctf", {kCieXyz, kVideo, {}, ""});
    write("Norvane/w.ctf", kToXyz);
    load();
    EXPECT_EQ(stagesOf(m_manager.getInputPipeline(kProduct, "Camera", "Video")),
              (Stages{input, to, "<SceneToOutputBridge>", from}));
}

TEST_F(Catalogs, AnInstalledTransformComesBeforeASharedOne)
{
    write("Shared/a.ctf", {kAces, kLinear, {}, ""});
    std::string const input = write("Shared/i.ctf", {kCamera, kAces, {"Input", kProduct}, ""});
    std::string const installed = write("Norvane/z.ctf", {kAces, kLinear, {}, ""});
    write("Norvane/w.ctf", kToAces);
    load();
    EXPECT_EQ(stagesOf(m_manager.getInputPipeline(kProduct, "Camera", "Linear")), (Stages{input, installed}));
}

// --- What can't be connected

class Unconnected : public Catalogs
{
protected:
    Failure inputFailure(std::string const& input, std::string const& working) const
    {
        return failureOf([&] { m_manager.getInputPipeline(kProduct, input, working); });
    }
    Failure viewingFailure(std::string const& working, std::string const& view) const
    {
        return failureOf([&] { m_manager.getViewingPipeline(kProduct, working, view); });
    }
};

TEST_F(Unconnected, NamesThatAreNotThere)
{
    write("Norvane/i.ctf", {kCamera, kAces, {"Input", kProduct}, ""});
    write("Norvane/w.ctf", kToAces);
    load();
    EXPECT_EQ(inputFailure("None", "Linear"), (Failure{0x4b0004, "Input space transform not found: None"}));
    EXPECT_EQ(inputFailure("Camera", "None"), (Failure{0x4b0004, "Working space transform not found: None"}));
    EXPECT_EQ(viewingFailure("None", "View"), (Failure{0x4b0004, "Working space transform not found: None"}));
    EXPECT_EQ(viewingFailure("Linear", "None"), (Failure{0x4b0004, "View transform not found: None"}));
}

TEST_F(Unconnected, NamesOfAnotherProduct)
{
    write("Norvane/i.ctf", {kCamera, kAces, {"Input", "Other"}, ""});
    load();
    EXPECT_EQ(inputFailure("Camera", "Linear"), (Failure{0x4b0004, "Input space transform not found: Camera"}));
}

TEST_F(Unconnected, SourcesThatDoNotSayWhereTheyEnd)
{
    Space const nowhere{"", "Nowhere", "scene"};
    write("Norvane/i.ctf", {kCamera, nowhere, {"Input", kProduct}, ""});
    write("Norvane/w.ctf", {kLinear, nowhere, {"SceneLinearWorkingSpace", kProduct}, ""});
    write("Norvane/v.ctf", kXyzView);
    load();
    EXPECT_EQ(inputFailure("Camera", "Linear"), (Failure{0x4b000d, "Input space transform missing output color space ID: Camera"}));
    EXPECT_EQ(viewingFailure("Linear", "View"),
              (Failure{0x4b0005, "Working space transform missing output color space ID: Linear"}));
}

TEST_F(Unconnected, ImageStatesThatDoNotExist)
{
    write("Norvane/i.ctf", {kCamera, {"log", "Log", "Scene"}, {"Input", kProduct}, ""});
    write("Norvane/w.ctf", kToAces);
    load();
    EXPECT_EQ(inputFailure("Camera", "Linear"), (Failure{0x4b0009, "Illegal image state: Scene"}));
}

TEST_F(Unconnected, ASpaceWithoutAWayToItsConnectionSpace)
{
    write("Norvane/i.ctf", {kCamera, kLog, {"Input", kProduct}, ""});
    write("Norvane/w.ctf", kToAces);
    write("Norvane/from.ctf", {kAces, kLinear, {}, ""});
    load();
    EXPECT_EQ(inputFailure("Camera", "Linear"), (Failure{0x4b0006, "No transform found from Log to connection space ACES."}));
}

TEST_F(Unconnected, ASpaceWithoutAWayFromItsConnectionSpace)
{
    write("Norvane/i.ctf", {kCamera, kLog, {"Input", kProduct}, ""});
    write("Norvane/to.ctf", {kLog, kAces, {}, ""});
    write("Norvane/w.ctf", kToXyz);
    load();
    EXPECT_EQ(inputFailure("Camera", "Video"), (Failure{0x4b0007, "No transform found from connection space CIE-XYZ to Video."}));
}

} // namespace
