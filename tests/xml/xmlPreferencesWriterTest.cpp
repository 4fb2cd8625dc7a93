// Writing the configuration file.
#include "xml/xmlPreferencesWriter.h"

#include "support/failure.h"
#include "support/scopedEnvironment.h"
#include "support/temporaryFolder.h"
#include "xml/preferencesDocuments.h"
#include "xml/xmlPreferencesReader.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <string>

using namespace Color;
using namespace XmlTest;
using Tavrin::BASE_PATH_NONE;
using Tavrin::BASE_PATH_SHARED;
using Tavrin::BASE_PATH_VENDOR;

namespace
{

class WrittenConfigurations : public testing::Test
{
protected:
    std::string write() const
    {
        XMLPreferencesWriter::writeFile(m_preferences, m_path);
        return contentOfFile(m_path);
    }
    std::shared_ptr<Preferences> writeAndRead() const
    {
        write();
        XMLPreferencesReader const reader;
        reader.parseFile(m_path);
        return reader.getPreferences();
    }
    void addAlias(std::string const& alias, std::string const& path, Tavrin::BasePath basePath = BASE_PATH_NONE)
    {
        m_preferences->getReferenceTable().addAlias(alias, {path, basePath});
    }

    TemporaryFolder const m_folder;
    std::string const m_path = m_folder.file("config.xml");
    std::shared_ptr<Preferences> const m_preferences = std::make_shared<Preferences>();
};

bool isStorable(std::string const& text)
{
    Failure const failure = failureOf([&] { XMLPreferencesWriter::requireStorable(text); });
    EXPECT_TRUE(failure == Failure() || failure == (Failure{0x420008, "Characters '" + text + "' illegal"}));
    return failure.id == 0;
}

} // namespace

TEST_F(WrittenConfigurations, TellEverything)
{
    m_preferences->setAutoConfigureMonitorProfile(true);
    m_preferences->setSharedPath("/site");
    addAlias("look", "/look.ctf");
    addAlias("a", "b.ctf", BASE_PATH_SHARED);
    addAlias("b", "c.ctf", BASE_PATH_VENDOR);
    EXPECT_EQ(write(), "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
                       "<TavrinConfig version=\"1.0\">\n"
                       "    <AutoConfigure graphicsMonitor=\"true\" />\n"
                       "    <SharedHome dir=\"/site\" />\n"
                       "    <ReferenceTable>\n"
                       "        <Ref alias=\"a\" path=\"b.ctf\" basePath=\"Shared\" />\n"
                       "        <Ref alias=\"b\" path=\"c.ctf\" basePath=\"Norvane\" />\n"
                       "        <Ref alias=\"look\" path=\"/look.ctf\" />\n"
                       "    </ReferenceTable>\n"
                       "</TavrinConfig>\n");
}

TEST_F(WrittenConfigurations, LeaveOutWhatIsEmpty)
{
    EXPECT_EQ(write(), "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
                       "<TavrinConfig version=\"1.0\">\n"
                       "    <AutoConfigure graphicsMonitor=\"false\" />\n"
                       "</TavrinConfig>\n");
    EXPECT_EQ(writeAndRead()->getStoredSharedPath(), "");
}

TEST_F(WrittenConfigurations, DoNotHoldTheOverride)
{
    ScopedEnvironment const environment("TAVRIN_OVERRIDE_SHARED_PATH", "/other");
    m_preferences->setSharedPath("/site");
    EXPECT_EQ(writeAndRead()->getStoredSharedPath(), "/site");
}

TEST_F(WrittenConfigurations, AreReadBack)
{
    m_preferences->setAutoConfigureMonitorProfile(true);
    m_preferences->setSharedPath("/site/\"a\" & 'b' <c>/\xc3\xa9");
    addAlias("<&>", "  two  blanks  ", BASE_PATH_SHARED);
    std::shared_ptr<Preferences> const read = writeAndRead();
    EXPECT_TRUE(read->getAutoConfigureMonitorProfile());
    EXPECT_EQ(read->getStoredSharedPath(), m_preferences->getStoredSharedPath());
    EXPECT_EQ(referencesOf(*read), referencesOf(*m_preferences));
}

TEST_F(WrittenConfigurations, HoldEveryCharacterThatIsStorable)
{
    for (int code = 1; code < 0x80; ++code)
    {
        std::string const text = "a" + std::string(1, static_cast<char>(code)) + "b";
        m_preferences->setSharedPath(text);
        std::string read;
        failureOf([&] { read = writeAndRead()->getStoredSharedPath(); });
        EXPECT_EQ(read == text, isStorable(text)) << code;
    }
}

TEST(StorableTexts, AreInUtf8)
{
    EXPECT_TRUE(isStorable(""));
    EXPECT_TRUE(isStorable("\xc3\xa9\xe2\x82\xac\xf0\x9f\x8e\xa8")); // An accent, a currency, a palette: 2, 3 and 4 bytes.
    for (char const* const text : {"caf\xe9", "\xc3", "\xe2\x82", "\xc0\xaf", "\xed\xa0\x80", "\xef\xbf\xbe", "\xef\xbf\xbf"})
        EXPECT_FALSE(isStorable(text));
}
