// The template over an OpenColorIO configuration: its menus, what is selected, its transforms and its failures.
#include "template/OCIOViewingTpl.h"

#include "support/failure.h"
#include "support/ocioConfig.h"
#include "support/temporaryFolder.h"
#include "transform/ops.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

using namespace Color;
using TemplateNS::OCIOViewingTpl;
using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::StartsWith;

namespace
{

std::vector<std::string> valuesOf(std::shared_ptr<TemplateNS::Parameter> const& parameter)
{
    std::vector<std::string> values;
    for (unsigned int i = 0; i < parameter->getNumValues(); ++i)
        values.push_back(parameter->getValue(i));
    return values;
}

class ConfiguredTemplates : public testing::Test
{
protected:
    void SetUp() override
    {
        if (!OpUtil::isAvailable())
            GTEST_SKIP() << "this build has no OpenColorIO";
    }

    std::string write(std::string const& text, std::string const& name = "config.ocio") { return m_folder.write(name, text); }

    std::vector<std::string> viewsOf(std::string const& lists)
    {
        return valuesOf(OCIOViewingTpl(write(OcioConfig::text({"1", "{default: linear}", lists})).c_str()).getViewTransforms());
    }

    Failure failureOfConfig(std::string const& path)
    {
        return failureOf([&] { OCIOViewingTpl(path.c_str()); });
    }

    Failure failureOfTransform(char const* workingSpace, char const* view, std::string const& lists = "")
    {
        OCIOViewingTpl const tpl(write(OcioConfig::text({"1", "{default: linear}", lists})).c_str());
        tpl.getWorkingSpaces()->select(workingSpace);
        tpl.getViewTransforms()->select(view);
        return failureOf([&] { tpl.createTransform(); });
    }

    TemporaryFolder m_folder;
};

} // namespace

TEST_F(ConfiguredTemplates, OfferAllColourSpacesAndViewsInTheirOrder)
{
    OCIOViewingTpl const tpl(write(OcioConfig::text()).c_str());
    EXPECT_THAT(valuesOf(tpl.getWorkingSpaces()), ElementsAre("linear", "video", "bright", "tables"));
    EXPECT_THAT(valuesOf(tpl.getViewTransforms()),
                ElementsAre("Film (screen)", "Raw (screen)", "Film (wall)", "Soft (dim) (wall)", "Look (wall)"));
}

TEST_F(ConfiguredTemplates, OfferTheRenderingSpaceFirstAndAgainInItsPlace)
{
    OCIOViewingTpl const tpl(write(OcioConfig::text({"1", "{default: linear, rendering: bright}", ""})).c_str());
    EXPECT_THAT(valuesOf(tpl.getWorkingSpaces()), ElementsAre("bright", "linear", "video", "bright", "tables"));
}

TEST_F(ConfiguredTemplates, SelectTheDefaultViewAndNoWorkingSpace)
{
    OCIOViewingTpl const tpl(write(OcioConfig::text()).c_str());
    EXPECT_EQ(tpl.getWorkingSpaces()->getSelectedIndex(), -1);
    EXPECT_EQ(tpl.getViewTransforms()->getSelectedValue(), "Film (screen)");
    // The first active display is the default one, though another name comes first in the menu.
    OCIOViewingTpl const other(
        write(OcioConfig::text({"1", "{default: linear}", "active_displays: [None, wall]\nactive_views: [Soft (dim), Film]"}))
            .c_str());
    EXPECT_EQ(other.getViewTransforms()->getSelectedValue(), "Soft (dim) (wall)");
}

TEST_F(ConfiguredTemplates, OfferTheViewsOfActiveDisplaysInTheListsOrder)
{
    EXPECT_THAT(viewsOf("active_displays: [wall, screen]"),
                ElementsAre("Film (wall)", "Soft (dim) (wall)", "Look (wall)", "Film (screen)", "Raw (screen)"));
    EXPECT_THAT(viewsOf("active_displays: [wall]"), ElementsAre("Film (wall)", "Soft (dim) (wall)", "Look (wall)"));
}

