// The free information of a transform.
#include "xml/documents.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

using namespace XmlTest;
using Color::Metadata;
using testing::ElementsAre;

namespace
{

Metadata infoOf(std::string const& content)
{
    return transformOf(inRoot("<Info>" + content + "</Info>" + kIdentityRange))->getInfo();
}

} // namespace

TEST(Info, IsATreeOfNamedTexts)
{
    Metadata const info = infoOf("<Copyright>me &amp; you</Copyright><Release><Year>2015</Year><Month>5</Month></Release>");
    EXPECT_EQ(info.getName(), "Info");
    EXPECT_THAT(info.getItemsNames(), ElementsAre("Copyright", "Release"));
    EXPECT_EQ(info["Copyright"].getValue(), "me & you");
    EXPECT_THAT(info["Release"].getItemsNames(), ElementsAre("Year", "Month"));
    EXPECT_EQ(info["Release"]["Year"].getValue(), "2015");
}

TEST(Info, MayHaveATextItself)
{
    EXPECT_EQ(infoOf("text").getValue(), "text");
    EXPECT_TRUE(infoOf("").isEmpty());
}

TEST(Info, JoinsLinesWithNothingBetween)
{
    EXPECT_EQ(infoOf("<a>one\n two </a>")["a"].getValue(), "onetwo");
}

TEST(Info, KeepsTheLaterOfTwoSiblingsAtThePlaceOfTheFirst)
{
    Metadata const info = infoOf("<a><x>1</x></a><b>2</b><a>3</a><A>4</A>");
    EXPECT_THAT(info.getItemsNames(), ElementsAre("a", "b", "A"));
    EXPECT_EQ(info["a"].getValue(), "3");
    EXPECT_EQ(info["A"].getValue(), "4");
}

TEST(Info, KeepsChildrenBesidesText)
{
    Metadata const before = infoOf("<a>text<b>1</b></a>");
    EXPECT_THAT(before["a"].getItemsNames(), ElementsAre("b"));
    EXPECT_EQ(before["a"]["b"].getValue(), "1");
    Metadata const after = infoOf("<a><b>1</b>text</a>");
    EXPECT_EQ(after["a"]["b"].getValue(), "1");
    Metadata const around = infoOf("text<b>1</b>text<b>2</b>");
    EXPECT_EQ(around["b"].getValue(), "2");
}

TEST(Info, GivesNoElementItsUsualMeaning)
{
    auto const transform = transformOf(inRoot("<Info><Matrix inBitDepth='nonsense'><Array dim='9'>bad numbers here</Array></Matrix>"
                                              "<IndexMap/><ProcessList/><Info><Description>d</Description></Info></Info>" +
                                              kIdentityRange));
    Metadata const& info = transform->getInfo();
    EXPECT_EQ(transform->getOps().size(), 1U);
    EXPECT_THAT(transform->getDescriptions().getList(), testing::IsEmpty());
    EXPECT_THAT(info.getItemsNames(), ElementsAre("Matrix", "IndexMap", "ProcessList", "Info"));
    EXPECT_EQ(info["Matrix"]["Array"].getValue(), "bad numbers here");
    EXPECT_EQ(info["Info"]["Description"].getValue(), "d");
}

TEST(Info, OfASecondElementReplacesTheFirst)
{
    auto const transform = transformOf(inRoot("<Info><a>1</a></Info><Info><b>2</b></Info>" + kIdentityRange));
    EXPECT_THAT(transform->getInfo().getItemsNames(), ElementsAre("b"));
}

TEST(Info, IsTheTransformsOnly)
{
    auto const transform = transformOf(inRoot("<Range inBitDepth='8i' outBitDepth='8i'><Info><a>1</a></Info></Range>"));
    EXPECT_TRUE(transform->getInfo().isEmpty());
}

TEST(Info, MayBeDeep)
{
    std::string open;
    std::string close;
    for (int i = 0; i < 200; ++i)
    {
        open += "<a>";
        close += "</a>";
    }
    Metadata const info = infoOf(open + "deep" + close);
    Metadata const* node = &info;
    for (int i = 0; i < 200; ++i)
        node = &(*node)["a"];
    EXPECT_EQ(node->getValue(), "deep");
}
