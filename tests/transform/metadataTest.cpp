// The tree of named texts.
#include "transform/metadata.h"
#include "support/failure.h"

#include <gmock/gmock.h>

using Color::Metadata;
using testing::ElementsAre;
using testing::IsEmpty;

namespace
{

// Info: Copyright with a text, Release with Date and Version.
Metadata sample()
{
    Metadata info("Info");
    info["Copyright"] = "free";
    info["Release"]["Date"] = "2015";
    info["Release"]["Version"] = "2";
    return info;
}

TEST(Metadata, NeedsAName)
{
    EXPECT_EQ(failureOf([] { Metadata(""); }), (Failure{0x2d0001, "Metadata element name cannot be empty."}));
    Metadata info("Info");
    EXPECT_EQ(failureOf([&] { info[""]; }).id, 0x2d0001U);
    EXPECT_THAT(info.getItems(), IsEmpty());
}

TEST(Metadata, StartsAsAnEmptyLeaf)
{
    Metadata const info("Info");
    EXPECT_EQ(info.getName(), "Info");
    EXPECT_TRUE(info.isLeaf());
    EXPECT_TRUE(info.isEmpty());
    EXPECT_EQ(info.getValue(), "");
    EXPECT_THAT(info.getItemsNames(), IsEmpty());
}

TEST(Metadata, HoldsValuesInLeavesAndItemsInOrder)
{
    Metadata const info = sample();
    EXPECT_FALSE(info.isLeaf());
    EXPECT_FALSE(info.isEmpty());
    EXPECT_THAT(info.getItemsNames(), ElementsAre("Copyright", "Release"));
    EXPECT_EQ(info["Copyright"].getValue(), "free");
    EXPECT_FALSE(info["Copyright"].isEmpty());
    EXPECT_TRUE(info["Copyright"].isLeaf());
    EXPECT_THAT(info["Release"].getItemsNames(), ElementsAre("Date", "Version"));
    EXPECT_EQ(info["Release"]["Version"].getValue(), "2");
}

TEST(Metadata, FindsTheItemThatIsThere)
{
    Metadata info = sample();
    info["Copyright"] = "mine";
    EXPECT_EQ(info["Copyright"].getValue(), "mine");
    EXPECT_EQ(info.getItems().size(), 2U);
}

TEST(Metadata, OnlyALeafGivesAValue)
{
    Metadata const info = sample();
    EXPECT_EQ(failureOf([&] { info["Release"].getValue(); }), (Failure{0x2d0002, "Metadata element should be a leaf: Release"}));
}

TEST(Metadata, ANodeWithAValueTakesNoItems)
{
    Metadata info = sample();
    Failure const notAContainer{0x2d0003, "Metadata element should be a container: Copyright"};
    EXPECT_EQ(failureOf([&] { info["Copyright"]["Year"]; }), notAContainer);
    EXPECT_EQ(failureOf([&] { info["Copyright"].getItems(); }), notAContainer);
    EXPECT_EQ(failureOf([&] { info["Copyright"].getItemsNames(); }), notAContainer);
}

TEST(Metadata, MissingItemsAreReportedByName)
{
    Metadata info = sample();
    Metadata const& constant = info;
    Failure const notFound{0x2d0004, "Metadata element not found: Year"};
    EXPECT_EQ(failureOf([&] { constant["Year"]; }), notFound);
    EXPECT_EQ(failureOf([&] { info.remove("Year"); }), notFound);
    EXPECT_EQ(info.getItems().size(), 2U);
}

TEST(Metadata, RemovesTheFirstItemOfAName)
{
    Metadata info = sample();
    info.remove("Copyright");
    EXPECT_THAT(info.getItemsNames(), ElementsAre("Release"));
    EXPECT_EQ(failureOf([&] { info.remove("Copyright"); }).id, 0x2d0004U);
}

TEST(Metadata, ClearedIsAnEmptyLeafOfTheSameName)
{
    Metadata info = sample();
    info.clear();
    EXPECT_TRUE(info.isEmpty());
    EXPECT_EQ(info.getName(), "Info");
    info = "text";
    info.clear();
    EXPECT_TRUE(info.isEmpty());
}

TEST(Metadata, TakesContentWithoutTheNameAlsoFromItsOwnItem)
{
    Metadata other("Other");
    other.assignContent(sample());
    EXPECT_EQ(other.getName(), "Other");
    EXPECT_THAT(other.getItemsNames(), ElementsAre("Copyright", "Release"));

    other.assignContent(other["Release"]);
    EXPECT_THAT(other.getItemsNames(), ElementsAre("Date", "Version"));
}

// As text before children in a file gives.
TEST(Metadata, KeepsItemsThatStandBesideAValue)
{
    Metadata info = sample();
    info = "text";
    EXPECT_THAT(info.getItemsNames(), ElementsAre("Copyright", "Release"));
    EXPECT_EQ(failureOf([&] { info.getValue(); }).id, 0x2d0002U);

    Metadata copy("Copy");
    copy.assignContent(info);
    EXPECT_THAT(copy.getItemsNames(), ElementsAre("Copyright", "Release"));
}

} // namespace