TEST_F(ConfiguredTemplates, OfferActiveViewsInTheListsOrder)
{
    EXPECT_THAT(viewsOf("active_views: [Raw, Film]"), ElementsAre("Raw (screen)", "Film (screen)", "Film (wall)"));
}

TEST_F(ConfiguredTemplates, OfferEveryActiveViewOnEveryActiveDisplayWhetherOrNotItHasIt)
{
    EXPECT_THAT(viewsOf("active_displays: [wall, screen]\nactive_views: [Raw, Look]"),
                ElementsAre("Raw (wall)", "Look (wall)", "Raw (screen)", "Look (screen)"));
}

TEST_F(ConfiguredTemplates, TakeListsThatNameWhatDoesNotExist)
{
    EXPECT_THAT(viewsOf("active_displays: [screen, None]"), ElementsAre("Film (screen)", "Raw (screen)"));
}

TEST_F(ConfiguredTemplates, GiveTheOperatorsBetweenADynamicExposureAndContrast)
{
    OCIOViewingTpl const tpl(write(OcioConfig::text()).c_str());
    tpl.getWorkingSpaces()->select("bright");
    auto const transform = tpl.createTransform();
    OpList const& ops = transform->getOps();
    ASSERT_EQ(ops.size(), 4U);
    EXPECT_TRUE(ops.get(0).hasDynamicProperty(DynamicProperty::EXPOSURE));
    EXPECT_EQ(dynamic_cast<MatrixOp const&>(ops.get(1)).getArray().get(0), 0.5F);
    auto const& gamma = dynamic_cast<GammaOp const&>(ops.get(2));
    EXPECT_EQ(gamma.getGammaStyle(), GammaOp::GammaStyle::BasicRev);
    EXPECT_THAT(gamma.getRedParams(), ElementsAre(2.0));
    EXPECT_TRUE(ops.get(3).hasDynamicProperty(DynamicProperty::CONTRAST));
}

TEST_F(ConfiguredTemplates, LeadToTheSpaceOfAViewWithParenthesesInItsName)
{
    OCIOViewingTpl const tpl(write(OcioConfig::text()).c_str());
    tpl.getWorkingSpaces()->select("linear");
    tpl.getViewTransforms()->select("Soft (dim) (wall)");
    EXPECT_EQ(tpl.createTransform()->getOps().get(1).getOpType(), Op::OpType::GammaOp);
}

TEST_F(ConfiguredTemplates, NeedAWorkingSpaceForATransform)
{
    OCIOViewingTpl const tpl(write(OcioConfig::text()).c_str());
    EXPECT_EQ(failureOf([&] { tpl.createTransform(); }).id, 0x1010002U);
}

TEST_F(ConfiguredTemplates, StayAsTheyWereWhenTheFileChanges)
{
    std::string const path = write(OcioConfig::text());
    OCIOViewingTpl const tpl(path.c_str());
    std::filesystem::remove(path);
    tpl.getWorkingSpaces()->select("linear");
    EXPECT_EQ(tpl.createTransform()->getOps().size(), 3U);
}

TEST_F(ConfiguredTemplates, FailWithAViewThatADisplayDoesNotHave)
{
    Failure const failure =
        failureOfTransform("linear", "Look (screen)", "active_displays: [wall, screen]\nactive_views: [Raw, Look]");
    EXPECT_EQ(failure.id, 0x1020009U);
    EXPECT_THAT(failure.words, StartsWith("Invalid combination of working space and view transform. OpenColorIO error: [ "));
}

TEST_F(ConfiguredTemplates, FailWithATableThatIsNotThere)
{
    Failure const failure = failureOfTransform("linear", "Look (wall)");
    EXPECT_EQ(failure.id, 0x1020009U);
    EXPECT_THAT(failure.words, AllOf(StartsWith("Invalid combination of working space and view transform. OpenColorIO error: [ "),
                                     HasSubstr("missing.spi3d")));
}

