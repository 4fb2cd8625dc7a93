// Gamma, logarithm, colour decision and exposure/contrast as a caller meets them: how they are displayed, and values that change.
#include <tavrin/tavrin.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

namespace
{

using Entries = std::vector<std::pair<std::string, std::string>>;
using testing::ElementsAre;
using testing::Pair;

Tavrin::TransformPtr load(std::string const& op)
{
    Tavrin::TransformPtr transform;
    std::string const document =
        "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<ProcessList id=\"a\" version=\"1.5\">" + op + "</ProcessList>";
    EXPECT_EQ(Tavrin::loadColorTransformFromBuffer(document.c_str(), transform).getErrorCode(), 0U);
    return transform;
}

std::string element(std::string const& tag, std::string const& style, std::string const& content)
{
    return "<" + tag + " inBitDepth='32f' outBitDepth='32f' style='" + style + "'>" + content + "</" + tag + ">";
}

// The entries of the operator's section that are its own: those behind the depths.
class OwnEntries : public Tavrin::Transform::ContentCallbacks
{
public:
    void beginSection(char const* name) override
    {
        m_section = name;
        m_depth += 1;
    }
    void endSection() override { m_depth -= 1; }
    void addEntry(char const* key, char const* value) override
    {
        static constexpr char const* kCommon[] = {"Identifier", "Name", "Input Bit Depth", "Output Bit Depth"};
        bool const isCommon = std::find(std::begin(kCommon), std::end(kCommon), std::string(key)) != std::end(kCommon);
        if (m_depth == 2 && !isCommon)
            m_entries.emplace_back(key, value);
    }

    std::string m_section;
    Entries m_entries;

private:
    int m_depth = 0;
};

OwnEntries display(std::string const& op)
{
    OwnEntries entries;
    EXPECT_EQ(load(op)->extractContent(entries).getErrorCode(), 0U);
    return entries;
}

} // namespace

TEST(GradeDisplay, TellsGammaAndOffsetOfEachChannel)
{
    OwnEntries const basic = display(element("Gamma", "basicRev", "<GammaParams gamma='2.2'/>"));
    EXPECT_EQ(basic.m_section, "Gamma");
    EXPECT_THAT(basic.m_entries,
                ElementsAre(Pair("Gamma Style", "basicRev"), Pair("gamma", "      2.2000"), Pair("gamma", "      2.2000"),
                            Pair("gamma", "      2.2000"), Pair("gamma", "      1.0000")));
    OwnEntries const moncurve = display(element("Gamma", "moncurveFwd", "<GammaParams gamma='2.4' offset='0.055'/>"));
    EXPECT_THAT(moncurve.m_entries,
                ElementsAre(Pair("Gamma Style", "moncurveFwd"), Pair("gamma", "      2.4000"), Pair("offset", "      0.0550"),
                            Pair("gamma", "      2.4000"), Pair("offset", "      0.0550"), Pair("gamma", "      2.4000"),
                            Pair("offset", "      0.0550"), Pair("gamma", "      1.0000"), Pair("offset", "      0.0000")));
}

TEST(GradeDisplay, TellsTheParametersOfTheFilmModel)
{
    EXPECT_THAT(display(element("Log", "log2", "")).m_entries, ElementsAre(Pair("Log Style", "log2")));
    OwnEntries const film =
        display(element("Log", "linToLog", "<LogParams gamma='0.6' refWhite='685' refBlack='95' highlight='1' shadow='0.00005'/>"));
    EXPECT_EQ(film.m_section, "Log");
    EXPECT_THAT(film.m_entries, ElementsAre(Pair("Log Style", "linToLog"), Pair("RefWhite", "    685.0000    685.0000    685.0000"),
                                            Pair("RefBlack", "     95.0000     95.0000     95.0000"),
                                            Pair("Highlight", "      1.0000      1.0000      1.0000"),
                                            Pair("Shadow", "  5.0000e-05  5.0000e-05  5.0000e-05"),
                                            Pair("Gamma", "      0.6000      0.6000      0.6000")));
}

