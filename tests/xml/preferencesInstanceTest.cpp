// The preferences of the process.
#include "xml/preferencesInstance.h"

#include "support/failure.h"
#include "support/ownPreferences.h"
#include "utils/locations.h"
#include "xml/preferencesDocuments.h"
#include "xml/xmlPreferencesReader.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <atomic>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <thread>
#include <vector>

using namespace Color;
using namespace XmlTest;
using Tavrin::BASE_PATH_NONE;
using testing::ElementsAre;
using testing::IsEmpty;
using Xml::Impl::PreferencesInstance;

namespace
{

class ProcessPreferences : public OwnPreferencesTest
{
protected:
    Preferences& preferences() const { return *PreferencesInstance::getInstance().getPreferences(); }
    void writeConfiguration(std::string const& document) const { m_folder.write("tavrinConfig.xml", document); }
    std::string sharedPathOnDisk() const
    {
        XMLPreferencesReader const reader;
        reader.parseFile(configFile());
        return reader.getPreferences()->getStoredSharedPath();
    }
};

} // namespace

TEST_F(ProcessPreferences, AreReadAtTheFirstUse)
{
    writeConfiguration(inTable("<Ref alias='a' path='/b'/>"));
    EXPECT_FALSE(PreferencesInstance::isInitialized());
    EXPECT_THAT(referencesOf(preferences()), ElementsAre(Reference("a", "/b", BASE_PATH_NONE)));
    EXPECT_TRUE(PreferencesInstance::isInitialized());
    EXPECT_EQ(configuration(), inTable("<Ref alias='a' path='/b'/>")); // Nothing is written.
}

TEST_F(ProcessPreferences, HaveNoAliasThatTheFileDoesNotList)
{
    writeConfiguration(inConfig("<SharedHome dir='/s'/>"));
    EXPECT_THAT(referencesOf(preferences()), IsEmpty());
    EXPECT_EQ(failureOf([&] { preferences().getReferenceTable().findAlias("defaultLook"); }),
              (Failure{0x120001, "Alias 'defaultLook' not found."}));
}

TEST_F(ProcessPreferences, ReplaceAMissingOrBrokenFileByTheDefaults)
{
    Utils::setDefaultSharedPath("/site");
    Preferences const defaults("/site", systemTransforms());
    for (std::string const broken : {"", "?", "<TavrinConfig version='1.0'>"})
    {
        if (broken == "?")
            std::filesystem::remove(configFile());
        else
            writeConfiguration(broken);
        EXPECT_EQ(preferences().getStoredSharedPath(), "/site");
        EXPECT_EQ(referencesOf(preferences()), referencesOf(defaults));
        PreferencesInstance::reset();
        EXPECT_EQ(sharedPathOnDisk(), "/site");
        EXPECT_EQ(referencesOf(preferences()), referencesOf(defaults)); // As read back.
        PreferencesInstance::reset();
    }
}

TEST_F(ProcessPreferences, AreNotThereWhenTheDefaultsCannotBeSaved)
{
    std::string const path = m_folder.file("later/tavrinConfig.xml");
    ScopedEnvironment const environment("TAVRIN_OVERRIDE_CONFIG_PATH", path.c_str());
    for (int attempt = 0; attempt < 2; ++attempt)
    {
        EXPECT_EQ(failureOf([&] { preferences(); }), (Failure{0x430004, "Invalid file path: '" + path + "'"}));
        EXPECT_FALSE(PreferencesInstance::isInitialized());
    }
    std::filesystem::create_directory(m_folder.file("later"));
    EXPECT_EQ(failureOf([&] { preferences(); }), Failure());
    EXPECT_TRUE(std::filesystem::exists(path));
}

TEST_F(ProcessPreferences, AreSavedAsTheyAreNow)
{
    writeConfiguration(inConfig(""));
    preferences().setSharedPath("/site");
    PreferencesInstance::getInstance().save();
    EXPECT_EQ(sharedPathOnDisk(), "/site");
}

TEST_F(ProcessPreferences, SeeWhatAnotherProcessWroteOnceTheyAreLoadedAgain)
{
    writeConfiguration(inConfig("<SharedHome dir='/before'/>"));
    EXPECT_EQ(preferences().getStoredSharedPath(), "/before");
    ASSERT_EQ(std::system(("sed -i 's/before/after/' '" + configFile() + "'").c_str()), 0);
    EXPECT_EQ(preferences().getStoredSharedPath(), "/before");
    PreferencesInstance::reset();
    EXPECT_FALSE(PreferencesInstance::isInitialized());
    EXPECT_EQ(preferences().getStoredSharedPath(), "/after");
}

TEST_F(ProcessPreferences, StayAutomaticWithoutAProfileOfTheSystem)
{
    std::string const document = inConfig("<AutoConfigure graphicsMonitor='true'/>"
                                          "<ReferenceTable><Ref alias='graphicsMonitor' path='/a'/></ReferenceTable>");
    writeConfiguration(document);
    EXPECT_TRUE(preferences().getAutoConfigureMonitorProfile());
    EXPECT_THAT(referencesOf(preferences()), ElementsAre(Reference("graphicsMonitor", "/a", BASE_PATH_NONE)));
    EXPECT_EQ(configuration(), document);
}

TEST_F(ProcessPreferences, AreLoadedOnceAndSavedWholeByManyThreads)
{
    constexpr int kRounds = 50;
    writeConfiguration(inConfig("<SharedHome dir='/site'/>"));
    std::atomic<int> whole = 0;
    std::vector<std::thread> threads;
    for (int i = 0; i < 2; ++i)
    {
        threads.emplace_back(
            []
            {
                for (int round = 0; round < kRounds; ++round)
                    PreferencesInstance::getInstance().save();
            });
    }
    threads.emplace_back(
        [&]
        {
            for (int round = 0; round < kRounds; ++round)
                whole += sharedPathOnDisk() == "/site" ? 1 : 0;
        });
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_EQ(whole, kRounds);
}
