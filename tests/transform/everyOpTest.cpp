// What all operators promise, walked along their list.
#include "support/failure.h"
#include "transform/opList.h"
#include "transform/ops.h"
#include "transform/testOps.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

using namespace Color;
using namespace Tavrin;

namespace
{

// An operator as it is made without arguments; those that need some, or that would do nothing, are made below.
template <class AnyOp>
std::unique_ptr<Op> sampleOf()
{
    return std::make_unique<AnyOp>();
}

template <>
std::unique_ptr<Op> sampleOf<MatrixOp>()
{
    auto op = std::make_unique<MatrixOp>();
    op->setArrayValue(1, 0.5F);
    op->setOffsetValue(2, 0.25F);
    return op;
}

template <>
std::unique_ptr<Op> sampleOf<RangeOp>()
{
    return std::make_unique<RangeOp>(BIT_DEPTH_32f, BIT_DEPTH_32f, 0.25, 0.75, 0.0, 1.0);
}

template <>
std::unique_ptr<Op> sampleOf<Lut1DOp>()
{
    return std::make_unique<Lut1DOp>(4U);
}

template <>
std::unique_ptr<Op> sampleOf<InvLut1DOp>()
{
    return std::make_unique<InvLut1DOp>(Lut1DOp(4U));
}

template <>
std::unique_ptr<Op> sampleOf<Lut3DOp>()
{
    return std::make_unique<Lut3DOp>(2U);
}

template <>
std::unique_ptr<Op> sampleOf<ReferenceOp>()
{
    OpList ops;
    ops.append(sampleOf<RangeOp>().release());
    return resolvedReference("alias", ops);
}

template <>
std::unique_ptr<Op> sampleOf<GammaOp>()
{
    auto op = std::make_unique<GammaOp>();
    op->setParams({2.0});
    return op;
}

template <>
std::unique_ptr<Op> sampleOf<DitherOp>()
{
    return std::make_unique<DitherOp>(BIT_DEPTH_32f, BIT_DEPTH_32f, BIT_DEPTH_8i);
}

template <>
std::unique_ptr<Op> sampleOf<HueVectorOp>()
{
    auto op = std::make_unique<HueVectorOp>();
    op->setParams({120.0, 60.0, 1.5}); // centre and width in degrees, amount
    return op;
}

struct Sample
{
    char const* typeName;
    Op::OpType type;
    std::unique_ptr<Op> op;
};

std::vector<Sample> samples()
{
    std::vector<Sample> all;
#define TAVRIN_OP(number, Class, name, Family) all.push_back({name, Op::OpType::Class, sampleOf<Class>()});
#include "transform/opTypes.def"
#undef TAVRIN_OP
    return all;
}

BitDepth const kDepths[] = {BIT_DEPTH_8i, BIT_DEPTH_10i, BIT_DEPTH_12i, BIT_DEPTH_16i, BIT_DEPTH_16f, BIT_DEPTH_32f};

TEST(EveryOp, HasTheTypeAndNameOfTheList)
{
    for (Sample const& sample : samples())
    {
        EXPECT_EQ(sample.op->getOpType(), sample.type) << sample.typeName;
        EXPECT_EQ(sample.op->getOpTypeName(), sample.typeName);
        EXPECT_EQ(&sample.op->getOpTypeName(), &getOpTypeName(sample.type)) << sample.typeName;
    }
}

TEST(EveryOp, ClonesToAnEqualOneOfItsOwn)
{
    for (Sample const& sample : samples())
    {
        SCOPED_TRACE(sample.typeName);
        sample.op->setId("id");
        sample.op->setName("name");
        sample.op->getDescriptions() += "text";
        std::unique_ptr<Op> const copy(sample.op->clone());
        EXPECT_EQ(copy->getOpType(), sample.type);
        EXPECT_TRUE(*copy == *sample.op);
        EXPECT_TRUE(*sample.op == *copy);
        EXPECT_TRUE(*sample.op == *sample.op);
        copy->setName("other");
        EXPECT_EQ(sample.op->getName(), "name");
        EXPECT_FALSE(*copy == *sample.op);
    }
}

TEST(EveryOp, IsValidAtEveryPairOfDepths)
{
    for (BitDepth const in : kDepths)
    {
        for (BitDepth const out : kDepths)
        {
            for (Sample const& sample : samples())
            {
                SCOPED_TRACE(std::string(sample.typeName) + " " + getBitDepthName(in) + " " + getBitDepthName(out));
                sample.op->setInputBitDepth(in);
                sample.op->setOutputBitDepth(out);
                EXPECT_EQ(sample.op->getInputBitDepth(), in);
                EXPECT_EQ(sample.op->getOutputBitDepth(), out);
                EXPECT_EQ(failureOf([&] { sample.op->validate(); }), Failure());
            }
        }
    }
}

TEST(EveryOp, IsInvalidWithoutADepth)
{
    for (Sample const& sample : samples())
    {
        SCOPED_TRACE(sample.typeName);
        sample.op->setName("x");
        sample.op->Op::setOutputBitDepth(BIT_DEPTH_UNKNOWN);
        EXPECT_EQ(failureOf([&] { sample.op->validate(); }), (Failure{0x210001, "'OutBitDepth' attribute missing in x"}));
        sample.op->Op::setInputBitDepth(BIT_DEPTH_UNKNOWN);
        EXPECT_EQ(failureOf([&] { sample.op->validate(); }), (Failure{0x210001, "'InBitDepth' attribute missing in x"}));
    }
}

TEST(EveryOp, SharesADynamicBypassWithItsClonesOnly)
{
    for (Sample const& sample : samples())
    {
        SCOPED_TRACE(sample.typeName);
        sample.op->setBypass(bypass(true, false));
        std::unique_ptr<Op> const apart(sample.op->clone());
        EXPECT_NE(apart->getBypass(), sample.op->getBypass());
        EXPECT_TRUE(apart->getBypass()->getValue());

        sample.op->setBypass(bypass(false, true));
        std::unique_ptr<Op> const coupled(sample.op->clone());
        EXPECT_EQ(coupled->getBypass(), sample.op->getBypass());
    }
}

// A reference answers for the operators that it stands for instead.
TEST(EveryOp, AnswersForItsDynamicBypass)
{
    for (Sample const& sample : samples())
    {
        if (sample.type == Op::OpType::ReferenceOp)
            continue;
        SCOPED_TRACE(sample.typeName);
        sample.op->setBypass(bypass(false, true));
        EXPECT_TRUE(sample.op->isDynamic());
        EXPECT_TRUE(sample.op->hasDynamicProperty(DynamicProperty::BYPASS));
        sample.op->setDynamicProperty(DynamicProperty(DynamicProperty::BYPASS, true));
        DynamicProperty property(DynamicProperty::BYPASS, false);
        sample.op->getDynamicProperty(property);
        EXPECT_TRUE(bool(property.value));
    }
}

TEST(EveryOp, StartsWithoutDynamicProperties)
{
    for (Sample const& sample : samples())
    {
        SCOPED_TRACE(sample.typeName);
        EXPECT_FALSE(sample.op->isDynamic());
        for (unsigned int id = 0; id < 4; ++id)
        {
            DynamicProperty property(static_cast<DynamicProperty::Ids>(id), 1.0);
            EXPECT_FALSE(sample.op->hasDynamicProperty(property.id)) << id;
            EXPECT_EQ(failureOf([&] { sample.op->setDynamicProperty(property); }).id, 0x210013U) << id;
            EXPECT_EQ(failureOf([&] { sample.op->getDynamicProperty(property); }).id, 0x210013U) << id;
        }
    }
}

} // namespace