TEST(GradeDisplay, TellsSlopeOffsetPowerAndSaturation)
{
    OwnEntries const cdl =
        display(element("ASC_CDL", "noClampFwd",
                        "<SOPNode><Slope>1.5 1 0.5</Slope><Offset>-0.25 0 0.25</Offset><Power>1 2 3</Power></SOPNode>"
                        "<SatNode><Saturation>0.75</Saturation></SatNode>"));
    EXPECT_EQ(cdl.m_section, "ASC CDL");
    EXPECT_THAT(cdl.m_entries,
                ElementsAre(Pair("CDL Style", "noClampFwd"), Pair("Slope", "      1.5000      1.0000      0.5000"),
                            Pair("Offset", "     -0.2500      0.0000      0.2500"),
                            Pair("Power", "      1.0000      2.0000      3.0000"), Pair("Saturation", "      0.7500")));
}

TEST(GradeDisplay, TellsExposureContrastAndPivot)
{
    OwnEntries const ec = display(element("ExposureContrast", "video", "<ECParams exposure='0.5' contrast='1.25' pivot='0.2'/>"));
    EXPECT_EQ(ec.m_section, "Exposure/Contrast");
    EXPECT_THAT(ec.m_entries,
                ElementsAre(Pair("E/C Style", "video"), Pair("Exposure", "      0.5000"), Pair("Contrast", "      1.2500"),
                            Pair("Gamma", "      1.0000"), Pair("Pivot", "      0.2000")));
}

namespace
{

using Tavrin::DynamicProperty;

std::string const kDynamic = element("ExposureContrast", "linear",
                                     "<ECParams exposure='0' contrast='1' pivot='0.18'/>"
                                     "<DynamicParameter param='EXPOSURE'/><DynamicParameter param='CONTRAST'/>"
                                     "<DynamicParameter param='LOOK_SWITCH'/>");

float renderGrey(Tavrin::TransformPtr const& transform)
{
    std::vector<float> const in = {0.25F, 0.25F, 0.25F, 1.0F};
    std::vector<float> out(4);
    EXPECT_EQ(transform->applyCPU(in.data(), Tavrin::ROI(0, 0, 1, 1), out.data()).getErrorCode(), 0U);
    return out[0];
}

// Values that are at rest stay changeable.
void finalize(Tavrin::TransformPtr const& transform)
{
    Tavrin::OptimizerFlags const flags = Tavrin::OPTIMIZER_DEFAULT_THRESHOLD | Tavrin::OPTIMIZER_KEEP_DYNAMIC;
    EXPECT_EQ(transform->finalize(Tavrin::PF_RGBA_32f, Tavrin::PF_RGBA_32f, Tavrin::RENDERER_CPU, flags, 0).getErrorCode(), 0U);
}

} // namespace

TEST(DynamicGrade, ValuesSetOnATransformReachItsCloneWithoutFinalize)
{
    Tavrin::TransformPtr const transform = load(kDynamic);
    Tavrin::TransformPtr const clone = transform->clone();
    finalize(transform);
    finalize(clone);
    EXPECT_FLOAT_EQ(renderGrey(clone), 0.25F);
    ASSERT_EQ(transform->setDynamicProperty({DynamicProperty::EXPOSURE, 1.0}).getErrorCode(), 0U);
    EXPECT_FLOAT_EQ(renderGrey(transform), 0.5F);
    EXPECT_FLOAT_EQ(renderGrey(clone), 0.5F);
    ASSERT_EQ(clone->setDynamicProperty({DynamicProperty::BYPASS, true}).getErrorCode(), 0U);
    EXPECT_EQ(renderGrey(transform), 0.25F);
    DynamicProperty property(DynamicProperty::EXPOSURE, 0.0);
    ASSERT_EQ(clone->getDynamicProperty(property).getErrorCode(), 0U);
    EXPECT_EQ(static_cast<double>(property.value), 1.0);
}

TEST(DynamicGrade, ContrastTurnsAroundThePivot)
{
    Tavrin::TransformPtr const transform = load(kDynamic);
    finalize(transform);
    ASSERT_EQ(transform->setDynamicProperty({DynamicProperty::CONTRAST, 2.0}).getErrorCode(), 0U);
    // The power is a polynomial of four digits.
    EXPECT_NEAR(renderGrey(transform), 0.25 * 0.25 / 0.18, 1e-4);
}
