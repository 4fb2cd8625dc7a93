// Elements that give an operator its parameters as attributes.
#include "xml/paramsElt.h"

#include "support/failure.h"
#include "xml/elements.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

using namespace Color::Xml::Reader;
using testing::ElementsAre;
using testing::Optional;
using XmlTest::Attributes;

namespace
{

// Two styles: "plain" has a power, "bent" a power and a shift.
class CurveParams : public ParamsElt
{
public:
    explicit CurveParams(bool isBent, char const* channels = "RGB")
        : ParamsElt("CurveParams", nullptr, 9, "f.ctf"), m_isBent(isBent), m_channels(channels)
    {
    }

    std::vector<Param> getParams() const override { return {{"power"}, {"shift", m_isBent}}; }
    std::string getStyleName() const override { return m_isBent ? "bent" : "plain"; }
    char const* getChannels() const override { return m_channels; }
    void setParams(std::optional<unsigned int> channel, Values const& values) override
    {
        m_channel = channel;
        m_values = values;
    }

    bool m_isBent;
    char const* m_channels;
    std::optional<unsigned int> m_channel = 99U;
    std::vector<double> m_values;
};

Failure start(CurveParams& element, Attributes attributes)
{
    return failureOf([&] { element.start(attributes); });
}

} // namespace

TEST(ParameterElements, HoldForAllChannelsWithoutAChannel)
{
    CurveParams element(true);
    EXPECT_EQ(start(element, {"SHIFT", "0.055", "Power", "2.4"}), Failure());
    EXPECT_EQ(element.m_channel, std::nullopt);
    EXPECT_THAT(element.m_values, ElementsAre(2.4, 0.055));
}

TEST(ParameterElements, HoldForTheChannelThatTheyName)
{
    CurveParams element(false);
    EXPECT_EQ(start(element, {"power", "2", "channel", "g"}), Failure());
    EXPECT_THAT(element.m_channel, Optional(1U));
    EXPECT_THAT(element.m_values, ElementsAre(2.0));
}

TEST(ParameterElements, RefuseChannelsThatTheyDoNotHave)
{
    CurveParams element(false);
    for (std::string const name : {"A", "", "RG", "Red"})
    {
        EXPECT_EQ(start(element, {"power", "2", "channel", name.c_str()}),
                  (Failure{0x420013, "Illegal 'CurveParams' channel attribute '" + name + "' line 9: f.ctf"}));
    }
    CurveParams withAlpha(false, "RGBA");
    EXPECT_EQ(start(withAlpha, {"power", "2", "channel", "a"}), Failure());
    EXPECT_THAT(withAlpha.m_channel, Optional(3U));
}

TEST(ParameterElements, MayHaveNoChannels)
{
    CurveParams element(false, "");
    EXPECT_EQ(start(element, {"power", "2", "channel", "nonsense"}), Failure());
    EXPECT_EQ(element.m_channel, std::nullopt);
}

TEST(ParameterElements, TellTheFirstNumberThatTheStyleNeeds)
{
    CurveParams element(true);
    EXPECT_EQ(start(element, {}), (Failure{0x420014, "Param 'power' required for style 'bent', 'CurveParams' line 9: f.ctf"}));
    EXPECT_EQ(start(element, {"power", "1"}),
              (Failure{0x420014, "Param 'shift' required for style 'bent', 'CurveParams' line 9: f.ctf"}));
}

TEST(ParameterElements, RefuseANumberThatTheStyleHasNoUseFor)
{
    CurveParams element(false);
    EXPECT_EQ(start(element, {"power", "1", "shift", "0"}),
              (Failure{0x420015, "Param 'shift' not allowed in style 'plain', 'CurveParams' line 9: f.ctf"}));
}

TEST(ParameterElements, RefuseWhatIsNoNumber)
{
    CurveParams element(false);
    EXPECT_EQ(start(element, {"power", "two"}), (Failure{0x420008, "Characters 'two' illegal"}));
    EXPECT_EQ(start(element, {"power", "NaN"}), (Failure{0x420008, "Characters 'NaN' illegal"}));
}
