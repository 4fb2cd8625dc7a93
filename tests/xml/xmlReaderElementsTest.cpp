// The objects that stand for open elements, and their stack.
#include "xml/xmlReaderElements.h"

#include "support/failure.h"
#include "xml/elements.h"
#include "xml/logLines.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

using namespace Color::Xml::Reader;
using testing::ElementsAre;
using XmlTest::Box;
using XmlTest::textsOf;

namespace
{

class NotedBox : public Box
{
public:
    NotedBox(std::string const& name, std::vector<std::string>& deleted) : Box(name, 1, "f"), m_deleted(deleted) {}
    ~NotedBox() override { m_deleted.push_back(getName()); }

private:
    std::vector<std::string>& m_deleted;
};

} // namespace

TEST(ElementStack, OwnsElementsAndGivesThemUpWhenPopped)
{
    std::vector<std::string> deleted;
    ElementStack stack;
    EXPECT_EQ(stack.back(), nullptr);
    EXPECT_EQ(stack.front(), nullptr);
    stack.push_back(std::make_unique<NotedBox>("a", deleted));
    stack.push_back(std::make_unique<NotedBox>("b", deleted));
    EXPECT_EQ(stack.size(), 2U);
    EXPECT_EQ(stack.front()->getName(), "a");
    EXPECT_EQ(stack.back()->getName(), "b");

    std::unique_ptr<Element> const popped = stack.pop_back();
    EXPECT_EQ(popped->getName(), "b");
    EXPECT_EQ(stack.size(), 1U);
    EXPECT_TRUE(deleted.empty());
}

TEST(ElementStack, IsClearedFromTheTop)
{
    std::vector<std::string> deleted;
    ElementStack stack;
    for (char const* name : {"a", "b", "c"})
        stack.push_back(std::make_unique<NotedBox>(name, deleted));
    stack.clear();
    EXPECT_TRUE(stack.empty());
    EXPECT_THAT(deleted, ElementsAre("c", "b", "a"));
}

TEST(ElementStack, TellsItsElements)
{
    ElementStack stack;
    stack.push_back(std::make_unique<Box>("a", 3, "f"));
    stack.push_back(std::make_unique<DummyElt>("b", stack.back(), 4, "f", nullptr));
    EXPECT_EQ(stack.dump(), "XML stack is [a=a at line=3] [b=b at line=4] ");
}

TEST(Containers, RefuseTextAndTellItsLine)
{
    Box box("box", 3, "f.ctf");
    EXPECT_EQ(failureOf([&] { box.setRawData("text", 5); }),
              (Failure{0x420005, "XML Parsing error: Attribute end 'text' illegal line 5: f.ctf"}));
}

TEST(Containers, AreOfTheNewestVersionIfTheyDoNotKnowBetter)
{
    EXPECT_EQ(Box("box", 3, "f.ctf").getVersion(), 1.5F);
}

TEST(Dummies, LogWhatIsPassedOverAndWhy)
{
    LogCapture const log;
    Box const parent("parent", 3, "f.ctf");
    DummyElt const dummy("child", &parent, 5, "f.ctf", ": Unknown element");
    EXPECT_THAT(textsOf(log),
                ElementsAre("Ignore element 'child' (line 5) where its parent is 'parent' (line 3) : Unknown element: f.ctf"));
}

TEST(Dummies, NeedNeitherParentNorReason)
{
    LogCapture const log;
    DummyElt const dummy("root", nullptr, 1, "", nullptr);
    EXPECT_THAT(textsOf(log), ElementsAre("Ignore element 'root' (line 1) where its parent is '' (line 0) : "));
}

// The real parent may be gone first.
TEST(Dummies, HaveAParentOfTheirOwn)
{
    auto parent = std::make_unique<Box>("parent", 3, "f.ctf");
    DummyElt const dummy("child", parent.get(), 5, "f.ctf", nullptr);
    EXPECT_TRUE(dummy.isDummy());
    EXPECT_FALSE(dummy.isContainer());
    EXPECT_NE(dummy.getParent(), parent.get());
    parent.reset();
    EXPECT_EQ(dummy.getParent()->getName(), "parent");
    EXPECT_EQ(dummy.getParent()->getXmlLocation(), 3U);
    EXPECT_EQ(dummy.getParent()->getXmlFile(), "f.ctf");
    EXPECT_EQ(dummy.getParent()->getIdentifier(), "Unknown");
}
