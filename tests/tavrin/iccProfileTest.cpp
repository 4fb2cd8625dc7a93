// ICC profiles, as a caller sees them: what stands between their matrix and their curves is up to the preferences.
#include "support/iccProfileBytes.h"
#include "support/ownPreferences.h"
#include "transformFixtures.h"

#include <gmock/gmock.h>

#include <cmath>
#include <filesystem>
#include <string>

using namespace Tavrin;

namespace
{

// With the transforms and the configuration that are installed with the library.
class ProfileOnAnInstallation : public OwnProcessTest
{
protected:
    TemporaryFolder const m_folder;

private:
    std::string copyConfiguration() const
    {
        std::string const copy = m_folder.file("tavrinConfig.xml");
        std::filesystem::copy_file(TAVRIN_INSTALLATION "/tavrinConfig.xml", copy);
        return copy;
    }

    ScopedEnvironment const m_system{"TAVRIN_OVERRIDE_SYSTEM_TRANSFORM_LOCATION", TAVRIN_INSTALLATION};
    ScopedEnvironment const m_config{"TAVRIN_OVERRIDE_CONFIG_PATH", copyConfiguration().c_str()};
};

class ProfileWithoutAGamutMap : public OwnPreferencesTest
{
};

} // namespace

// Grey of XYZ is grey of the device. The profile's primaries, rounded to four digits, add up to a Z of 0.8251 where that of the
// white is 0.8247: in blue that makes 0.0004 / 0.7141 * 256 / 563.
TEST_F(ProfileOnAnInstallation, LoadsAndRenders)
{
    TransformPtr transform;
    ASSERT_EQ(told(loadColorTransform(m_folder.write("display.icc", XmlTest::ProfileBytes().build()).c_str(), transform)), kGood);
    EXPECT_STREQ(transform->getInputDescriptor(), "ICC XYZ PCS");
    EXPECT_STREQ(transform->getOutputDescriptor(), "device RGB");
    ASSERT_EQ(told(finalizeForCpu(transform)), kGood);
    for (float grey : {1.0F, 0.5F, 0.18F})
    {
        // The white of D65 with 2 degrees, by ASTM E308.
        Pixels const pixel = render(transform, {0.95047F * grey, grey, 1.08883F * grey, 1});
        ASSERT_EQ(pixel.size(), 4U);
        for (int color = 0; color < 3; ++color)
            EXPECT_NEAR(pixel[static_cast<std::size_t>(color)], std::pow(grey, 256.0 / 563.0), 3e-4) << grey << ' ' << color;
        EXPECT_NEAR(pixel[3], 1.0F, 1.0F / 65536.0F) << "alpha goes through a power too";
    }
}

TEST_F(ProfileWithoutAGamutMap, TellsTheMissingAlias)
{
    TransformPtr transform;
    EXPECT_EQ(told(loadColorTransform(m_folder.write("display.icc", XmlTest::ProfileBytes().build()).c_str(), transform)),
              Told(0x120001, "Alias 'defaultGamutMap' not found."));
    EXPECT_FALSE(transform);
}
