// The outcome of a call: code, message, copies.
#include <tavrin/tavrin.h>

#include <gtest/gtest.h>

#include <string>
#include <type_traits>

namespace
{

using Tavrin::TavStatus;

TavStatus failed(Tavrin::ErrorId code, char const* message)
{
    TavStatus status;
    status.setErrorCode(code);
    status.setErrorMessage(message);
    return status;
}

TEST(TavStatus, IsGoodByDefault)
{
    TavStatus const status;
    EXPECT_EQ(status.getErrorCode(), 0U);
    EXPECT_EQ(status.getErrorMessage(), nullptr);
    EXPECT_TRUE(status);
}

TEST(TavStatus, IsFalseWithACode)
{
    TavStatus const status = failed(0x110002, "Out of memory");
    EXPECT_FALSE(status);
    EXPECT_EQ(status.getErrorCode(), 0x110002U);
    EXPECT_STREQ(status.getErrorMessage(), "Out of memory");
}

TEST(TavStatus, GoesByItsCodeAlone)
{
    EXPECT_TRUE(failed(0, "words without a failure"));
    EXPECT_FALSE(failed(1, nullptr));
}

TEST(TavStatus, KeepsACopyOfTheText)
{
    std::string text = "first";
    TavStatus status;
    status.setErrorMessage(text.c_str());
    text = "other";
    EXPECT_STREQ(status.getErrorMessage(), "first");
}

TEST(TavStatus, HasNoMessageForAnEmptyText)
{
    TavStatus status;
    status.setErrorMessage("");
    EXPECT_EQ(status.getErrorMessage(), nullptr);
    EXPECT_TRUE(status);

    status.setErrorMessage("text");
    status.setErrorMessage("");
    EXPECT_EQ(status.getErrorMessage(), nullptr);
    status.setErrorMessage("text");
    status.setErrorMessage(nullptr);
    EXPECT_EQ(status.getErrorMessage(), nullptr);
}

TEST(TavStatus, TakesAPartOfItsOwnMessage)
{
    TavStatus status = failed(1, "a long message");
    status.setErrorMessage(status.getErrorMessage() + 7);
    EXPECT_STREQ(status.getErrorMessage(), "message");
}

TEST(TavStatus, CopiesDeeply)
{
    TavStatus original = failed(7, "text");
    TavStatus const copy(original);
    TavStatus assigned = failed(8, "another");
    assigned = original;
    EXPECT_NE(copy.getErrorMessage(), original.getErrorMessage());
    EXPECT_NE(assigned.getErrorMessage(), original.getErrorMessage());

    original.setErrorCode(9);
    original.setErrorMessage("changed");
    for (TavStatus const* const status : {&copy, static_cast<TavStatus const*>(&assigned)})
    {
        EXPECT_EQ(status->getErrorCode(), 7U);
        EXPECT_STREQ(status->getErrorMessage(), "text");
    }
}

TEST(TavStatus, CopiesTheAbsenceOfAMessage)
{
    TavStatus status = failed(7, "text");
    status = TavStatus();
    EXPECT_TRUE(status);
    EXPECT_EQ(status.getErrorMessage(), nullptr);
}

TEST(TavStatus, KeepsItsMessageWhenAssignedToItself)
{
    TavStatus status = failed(7, "text");
    TavStatus const& same = status;
    status = same;
    EXPECT_EQ(status.getErrorCode(), 7U);
    EXPECT_STREQ(status.getErrorMessage(), "text");
}

TEST(TavStatus, HasAVirtualDestructor)
{
    EXPECT_TRUE(std::has_virtual_destructor<TavStatus>::value);
}

} // namespace
