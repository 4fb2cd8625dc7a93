// The values of a table-like operator.
#include "transform/array.h"
#include "support/failure.h"

#include <gmock/gmock.h>

#include <limits>

using namespace Color;
using testing::ElementsAre;

namespace
{

// As many values as rows times components.
class TableArray : public Array
{
public:
    TableArray(unsigned int dimension, unsigned int components) { resize(dimension, components); }
    unsigned int getNumValues() const override { return getDimension() * getNumColorComponents(); }
};

TEST(Array, GrowthFillsWithZerosAndShrinkingCutsTheTail)
{
    TableArray array(2, 1);
    array.set(0, 1.0F);
    array.set(1, 2.0F);
    array.setDimension(3);
    EXPECT_THAT(array.getValues(), ElementsAre(1.0F, 2.0F, 0.0F));
    array.setNumColorComponents(2);
    EXPECT_THAT(array.getValues(), ElementsAre(1.0F, 2.0F, 0.0F, 0.0F, 0.0F, 0.0F));
    array.resize(1, 1);
    EXPECT_THAT(array.getValues(), ElementsAre(1.0F));
    EXPECT_EQ(array.getDimension(), 1U);
    EXPECT_EQ(array.getNumColorComponents(), 1U);
}

// Values of a wrong number, put there past the array, stay until something really changes.
TEST(Array, SettingTheSameSizeTouchesNothing)
{
    TableArray array(2, 3);
    array.getValues().push_back(7.0F);
    array.setDimension(2);
    array.setNumColorComponents(3);
    EXPECT_EQ(array.getValues().size(), 7U);
    array.resize(2, 3);
    EXPECT_EQ(array.getValues().size(), 6U);
}

TEST(Array, HasRoomForThreeColours)
{
    EXPECT_EQ(TableArray(2, 1).getMaxColorComponents(), 3U);
}

TEST(Array, WithoutRowsIsInvalid)
{
    TableArray array(0, 3);
    EXPECT_EQ(failureOf([&] { array.validate(); }), (Failure{0x210004, "Array content empty"}));
}

TEST(Array, WithAWrongNumberOfValuesIsInvalid)
{
    TableArray array(2, 3);
    EXPECT_EQ(failureOf([&] { array.validate(); }), Failure());
    array.getValues().pop_back();
    EXPECT_EQ(failureOf([&] { array.validate(); }), (Failure{0x210005, "Array content illegal"}));
}

TEST(Array, EqualityLooksAtDimensionAndValuesOnly)
{
    TableArray const six(2, 3);
    EXPECT_TRUE(six == TableArray(2, 3));
    EXPECT_FALSE(six == TableArray(3, 2));
    EXPECT_FALSE(six == TableArray(2, 2));

    TableArray otherComponents(2, 4);
    otherComponents.getValues().resize(6);
    EXPECT_TRUE(six == otherComponents);

    TableArray otherValue(2, 3);
    otherValue.set(5, 1.0F);
    EXPECT_FALSE(six == otherValue);
}

TEST(Array, ComparesValuesAsNumbers)
{
    TableArray zero(1, 1);
    TableArray negativeZero(1, 1);
    negativeZero.set(0, -0.0F);
    EXPECT_TRUE(zero == negativeZero);

    TableArray nan(1, 1);
    nan.set(0, std::numeric_limits<float>::quiet_NaN());
    EXPECT_FALSE(nan == nan);
}

} // namespace
