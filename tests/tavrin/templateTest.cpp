// Templates over the installed transforms: menus, selections, and the transforms that come of them.
#include "support/catalogTransforms.h"
#include "support/colorimetry.h"
#include "support/ownInstallation.h"
#include "transformFixtures.h"

#include <gmock/gmock.h>

using namespace Tavrin;
using Colorimetry::srgbEncode;
using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Not;

namespace
{

constexpr char kProduct[] = "Tavrin";

Told const kNothingSelected{0x1010002, "working_space menu selection no longer available: -1"};

TemplatePtr load(TemplateType type, char const* product = kProduct)
{
    TemplatePtr result;
    EXPECT_EQ(told(loadNativeTemplate(type, product, result)), kGood);
    return result;
}

TemplateParameterPtr parameterOf(TemplatePtr const& tpl, char const* name)
{
    TemplateParameterPtr parameter;
    EXPECT_EQ(told(tpl->getParameter(name, parameter)), kGood);
    return parameter;
}

std::vector<std::string> valuesOf(TemplatePtr const& tpl, char const* name)
{
    TemplateParameterPtr const parameter = parameterOf(tpl, name);
    std::vector<std::string> values;
    for (unsigned int i = 0; i < parameter->getNumValues(); ++i)
        values.emplace_back(parameter->getValue(i));
    return values;
}

// Selects by name.
void choose(TemplatePtr const& tpl, char const* name, std::string const& value)
{
    EXPECT_EQ(told(parameterOf(tpl, name)->select(value.c_str())), kGood) << value;
}

TransformPtr create(TemplatePtr const& tpl)
{
    TransformPtr transform;
    EXPECT_EQ(told(tpl->createTransform(transform)), kGood);
    return transform;
}

Told creationFailure(TemplatePtr const& tpl)
{
    TransformPtr transform;
    TavStatus const status = tpl->createTransform(transform);
    EXPECT_EQ(transform.get(), nullptr);
    return told(status);
}

TransformPtr viewing(std::string const& working, std::string const& view)
{
    TemplatePtr const tpl = load(TEMPLATE_VIEWING);
    choose(tpl, "working_space", working);
    choose(tpl, "view_transform", view);
    return create(tpl);
}

TransformPtr input(std::string const& from, std::string const& working)
{
    TemplatePtr const tpl = load(TEMPLATE_INPUT);
    choose(tpl, "input_space", from);
    choose(tpl, "working_space", working);
    return create(tpl);
}

// What a grey becomes. Exposure and contrast can change afterwards.
Pixels grey(TransformPtr const& transform, double value)
{
    OptimizerFlags const flags = OPTIMIZER_DEFAULT_THRESHOLD | OPTIMIZER_KEEP_DYNAMIC;
    EXPECT_EQ(told(transform->finalize(PF_RGBA_32f, PF_RGBA_32f, RENDERER_CPU, flags, RESOLVE_GRAPHICS_MONITOR)), kGood);
    float const v = static_cast<float>(value);
    return render(transform, {v, v, v, 1.0F});
}

void expectGrey(Pixels const& pixel, double value, double bound)
{
    ASSERT_EQ(pixel.size(), 4U);
    for (int c = 0; c < 3; ++c)
        EXPECT_NEAR(pixel[c], value, bound) << c;
}

// Two or three powers, each off by some parts in a hundred thousand.
constexpr double kPowersError = 1e-4;

using NativeTemplate = OwnInstallationTest;

TEST_F(NativeTemplate, OffersTheInstalledSpacesAndViews)
{
    TemplatePtr const in = load(TEMPLATE_INPUT);
    TemplatePtr const out = load(TEMPLATE_VIEWING);
    EXPECT_THAT(valuesOf(in, "input_space"),
                ElementsAre("ACES2065-1", "ACEScct", "ACEScg", "ARRI LogC3 EI 800", "ARRI LogC4", "CIE-XYZ",
                            "Cineon film scan, Rec. 709", "Display P3", "HD video", "Linear Rec. 709", "Panasonic V-Log",
                            "RED Log3G10", "Sony S-Log3 S-Gamut3.Cine", "sRGB"));
    std::vector<std::string> const workingSpaces = {"ACES2065-1", "ACEScg", "Display P3", "HD video", "Linear Rec. 709", "sRGB"};
    EXPECT_EQ(valuesOf(in, "working_space"), workingSpaces);
    EXPECT_EQ(valuesOf(out, "working_space"), workingSpaces);
    EXPECT_THAT(valuesOf(out, "view_transform"), ElementsAre("Display P3", "HD video", "Log", "Monitor", "Raw", "sRGB"));
}

TEST_F(NativeTemplate, ConnectsEverythingThatItOffers)
{
    for (auto const& [type, first, second] : {std::tuple{TEMPLATE_INPUT, "input_space", "working_space"},
                                              std::tuple{TEMPLATE_VIEWING, "working_space", "view_transform"}})
    {
        TemplatePtr const tpl = load(type);
        for (std::string const& from : valuesOf(tpl, first))
        {
            for (std::string const& to : valuesOf(tpl, second))
            {
                choose(tpl, first, from);
                choose(tpl, second, to);
                TransformPtr const transform = create(tpl);
                ASSERT_NE(transform.get(), nullptr) << from << " to " << to;
                EXPECT_EQ(told(finalizeForCpu(transform)), kGood) << from << " to " << to;
            }
        }
    }
}

TEST_F(NativeTemplate, RefusesAProductWithoutAName)
{
    TemplatePtr tpl;
    Told const refused{0x1010004, "Illegal product name."};
    EXPECT_EQ(told(loadNativeTemplate(TEMPLATE_VIEWING, nullptr, tpl)), refused);
    EXPECT_EQ(told(loadNativeTemplate(TEMPLATE_INPUT, "", tpl)), refused);
    EXPECT_FALSE(tpl);
}

TEST_F(NativeTemplate, RefusesATypeThatDoesNotExist)
{
    TemplatePtr tpl;
    EXPECT_EQ(told(loadNativeTemplate(static_cast<TemplateType>(2), kProduct, tpl)), (Told{0x2020004, "Invalid parameter"}));
    EXPECT_FALSE(tpl);
}

TEST_F(NativeTemplate, OfAnUnknownProductHasEmptyMenus)
{
    TemplatePtr const tpl = load(TEMPLATE_VIEWING, "O'Brien");
    EXPECT_THAT(valuesOf(tpl, "working_space"), IsEmpty());
    EXPECT_EQ(told(parameterOf(tpl, "working_space")->select(0U)),
              (Told{0x1010002, "working_space menu selection no longer available: 0"}));
}

TEST_F(NativeTemplate, TellsUnknownParameters)
{
    TemplatePtr const tpl = load(TEMPLATE_VIEWING);
    TemplateParameterPtr parameter;
    EXPECT_EQ(told(tpl->getParameter("input_space", parameter)), (Told{0x1010005, "Parameter not found: input_space"}));
    EXPECT_EQ(told(tpl->getParameter(nullptr, parameter)), (Told{0x1010005, "Parameter not found: "}));
    EXPECT_FALSE(parameter);
}

TEST_F(NativeTemplate, BeginsWithNothingSelected)
{
    TemplatePtr const tpl = load(TEMPLATE_VIEWING);
    for (char const* const name : {"working_space", "view_transform"})
    {
        TemplateParameterPtr const parameter = parameterOf(tpl, name);
        EXPECT_STREQ(parameter->getName(), name);
        EXPECT_EQ(parameter->getSelectedIndex(), -1);
        EXPECT_EQ(parameter->getSelectedValue(), nullptr);
    }
    EXPECT_EQ(creationFailure(tpl), kNothingSelected);
}

TEST_F(NativeTemplate, MakesNothingAfterADeselection)
{
    TemplatePtr const tpl = load(TEMPLATE_VIEWING);
    choose(tpl, "working_space", "ACEScg");
    choose(tpl, "view_transform", "sRGB");
    EXPECT_NE(create(tpl).get(), nullptr);
    parameterOf(tpl, "working_space")->deselect();
    EXPECT_EQ(creationFailure(tpl), kNothingSelected);
}

TEST_F(NativeTemplate, ShowsASelectionThroughAllHandlesToItsParameter)
{
    TemplatePtr const tpl = load(TEMPLATE_VIEWING);
    TemplateParameterPtr const one = parameterOf(tpl, "working_space");
    TemplateParameterPtr const other = parameterOf(tpl, "working_space");
    EXPECT_EQ(told(one->select(1U)), kGood);
    EXPECT_EQ(other->getSelectedIndex(), 1);
    EXPECT_STREQ(other->getSelectedValue(), one->getValue(1));
    EXPECT_EQ(told(other->select("none")), (Told{0x1010003, "working_space menu selection no longer available: none"}));
    EXPECT_EQ(told(other->select("")), (Told{0x1010003, "working_space menu selection no longer available: "}));
    EXPECT_EQ(one->getSelectedIndex(), 1);
    EXPECT_EQ(one->getValue(one->getNumValues()), nullptr);
}

TEST_F(NativeTemplate, ParametersOutliveTheirTemplate)
{
    TemplateParameterPtr const parameter = parameterOf(load(TEMPLATE_VIEWING), "working_space");
    EXPECT_STREQ(parameter->getValue(0), "ACES2065-1");
}

TEST_F(NativeTemplate, LeadsFromACameraToAWorkingSpace)
{
    // Mid-grey is code 400 of ARRI's paper, within the half of a code that it is rounded by.
    expectGrey(grey(input("ARRI LogC3 EI 800", "ACEScg"), 400.0 / 1023.0), 0.18, 0.18 * 0.5 / 1023.0 / 0.247190 * 2.302585);
}

TEST_F(NativeTemplate, LeadsFromASceneThroughTheBridgeToADisplay)
{
    // The tone curve gives a mid-grey of 0.18 the light 0.12.
    expectGrey(grey(viewing("ACEScg", "sRGB"), 0.18), srgbEncode(0.12), kPowersError);
    expectGrey(grey(viewing("Linear Rec. 709", "HD video"), 0.18), std::pow(0.12, 1.0 / 2.4), kPowersError);
    expectGrey(grey(viewing("ACES2065-1", "Monitor"), 16.0), 1.0, kPowersError);
}

TEST_F(NativeTemplate, LeadsFromOneDisplayToAnotherWithoutABridge)
{
    expectGrey(grey(viewing("HD video", "sRGB"), 0.5), srgbEncode(std::pow(0.5, 2.4)), kPowersError);
    expectGrey(grey(viewing("sRGB", "sRGB"), 0.5), 0.5, kPowersError);
}

TEST_F(NativeTemplate, APictureForADisplayComesBackFromTheScene)
{
    TransformPtr both;
    EXPECT_EQ(told(concatenateTransforms(input("sRGB", "ACEScg"), viewing("ACEScg", "sRGB"), both)), kGood);
    EXPECT_EQ(told(finalizeForCpu(both)), kGood);
    Pixels const picture = {0.6F, 0.35F, 0.45F, 1.0F};
    Pixels const back = render(both, picture);
    for (int c = 0; c < 3; ++c)
        EXPECT_NEAR(back[c], picture[c], 3 * kPowersError) << c;
}

TEST_F(NativeTemplate, AViewOfRawValuesChangesNothing)
{
    expectGrey(grey(viewing("ACEScg", "Raw"), 0.18), 0.18, kPowersError);
}

TEST_F(NativeTemplate, TellsWhereItsLastStageLeads)
{
    EXPECT_STREQ(viewing("ACEScg", "sRGB")->getInputDescriptor(), "ACEScg");
    EXPECT_STREQ(viewing("ACEScg", "sRGB")->getOutputDescriptor(), "sRGB");
    EXPECT_STREQ(input("sRGB", "ACEScg")->getOutputDescriptor(), "ACEScg");
}

TEST_F(NativeTemplate, ShowsTheMonitorThatThePreferencesNameAtTheTime)
{
    TransformPtr const before = viewing("ACEScg", "Monitor");
    EXPECT_EQ(told(addAliasInPreferences("graphicsMonitor", "display/broadcast/CIE-XYZ_to_HD-video.ctf", BASE_PATH_VENDOR)), kGood);
    EXPECT_EQ(grey(viewing("ACEScg", "Monitor"), 0.18), grey(viewing("ACEScg", "HD video"), 0.18));
    EXPECT_EQ(grey(before, 0.18), grey(viewing("ACEScg", "sRGB"), 0.18));
}

TEST_F(NativeTemplate, ViewsHaveNoReferences)
{
    EXPECT_FALSE(viewing("ACEScg", "Monitor")->hasReferences());
}

TEST_F(NativeTemplate, ViewsTakeExposureWhileTheyRender)
{
    TransformPtr const transform = viewing("ACEScg", "sRGB");
    Pixels const plain = grey(transform, 0.18);
    EXPECT_EQ(told(transform->setDynamicProperty({DynamicProperty::EXPOSURE, 1.0})), kGood);
    Pixels const exposed = render(transform, {0.09F, 0.09F, 0.09F, 1.0F});
    for (int c = 0; c < 3; ++c)
        EXPECT_NEAR(exposed[c], plain[c], kPowersError) << c;
}

TEST_F(NativeTemplate, ViewsTakeContrastWhileTheyRender)
{
    TransformPtr const transform = viewing("ACEScg", "sRGB");
    Pixels const plain = grey(transform, 0.18);
    EXPECT_EQ(told(transform->setDynamicProperty({DynamicProperty::CONTRAST, 1.5})), kGood);
    // A power around a pivot of 1.
    expectGrey(render(transform, {0.18F, 0.18F, 0.18F, 1.0F}), std::pow(static_cast<double>(plain[0]), 1.5), kPowersError);
}

TEST_F(NativeTemplate, InputsTakeNeither)
{
    DynamicProperty exposure(DynamicProperty::EXPOSURE, 1.0);
    EXPECT_FALSE(input("ARRI LogC4", "ACEScg")->getDynamicProperty(exposure));
}

// --- What changes while a process runs

TEST_F(NativeTemplate, KeepsItsMenusWhenCatalogsAreReloaded)
{
    TemplatePtr const before = load(TEMPLATE_INPUT);
    CatalogTest::writeFile(shared() + "/new.ctf",
                           CatalogTest::transformFile({{"new", "New", "scene"}, CatalogTest::kAces, {"Input", kProduct}, ""}, 2.0));
    EXPECT_THAT(valuesOf(load(TEMPLATE_INPUT), "input_space"), Not(Contains("New")));
    touch(shared());
    EXPECT_EQ(told(reloadCatalogs()), kGood);
    EXPECT_THAT(valuesOf(before, "input_space"), Not(Contains("New")));
    expectGrey(grey(input("New", "ACES2065-1"), 0.18), 0.36, 1e-7);
}

TEST_F(NativeTemplate, ASelectionWhoseFileIsGoneFailsWhenItIsUsed)
{
    std::string const file = CatalogTest::writeFile(
        shared() + "/new.ctf", CatalogTest::transformFile({{"new", "New", "scene"}, CatalogTest::kAces, {"Input", kProduct}, ""}));
    TemplatePtr const tpl = load(TEMPLATE_INPUT);
    choose(tpl, "input_space", "New");
    choose(tpl, "working_space", "ACEScg");
    std::filesystem::remove(file);
    touch(shared());
    EXPECT_EQ(creationFailure(tpl), (Told{0x460003, "No file found: '" + file + "'"}));
    EXPECT_EQ(told(reloadCatalogs()), kGood);
    EXPECT_EQ(creationFailure(tpl), (Told{0x4b0004, "Input space transform not found: New"}));
}

TEST_F(NativeTemplate, FollowsTheSharedFolderWhereverItIsMoved)
{
    ScopedEnvironment const noOverride("TAVRIN_OVERRIDE_SHARED_PATH", "");
    EXPECT_EQ(told(setSharedColorTransformPath(shared().c_str())), kGood);
    std::string const other = m_folder.file("other");
    CatalogTest::writeFile(other + "/new.ctf",
                           CatalogTest::transformFile({{"new", "New", "scene"}, CatalogTest::kAces, {"Input", kProduct}, ""}));
    EXPECT_THAT(valuesOf(load(TEMPLATE_INPUT), "input_space"), Not(Contains("New")));
    EXPECT_EQ(told(setSharedColorTransformPath(other.c_str())), kGood);
    EXPECT_THAT(valuesOf(load(TEMPLATE_INPUT), "input_space"), Contains("New"));
}

TEST_F(NativeTemplate, WithoutItsBridgeLeadsFromNoSceneToADisplay)
{
    CatalogTest::writeFile(configFile(), "<TavrinConfig version='1.0'/>");
    TemplatePtr const tpl = load(TEMPLATE_VIEWING);
    choose(tpl, "working_space", "ACEScg");
    choose(tpl, "view_transform", "sRGB");
    EXPECT_EQ(creationFailure(tpl), (Told{0x120001, "Alias 'SceneToOutputBridge' not found."}));
}

TEST_F(NativeTemplate, ABridgeOfARelativePathToNothingFailsWhenItIsUsed)
{
    EXPECT_EQ(told(addAliasInPreferences("SceneToOutputBridge", "bridge.ctf", BASE_PATH_NONE)), kGood);
    TemplatePtr const tpl = load(TEMPLATE_VIEWING);
    choose(tpl, "working_space", "ACEScg");
    choose(tpl, "view_transform", "sRGB");
    EXPECT_EQ(creationFailure(tpl),
              (Told{0x1010001, "Reference SceneToOutputBridge must specify a basePath when using a relative path."}));
}

TEST_F(NativeTemplate, UsesTheBridgeOfTheSite)
{
    CatalogTest::writeFile(shared() + "/bridges/mine.ctf", CatalogTest::transformFile({}, 0.5));
    EXPECT_EQ(told(addAliasInPreferences("SceneToOutputBridge", "bridges/mine.ctf", BASE_PATH_SHARED)), kGood);
    // Half of the values that stand for ACES is taken for XYZ: red of AP0 is not neutral on a display, so raw numbers are compared.
    TransformPtr const transform = viewing("ACES2065-1", "sRGB");
    EXPECT_EQ(told(finalizeForCpu(transform)), kGood);
    Colorimetry::Row const white = Colorimetry::xyz(Colorimetry::kD65);
    Pixels const pixel =
        render(transform, {static_cast<float>(white[0]), static_cast<float>(white[1]), static_cast<float>(white[2]), 1.0F});
    expectGrey(pixel, srgbEncode(0.5), kPowersError);
}

// --- Without an installation

using NoInstallation = OwnPreferencesTest;

TEST_F(NoInstallation, RefusesNativeTemplates)
{
    std::filesystem::remove_all(systemPath());
    TemplatePtr tpl;
    EXPECT_EQ(told(loadNativeTemplate(TEMPLATE_INPUT, kProduct, tpl)),
              (Told{0x4b000c, "Tavrin package is not installed: " + systemPath()}));
    EXPECT_EQ(told(reloadCatalogs()), (Told{0x4b000c, "Tavrin package is not installed: " + systemPath()}));
    EXPECT_FALSE(tpl);
}

TEST(StockTemplate, NeedsNoInstallationAndNoSelection)
{
    TemplatePtr tpl;
    ASSERT_EQ(told(loadStockTemplate(STOCK_TEMPLATE_RAW, tpl)), kGood);
    for (char const* const name : {"working_space", "view_transform"})
    {
        TemplateParameterPtr const parameter = parameterOf(tpl, name);
        EXPECT_EQ(parameter->getNumValues(), 1U);
        EXPECT_STREQ(parameter->getSelectedValue(), "raw");
        parameter->deselect();
    }
    TransformPtr const transform = create(tpl);
    expectGrey(grey(transform, 0.25), 0.25, kPowersError);
    EXPECT_EQ(told(transform->setDynamicProperty({DynamicProperty::EXPOSURE, 2.0})), kGood);
    expectGrey(render(transform, {0.25F, 0.25F, 0.25F, 1.0F}), 1.0, kPowersError);
}

TEST(StockTemplate, HandlesShareATemplate)
{
    TemplatePtr one;
    EXPECT_FALSE(one);
    EXPECT_EQ(one.getUseCount(), 0);
    ASSERT_EQ(told(loadStockTemplate(STOCK_TEMPLATE_RAW, one)), kGood);
    TemplatePtr const other = one;
    EXPECT_EQ(one.getUseCount(), 2);
    EXPECT_EQ(&*other, one.get());
    one.reset();
    EXPECT_EQ(other.getUseCount(), 1);
}

} // namespace
