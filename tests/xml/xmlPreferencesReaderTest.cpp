// Reading the configuration file.
#include "xml/xmlPreferencesReader.h"

#include "support/failure.h"
#include "xml/documents.h"
#include "xml/logLines.h"
#include "xml/preferencesDocuments.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <string>

using namespace Color;
using namespace XmlTest;
using Tavrin::BASE_PATH_NONE;
using Tavrin::BASE_PATH_SHARED;
using Tavrin::BASE_PATH_VENDOR;
using testing::ElementsAre;
using testing::IsEmpty;

namespace
{

std::shared_ptr<Preferences> preferencesOf(std::string const& document)
{
    XMLPreferencesReader const reader;
    reader.parseBuffer(document);
    return reader.getPreferences();
}

struct Fault
{
    std::string document;
    Failure failure;
};

void PrintTo(Fault const& fault, std::ostream* out)
{
    *out << fault.document;
}

class FaultyConfigurations : public testing::TestWithParam<Fault>
{
};

} // namespace

TEST(Configurations, TellThePreferences)
{
    std::shared_ptr<Preferences> const preferences =
        preferencesOf("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
                      "<TavrinConfig version=\"1.0\">\n"
                      "    <AutoConfigure graphicsMonitor=\"true\" />\n"
                      "    <SharedHome dir=\"/site/a &amp; b\" />\n"
                      "    <ReferenceTable>\n"
                      "        <Ref alias=\"look\" path=\"/look.ctf\" />\n"
                      "        <Ref alias=\"b\" path=\"b.ctf\" basePath=\"Norvane\" />\n"
                      "        <Ref alias=\"c\" path=\"c.ctf\" basePath=\"Shared\" />\n"
                      "    </ReferenceTable>\n"
                      "</TavrinConfig>\n");
    EXPECT_TRUE(preferences->getAutoConfigureMonitorProfile());
    EXPECT_EQ(preferences->getStoredSharedPath(), "/site/a & b");
    EXPECT_THAT(referencesOf(*preferences),
                ElementsAre(Reference("b", "b.ctf", BASE_PATH_VENDOR), Reference("c", "c.ctf", BASE_PATH_SHARED),
                            Reference("look", "/look.ctf", BASE_PATH_NONE)));
}

TEST(Configurations, AreReadInAnyCase)
{
    std::shared_ptr<Preferences> const preferences =
        preferencesOf("<tavrinCONFIG VERSION='1'><AUTOconfigure GRAPHICSmonitor='TRUE'/><SHAREDhome DIR='/s'/>"
                      "<referencetable><REF ALIAS='A' PATH='p' BASEPATH='sHARED'/></referencetable></tavrinCONFIG>");
    EXPECT_TRUE(preferences->getAutoConfigureMonitorProfile());
    EXPECT_EQ(preferences->getStoredSharedPath(), "/s");
    EXPECT_THAT(referencesOf(*preferences), ElementsAre(Reference("A", "p", BASE_PATH_SHARED)));
}

TEST(Configurations, HaveNoDefaults)
{
    std::shared_ptr<Preferences> const preferences = preferencesOf(inConfig(""));
    EXPECT_FALSE(preferences->getAutoConfigureMonitorProfile());
    EXPECT_EQ(preferences->getStoredSharedPath(), "");
    EXPECT_THAT(referencesOf(*preferences), IsEmpty());
}

TEST(Configurations, AreAutomaticOnlyWhereTheySayTrue)
{
    for (std::string const attribute : {"", "graphicsMonitor=''", "graphicsMonitor='yes'", "graphicsMonitor='false'"})
        EXPECT_FALSE(preferencesOf(inConfig("<AutoConfigure " + attribute + "/>"))->getAutoConfigureMonitorProfile());
}

TEST(Configurations, KeepTheLaterOfTwoReferencesOfOneName)
{
    std::shared_ptr<Preferences> const preferences =
        preferencesOf(inTable("<Ref alias='a' path='/1'/><Ref alias='a' path='2' basePath='Shared'/>"));
    EXPECT_THAT(referencesOf(*preferences), ElementsAre(Reference("a", "2", BASE_PATH_SHARED)));
}

TEST(Configurations, LogABasePathThatIsNone)
{
    TemporaryFolder const folder;
    std::string const path = folder.write("config.xml", inTable("\n<Ref alias='a' path='b' basePath='Elsewhere'/>"));
    LogCapture const log;
    XMLPreferencesReader const reader;
    reader.parseFile(path);
    EXPECT_THAT(referencesOf(*reader.getPreferences()), ElementsAre(Reference("a", "b", BASE_PATH_NONE)));
    EXPECT_THAT(log.lines(),
                ElementsAre(LogCapture::Line(LOG_DEBUG, "Illegal 'basePath' attribute 'Elsewhere' in 'Ref' line 2: " + path)));
}

TEST(Configurations, PassOverWhatTheyDoNotKnow)
{
    LogCapture const log;
    std::shared_ptr<Preferences> const preferences =
        preferencesOf(inConfig("<Colour name='red'>text<Hue/></Colour><SharedHome dir='/s' size='9'/>"));
    EXPECT_EQ(preferences->getStoredSharedPath(), "/s");
    EXPECT_THAT(textsOf(log),
                ElementsAre("Ignore element 'Colour' (line 0) where its parent is 'TavrinConfig' (line 0) : Unknown "
                            "element: ",
                            "Ignore element 'Hue' (line 0) where its parent is 'Colour' (line 0) : Unknown element: "));
}

