// Templates over OpenColorIO configurations, as a caller sees them.
#include "support/ocioConfig.h"
#include "support/temporaryFolder.h"
#include "transformFixtures.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <filesystem>

using namespace Tavrin;
using testing::AllOf;
using testing::ElementsAre;
using testing::FloatNear;
using testing::HasSubstr;

namespace
{

// In a build without OpenColorIO it fails with these words.
Told const kNoOpenColorIO{0x1020001, "OpenColorIO config problem: This build of Tavrin has no OpenColorIO"};

TemplateParameterPtr menuOf(TemplatePtr const& tpl, char const* name)
{
    TemplateParameterPtr menu;
    EXPECT_EQ(told(tpl->getParameter(name, menu)), kGood);
    return menu;
}

Told create(TemplatePtr const& tpl, std::string const& workingSpace, std::string const& view, TransformPtr& transform)
{
    EXPECT_EQ(told(menuOf(tpl, "working_space")->select(workingSpace.c_str())), kGood);
    EXPECT_EQ(told(menuOf(tpl, "view_transform")->select(view.c_str())), kGood);
    return told(tpl->createTransform(transform));
}

} // namespace

TEST(TemplatesOfConfigurations, RenderWhatIsSelectedWithExposureAndContrast)
{
    TemporaryFolder const folder;
    TemplatePtr tpl;
    Told const outcome = told(loadOCIOTemplate(folder.write("config.ocio", OcioConfig::text()).c_str(), tpl));
    if (outcome == kNoOpenColorIO)
        GTEST_SKIP() << "this build has no OpenColorIO";
    ASSERT_EQ(outcome, kGood);
    EXPECT_STREQ(menuOf(tpl, "view_transform")->getSelectedValue(), "Film (screen)");

    TransformPtr transform;
    ASSERT_EQ(create(tpl, "bright", "Film (screen)", transform), kGood);
    ASSERT_EQ(told(finalizeForCpu(transform)), kGood);
    // The square root of half of it; the accuracy is that of powers.
    auto const near = [](double value) { return FloatNear(static_cast<float>(value), 4e-5F); };
    EXPECT_THAT(render(transform, {0.5F, 2.0F, 0.32F, 1.0F}), ElementsAre(near(0.5), near(1.0), near(0.4), near(1.0)));
    // Two stops up double a square root.
    ASSERT_EQ(told(transform->setDynamicProperty({DynamicProperty::EXPOSURE, 2.0})), kGood);
    ASSERT_EQ(told(finalizeForCpu(transform)), kGood);
    EXPECT_THAT(render(transform, {0.5F, 2.0F, 0.32F, 1.0F}), ElementsAre(near(1.0), near(2.0), near(0.8), near(1.0)));
    ASSERT_EQ(told(transform->setDynamicProperty({DynamicProperty::CONTRAST, 2.0})), kGood);
    ASSERT_EQ(told(finalizeForCpu(transform)), kGood);
    EXPECT_THAT(render(transform, {0.5F, 2.0F, 0.32F, 1.0F}),
                ElementsAre(near(1.0), FloatNear(4.0F, 2e-4F), near(0.64), near(1.0)));
}

TEST(TemplatesOfConfigurations, GiveTheSameDepthsWhereThereIsNothingToDo)
{
    TemporaryFolder const folder;
    TemplatePtr tpl;
    Told const outcome = told(loadOCIOTemplate(folder.write("config.ocio", OcioConfig::text()).c_str(), tpl));
    if (outcome == kNoOpenColorIO)
        GTEST_SKIP() << "this build has no OpenColorIO";
    TransformPtr transform;
    ASSERT_EQ(create(tpl, "linear", "Raw (screen)", transform), kGood);
    ASSERT_EQ(told(finalizeForCpu(transform, PF_RGB_8i, PF_RGBA_32f)), kGood);
    unsigned char const source[3] = {0, 51, 255};
    float destination[4];
    ASSERT_TRUE(transform->applyCPU(source, ROI(0, 0, 1, 1), destination));
    EXPECT_THAT(destination, ElementsAre(0.0F, FloatNear(0.2F, 1e-7F), FloatNear(1.0F, 1e-7F), FloatNear(1.0F, 1e-7F)));
}

TEST(TemplatesOfConfigurations, LeaveTheHandleAsItWasOnFailure)
{
    TemplatePtr tpl;
    EXPECT_EQ(told(loadOCIOTemplate(nullptr, tpl)), (Told{0x1020003, "Missing OpenColorIO config file: "}));
    EXPECT_FALSE(tpl);
    ASSERT_EQ(told(loadStockTemplate(STOCK_TEMPLATE_RAW, tpl)), kGood);
    Template const* const before = tpl.get();
    EXPECT_EQ(told(loadOCIOTemplate("/missing.ocio", tpl)), (Told{0x1020003, "Missing OpenColorIO config file: /missing.ocio"}));
    EXPECT_EQ(tpl.get(), before);
}

// A real configuration, which is not kept here: TAVRIN_SAMPLES names the folder above it. Two of its tables are missing.
TEST(TemplatesOfRealConfigurations, RenderEveryViewOrTellWhichTableIsMissing)
{
    char const* const samples = std::getenv("TAVRIN_SAMPLES");
    if (samples == nullptr)
        GTEST_SKIP() << "TAVRIN_SAMPLES does not name a folder with a real configuration";
    std::string const path = (std::filesystem::path(samples) / "filmic/config.ocio").string();
    TemplatePtr tpl;
    ASSERT_EQ(told(loadOCIOTemplate(path.c_str(), tpl)), kGood);
    TemplateParameterPtr const spaces = menuOf(tpl, "working_space");
    TemplateParameterPtr const views = menuOf(tpl, "view_transform");
    EXPECT_EQ(spaces->getNumValues(), 9U);
    ASSERT_EQ(views->getNumValues(), 12U);
    unsigned int rendered = 0;
    for (unsigned int s = 0; s < spaces->getNumValues(); ++s)
        for (unsigned int v = 0; v < views->getNumValues(); ++v)
        {
            SCOPED_TRACE(std::string(spaces->getValue(s)) + ", " + views->getValue(v));
            TransformPtr transform;
            auto const [id, words] = create(tpl, spaces->getValue(s), views->getValue(v), transform);
            bool const needsTable = std::string(views->getValue(v)).find("Filmic Log") != std::string::npos;
            if (id != 0)
            {
                EXPECT_TRUE(needsTable);
                EXPECT_EQ(id, 0x1020009U);
                EXPECT_THAT(words,
                            AllOf(HasSubstr("Invalid combination of working space and view transform. OpenColorIO error: [ "),
                                  HasSubstr("desat65cube.spi3d")));
                continue;
            }
            ++rendered;
            ASSERT_EQ(told(finalizeForCpu(transform)), kGood);
            for (float const value : render(transform, {0.18F, 0.18F, 0.18F, 1.0F}))
                EXPECT_TRUE(std::isfinite(value));
        }
    // All spaces to the nine views that need no table, and each space to its own view, which needs nothing.
    EXPECT_GE(rendered, 81U);
}