// The reader's own failure, as it is.
TEST_F(ConfiguredTemplates, FailWithATableThatCanNotBeInverted)
{
    std::filesystem::create_directory(m_folder.path() / "luts");
    std::string grid = "SPILUT 1.0\n3 3\n2 2 2\n";
    for (int i = 0; i < 8; ++i)
    {
        std::string const point = std::to_string(i >> 2) + " " + std::to_string(i >> 1 & 1) + " " + std::to_string(i & 1);
        grid += point + " " + point + "\n";
    }
    // One point off, or the table would do nothing.
    m_folder.write("luts/missing.spi3d", grid.replace(grid.find("0 0 0 0 0 0"), 11, "0 0 0 0.25 0 0"));
    EXPECT_EQ(failureOfTransform("tables", "Film (screen)"), (Failure{0x47000b, "Unsupported Lut3D inverse operation"}));
}

TEST_F(ConfiguredTemplates, NeedAConfigurationFile)
{
    std::string const missing = m_folder.file("missing.ocio");
    EXPECT_EQ(failureOfConfig(missing), (Failure{0x1020003, "Missing OpenColorIO config file: " + missing}));
    EXPECT_EQ(failureOf([] { OCIOViewingTpl(nullptr); }), (Failure{0x1020003, "Missing OpenColorIO config file: "}));
    std::string const text = write(OcioConfig::text(), "config.txt");
    EXPECT_EQ(failureOfConfig(text), (Failure{0x1020002, "Not an OpenColorIO config file: " + text}));
    std::string const folder = m_folder.file("folder.ocio");
    std::filesystem::create_directory(folder);
    EXPECT_EQ(failureOfConfig(folder), (Failure{0x1020002, "Not an OpenColorIO config file: " + folder}));
}

TEST_F(ConfiguredTemplates, NeedASoundConfiguration)
{
    std::string unsound = OcioConfig::text();
    unsound.replace(unsound.find("colorspace: bright"), 18, "colorspace: absent");
    for (std::string const& text : {std::string(), std::string("not a configuration"), std::string("\xff\xfe\x01", 3), unsound})
    {
        Failure const failure = failureOfConfig(write(text));
        EXPECT_EQ(failure.id, 0x1020001U);
        EXPECT_THAT(failure.words, StartsWith("OpenColorIO config problem: "));
    }
}

TEST_F(ConfiguredTemplates, NeedColourSpaces)
{
    std::string const path =
        write(OcioConfig::text({"2", "{default: linear}", "inactive_colorspaces: [linear, video, bright, tables]"}));
    EXPECT_EQ(failureOfConfig(path), (Failure{0x1020004, "OpenColorIO config problem: No color spaces found"}));
}

TEST_F(ConfiguredTemplates, NeedViews)
{
    std::string const path = write(OcioConfig::text({"1", "{default: linear}", "active_displays: [None]"}));
    EXPECT_EQ(failureOfConfig(path), (Failure{0x1020005, "OpenColorIO config problem: No view transforms found"}));
}

TEST(ViewTransformNames, NeedADisplayAndAView)
{
    EXPECT_EQ(OCIOViewingTpl::buildViewTransformName("screen", "Film"), "Film (screen)");
    Failure const noDisplay{0x1020006, "OpenColorIO config problem: display name not found"};
    Failure const noView{0x1020007, "OpenColorIO config problem: view name not found"};
    EXPECT_EQ(failureOf([] { OCIOViewingTpl::buildViewTransformName(nullptr, "Film"); }), noDisplay);
    EXPECT_EQ(failureOf([] { OCIOViewingTpl::buildViewTransformName("", "Film"); }), noDisplay);
    EXPECT_EQ(failureOf([] { OCIOViewingTpl::buildViewTransformName("screen", nullptr); }), noView);
    EXPECT_EQ(failureOf([] { OCIOViewingTpl::buildViewTransformName("screen", ""); }), noView);
}

TEST(ConfiguredTemplatesOfABuildWithoutOpenColorIO, SaySo)
{
    if (OpUtil::isAvailable())
        GTEST_SKIP() << "this build has OpenColorIO";
    TemporaryFolder const folder;
    std::string const path = folder.write("config.ocio", OcioConfig::text());
    EXPECT_EQ(failureOf([&] { OCIOViewingTpl(path.c_str()); }),
              (Failure{0x1020001, "OpenColorIO config problem: This build of Tavrin has no OpenColorIO"}));
}