TEST(Configurations, CannotBeReadWhereThereAreNone)
{
    TemporaryFolder const folder;
    XMLPreferencesReader const reader;
    EXPECT_EQ(failureOf([&] { reader.parseFile(folder.file("none")); }),
              (Failure{0x420018, "File open failed: " + folder.file("none")}));
    EXPECT_EQ(reader.getPreferences(), nullptr);
}

TEST_P(FaultyConfigurations, AreRefused)
{
    TemporaryFolder const folder;
    std::string const path = folder.write("config.xml", GetParam().document);
    XMLPreferencesReader const reader;
    Failure failure = failureOf([&] { reader.parseFile(path); });
    failure.words = withShortFileName(failure.words, path);
    EXPECT_EQ(failure, GetParam().failure);
    EXPECT_EQ(reader.getPreferences(), nullptr);
}

INSTANTIATE_TEST_SUITE_P(
    Root, FaultyConfigurations,
    testing::Values(
        Fault{"", {0x45000c, "The preferences were not loaded: <file>"}},
        Fault{"<Other/>", {0x45000c, "The preferences were not loaded: <file>"}},
        Fault{"no markup", {0x420001, "XML Parsing error (syntax error) line 1: <file>"}},
        Fault{"<TavrinConfig version='1.0'>", {0x420004, "XML Parsing error (no closing tag for 'TavrinConfig') line 1: <file>"}},
        Fault{"<TavrinConfig>\n</TavrinConfig>", {0x450003, "Version value cannot be empty at 'TavrinConfig' line 1: <file>"}},
        Fault{"<TavrinConfig version=''/>", {0x450003, "Version value cannot be empty at 'TavrinConfig' line 1: <file>"}},
        Fault{inConfig("\n<TavrinConfig version='1.0'/>"), {0x450005, "Tavrin config was found more than once at line 2: <file>"}},
        Fault{"<Other>\n<TavrinConfig version='1.0'/></Other>",
              {0x450007, "Tavrin config tag must be the first element. At line 2: <file>"}},
        Fault{inConfig("\ntext"), {0x420005, "XML Parsing error: Attribute end 'text' illegal line 2: <file>"}}));

INSTANTIATE_TEST_SUITE_P(
    SharedHome, FaultyConfigurations,
    testing::Values(Fault{inConfig("<SharedHome dir='/a'/>\n<SharedHome dir='/b'/>"),
                          {0x450006, "Shared home path cannot be set more than once at line 2: <file>"}},
                    Fault{inTable("<SharedHome dir='/a'/>"),
                          {0x450009, "The shared path element is not within a TavrinConfig element at line 1: <file>"}},
                    Fault{"<SharedHome dir='/a'/>",
                          {0x450009, "The shared path element is not within a TavrinConfig element at line 1: <file>"}},
                    Fault{inConfig("<SharedHome/>"), {0x450004, "Dir value cannot be empty at 'SharedHome' line 1: <file>"}},
                    Fault{inConfig("<SharedHome dir=''/>"),
                          {0x450004, "Dir value cannot be empty at 'SharedHome' line 1: <file>"}}));

INSTANTIATE_TEST_SUITE_P(
    References, FaultyConfigurations,
    testing::Values(Fault{inTable("<ReferenceTable/>"),
                          {0x45000a, "The reference table element is not within a TavrinConfig element at line 1: <file>"}},
                    Fault{"<ReferenceTable/>",
                          {0x45000a, "The reference table element is not within a TavrinConfig element at line 1: <file>"}},
                    Fault{inConfig("<Ref alias='a' path='b'/>"),
                          {0x450008, "A reference entry cannot be outside a reference table at line 1: <file>"}},
                    Fault{inTable("<Other><Ref alias='a' path='b'/></Other>"),
                          {0x450008, "A reference entry cannot be outside a reference table at line 1: <file>"}},
                    Fault{inTable("\n<Ref path='b'/>"), {0x450001, "Alias value cannot be empty at 'Ref' line 2: <file>"}},
                    Fault{inTable("\n<Ref alias='' path='b'/>"), {0x450001, "Alias value cannot be empty at 'Ref' line 2: <file>"}},
                    Fault{inTable("\n<Ref alias='a'/>"), {0x450002, "Path value cannot be empty at 'Ref' line 2: <file>"}},
                    Fault{inTable("\n<Ref alias='a' path=''/>"),
                          {0x450002, "Path value cannot be empty at 'Ref' line 2: <file>"}}));

INSTANTIATE_TEST_SUITE_P(
    AutoConfigure, FaultyConfigurations,
    testing::Values(Fault{inTable("<AutoConfigure graphicsMonitor='true'/>"),
                          {0x45000b, "The AutoConfigure element is not within a TavrinConfig element at line 1: <file>"}},
                    Fault{"<AutoConfigure/>",
                          {0x45000b, "The AutoConfigure element is not within a TavrinConfig element at line 1: <file>"}}));
