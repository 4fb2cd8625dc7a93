// Dynamic properties: what may change, what is shared, and what is refused.
#include "utils/dynamicPropertyImp.h"

#include "utils/errorMessage.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <thread>

namespace
{

using Color::BypassDynamicProperty;
using Color::ContrastDynamicProperty;
using Color::DynamicProperty;
using Color::Exception;
using Color::ExposureDynamicProperty;
using testing::AllOf;
using testing::Property;

auto failsWith(Color::ErrorId id, char const* message)
{
    return testing::Throws<Exception>(AllOf(Property(&Exception::getId, id), Property(&Exception::getMessage, message)));
}

TEST(DynamicPropertyIds, AreValidBelowThree)
{
    for (unsigned int id = 0; id < 3; ++id)
    {
        EXPECT_TRUE(Color::isValidId(static_cast<DynamicProperty::Ids>(id)));
    }
    EXPECT_FALSE(Color::isValidId(static_cast<DynamicProperty::Ids>(3)));
    EXPECT_FALSE(Color::isValidId(static_cast<DynamicProperty::Ids>(0xffffffffU)));
}

TEST(BaseDynamicProperty, RefusesAnIdWithoutAName)
{
    EXPECT_NO_THROW(ExposureDynamicProperty(0.0, true).validate());
    EXPECT_NO_THROW(ContrastDynamicProperty(1.0, true).validate());
    EXPECT_NO_THROW(BypassDynamicProperty(false, true).validate());
    EXPECT_THAT([] { Color::DynamicPropertyDouble(static_cast<DynamicProperty::Ids>(3), 0.0).validate(); },
                failsWith(0x130001, "Invalid identifier"));
}

TEST(NamedDynamicProperty, KnowsItsNameAndId)
{
    EXPECT_STREQ(ExposureDynamicProperty::getName(), "Exposure");
    EXPECT_STREQ(ContrastDynamicProperty::getName(), "Contrast");
    EXPECT_STREQ(BypassDynamicProperty::getName(), "Bypass");
    EXPECT_STREQ(BypassDynamicProperty(true, false).getPropertyName(), "Bypass");
    EXPECT_EQ(ExposureDynamicProperty(0.0, false).getIdentifier(), 0U);
    EXPECT_EQ(ContrastDynamicProperty(0.0, false).getIdentifier(), 1U);
    EXPECT_EQ(BypassDynamicProperty(false, false).getIdentifier(), 2U);
}

TEST(NamedDynamicProperty, TellsItsValueAsANumber)
{
    EXPECT_EQ(ExposureDynamicProperty(-1.5, false).getValueString(), "-1.5");
    EXPECT_EQ(ContrastDynamicProperty(1.0 / 3.0, false).getValueString(), "0.333333");
    EXPECT_EQ(BypassDynamicProperty(true, false).getValueString(), "1");
    EXPECT_EQ(BypassDynamicProperty(false, false).getValueString(), "0");
}

TEST(DynamicPropertyImp, TakesAndGivesTheValueOfItsId)
{
    ExposureDynamicProperty exposure(0.0, true);
    exposure.setContent(DynamicProperty(DynamicProperty::EXPOSURE, 2.25));
    EXPECT_EQ(exposure.getValue(), 2.25);
    EXPECT_EQ(*exposure.getAddress(), 2.25);

    DynamicProperty property(DynamicProperty::CONTRAST, 9.0);
    exposure.getContent(property);
    EXPECT_EQ(property.id, DynamicProperty::EXPOSURE);
    EXPECT_EQ(static_cast<double>(property.value), 2.25);
}

TEST(DynamicPropertyImp, TakesASwitchAsBoolOrNumber)
{
    BypassDynamicProperty bypass(false, true);
    bypass.setContent(DynamicProperty(DynamicProperty::BYPASS, true));
    EXPECT_TRUE(bypass.getValue());
    bypass.setContent(DynamicProperty(DynamicProperty::BYPASS, 0.0));
    EXPECT_FALSE(bypass.getValue());
    bypass.setContent(DynamicProperty(DynamicProperty::BYPASS, 0.25));
    EXPECT_TRUE(bypass.getValue());

    DynamicProperty property;
    bypass.getContent(property);
    EXPECT_EQ(property.id, DynamicProperty::BYPASS);
    EXPECT_TRUE(static_cast<bool>(property.value));
}

TEST(DynamicPropertyImp, RefusesToChangeWhenItIsNotDynamic)
{
    ExposureDynamicProperty exposure(1.0, false);
    EXPECT_THAT([&] { exposure.setContent(DynamicProperty(DynamicProperty::EXPOSURE, 2.0)); },
                failsWith(0x130002, "Invalid property: Exposure"));
    EXPECT_EQ(exposure.getValue(), 1.0);

    exposure.setDynamic(true);
    exposure.setContent(DynamicProperty(DynamicProperty::EXPOSURE, 2.0));
    EXPECT_EQ(exposure.getValue(), 2.0);
}

TEST(DynamicPropertyImp, RefusesAPropertyOfAnotherId)
{
    ExposureDynamicProperty exposure(1.0, true);
    EXPECT_THAT([&] { exposure.setContent(DynamicProperty(DynamicProperty::CONTRAST, 2.0)); },
                failsWith(0x130002, "Invalid property: Contrast"));
    EXPECT_EQ(exposure.getValue(), 1.0);
}

TEST(DynamicPropertyImp, EqualsByValueAndFlag)
{
    EXPECT_TRUE(ContrastDynamicProperty(1.0, true) == ContrastDynamicProperty(1.0, true));
    EXPECT_FALSE(ContrastDynamicProperty(1.0, true) == ContrastDynamicProperty(1.0, false));
    EXPECT_FALSE(ContrastDynamicProperty(1.0, true) == ContrastDynamicProperty(2.0, true));
}

TEST(DynamicPropertyImp, IsUnequalToAPropertyOfAnotherId)
{
    Color::DynamicPropertyImp<Color::DynamicPropertyDouble> const& exposure = ExposureDynamicProperty(1.0, true);
    EXPECT_FALSE(exposure == ContrastDynamicProperty(1.0, true));
}

TEST(ShareOrCopy, SharesADynamicPropertyAndCopiesAStaticOne)
{
    auto const dynamic = std::make_shared<ExposureDynamicProperty>(1.0, true);
    EXPECT_EQ(Color::shareOrCopy(dynamic), dynamic);

    auto const fixed = std::make_shared<ExposureDynamicProperty>(1.0, false);
    auto const copy = Color::shareOrCopy(fixed);
    EXPECT_NE(copy, fixed);
    EXPECT_TRUE(*copy == *fixed);
    copy->setValue(3.0);
    EXPECT_EQ(fixed->getValue(), 1.0);
}

TEST(SameProperty, HoldsForOneObjectOrEqualContents)
{
    auto const one = std::make_shared<BypassDynamicProperty>(true, true);
    EXPECT_TRUE(Color::sameProperty(one, one));
    EXPECT_TRUE(Color::sameProperty(one, std::make_shared<BypassDynamicProperty>(true, true)));
    EXPECT_FALSE(Color::sameProperty(one, std::make_shared<BypassDynamicProperty>(false, true)));
}

// A race would be seen under ThreadSanitizer; without it the reader must still see whole values only.
TEST(DynamicPropertyValue, MayBeSetWhileAnotherThreadReads)
{
    constexpr int kRounds = 10000;
    ExposureDynamicProperty exposure(1.0, true);
    std::thread writer(
        [&exposure]
        {
            for (int i = 0; i < kRounds; ++i)
            {
                exposure.setValue(i % 2 ? 1.0 : -1e300);
            }
        });
    for (int i = 0; i < kRounds; ++i)
    {
        double const value = exposure.getValue();
        EXPECT_TRUE(value == 1.0 || value == -1e300) << value;
    }
    writer.join();
}

} // namespace
