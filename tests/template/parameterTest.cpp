// A template's menu: what may be selected, and what is said of what may not.
#include "template/parameter.h"
#include "support/failure.h"

#include <gtest/gtest.h>

using TemplateNS::Parameter;

namespace
{

Parameter menu()
{
    Parameter parameter("menu");
    for (char const* const value : {"b", "a", "b"})
        parameter.appendValue(value);
    return parameter;
}

TEST(Parameter, HasNoValuesAtFirst)
{
    Parameter parameter("menu");
    EXPECT_EQ(parameter.getName(), "menu");
    EXPECT_EQ(parameter.getNumValues(), 0U);
    EXPECT_EQ(failureOf([&] { parameter.select(0U); }), (Failure{0x1010002, "menu menu selection no longer available: 0"}));
}

TEST(Parameter, TakesNullForAnEmptyName)
{
    EXPECT_EQ(Parameter(nullptr).getName(), "");
}

TEST(Parameter, KeepsValuesInTheirOrder)
{
    Parameter const parameter = menu();
    ASSERT_EQ(parameter.getNumValues(), 3U);
    EXPECT_EQ(parameter.getValue(0), "b");
    EXPECT_EQ(parameter.getValue(1), "a");
    EXPECT_EQ(failureOf([&] { parameter.getValue(3); }), (Failure{0x1010002, "menu menu selection no longer available: 3"}));
}

TEST(Parameter, RefusesEmptyValues)
{
    Parameter parameter("menu");
    Failure const refused{0x1010006, "Illegal template parameter value."};
    EXPECT_EQ(failureOf([&] { parameter.appendValue(nullptr); }), refused);
    EXPECT_EQ(failureOf([&] { parameter.appendValue(""); }), refused);
    EXPECT_EQ(parameter.getNumValues(), 0U);
}

TEST(Parameter, SelectsByIndexAndByTheFirstEqualValue)
{
    Parameter parameter = menu();
    parameter.select(2U);
    EXPECT_EQ(parameter.getSelectedIndex(), 2);
    parameter.select("b");
    EXPECT_EQ(parameter.getSelectedIndex(), 0);
    parameter.select("a");
    EXPECT_EQ(parameter.getSelectedValue(), "a");
}

TEST(Parameter, KeepsItsSelectionWhenASelectionFails)
{
    Parameter parameter = menu();
    parameter.select("a");
    EXPECT_EQ(failureOf([&] { parameter.select(3U); }), (Failure{0x1010002, "menu menu selection no longer available: 3"}));
    EXPECT_EQ(failureOf([&] { parameter.select("A"); }), (Failure{0x1010003, "menu menu selection no longer available: A"}));
    EXPECT_EQ(failureOf([&] { parameter.select(""); }), (Failure{0x1010003, "menu menu selection no longer available: "}));
    char const* const null = nullptr;
    EXPECT_EQ(failureOf([&] { parameter.select(null); }), (Failure{0x1010003, "menu menu selection no longer available: "}));
    EXPECT_EQ(parameter.getSelectedValue(), "a");
}

TEST(Parameter, WithoutASelectionHasNoSelectedValue)
{
    Parameter parameter = menu();
    Failure const nothing{0x1010002, "menu menu selection no longer available: -1"};
    EXPECT_EQ(parameter.getSelectedIndex(), -1);
    EXPECT_EQ(failureOf([&] { parameter.getSelectedValue(); }), nothing);
    parameter.select(1U);
    parameter.deselect();
    EXPECT_EQ(parameter.getSelectedIndex(), -1);
    EXPECT_EQ(failureOf([&] { parameter.getSelectedValue(); }), nothing);
}

} // namespace
