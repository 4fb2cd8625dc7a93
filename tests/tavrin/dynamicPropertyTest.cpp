// The public record of a dynamic property.
#include <tavrin/tavrin.h>

#include <gtest/gtest.h>

namespace
{

using Tavrin::DynamicProperty;

TEST(DynamicProperty, IsExposureZeroByDefault)
{
    DynamicProperty const property;
    EXPECT_EQ(property.id, DynamicProperty::EXPOSURE);
    EXPECT_EQ(static_cast<double>(property.value), 0.0);
}

TEST(DynamicProperty, HasNamesForItsIds)
{
    EXPECT_EQ(DynamicProperty::EXPOSURE, 0U);
    EXPECT_EQ(DynamicProperty::CONTRAST, 1U);
    EXPECT_EQ(DynamicProperty::BYPASS, 2U);
    EXPECT_STREQ(DynamicProperty::getName(DynamicProperty::EXPOSURE), "Exposure");
    EXPECT_STREQ(DynamicProperty::getName(DynamicProperty::CONTRAST), "Contrast");
    EXPECT_STREQ(DynamicProperty::getName(DynamicProperty::BYPASS), "Bypass");
    EXPECT_STREQ(DynamicProperty::getName(static_cast<DynamicProperty::Ids>(3)), "invalid property");
    EXPECT_STREQ(DynamicProperty::getName(static_cast<DynamicProperty::Ids>(0xffffffffU)), "invalid property");
}

TEST(DynamicPropertyValue, ReadsABoolAsANumberAndANumberAsABool)
{
    EXPECT_EQ(static_cast<double>(DynamicProperty::Value(true)), 1.0);
    EXPECT_EQ(static_cast<double>(DynamicProperty::Value(false)), 0.0);
    EXPECT_TRUE(static_cast<bool>(DynamicProperty::Value(-0.5)));
    EXPECT_FALSE(static_cast<bool>(DynamicProperty::Value(0.0)));
    EXPECT_EQ(static_cast<double>(DynamicProperty::Value(2)), 2.0);
    EXPECT_EQ(static_cast<double>(DynamicProperty::Value(0.25F)), 0.25);
}

TEST(DynamicPropertyValue, TakesAnAssignedNumberOrBool)
{
    DynamicProperty property(DynamicProperty::BYPASS, false);
    property.value = true;
    EXPECT_TRUE(static_cast<bool>(property.value));
    property.value = 1.5;
    double const number = property.value;
    EXPECT_EQ(number, 1.5);
}

} // namespace
