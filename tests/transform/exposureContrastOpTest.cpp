// The model of exposure and contrast: properties that clones share, and properties that they do not.
#include "transform/exposureContrastOp.h"

#include "support/failure.h"
#include "transform/opList.h"

#include <gtest/gtest.h>

#include <memory>

namespace
{

using Color::DynamicProperty;
using Color::ExposureContrastOp;
using Style = ExposureContrastOp::Style;

std::unique_ptr<ExposureContrastOp> cloneOf(ExposureContrastOp const& op)
{
    return std::unique_ptr<ExposureContrastOp>(dynamic_cast<ExposureContrastOp*>(op.clone()));
}

} // namespace

TEST(ExposureContrastOp, IsAVideoAtRestByDefault)
{
    ExposureContrastOp const op;
    EXPECT_EQ(static_cast<unsigned int>(op.getOpType()), 7U);
    EXPECT_EQ(op.getOpTypeName(), "Exposure/Contrast");
    EXPECT_EQ(op.getStyle(), Style::Video);
    EXPECT_EQ(op.getExposure()->getValue(), 0.0);
    EXPECT_EQ(op.getContrast()->getValue(), 1.0);
    EXPECT_EQ(op.getPivot(), 0.18);
    EXPECT_EQ(op.getPivotString(), "0.18");
    EXPECT_FALSE(op.isDynamic());
    EXPECT_TRUE(op.isIdentity());
    EXPECT_EQ(op.getMinimumVersion(), 1.3F);
    EXPECT_NO_THROW(op.validate());
}

TEST(ExposureContrastOp, KnowsItsStylesByNameInAnyCase)
{
    EXPECT_EQ(ExposureContrastOp::getECStyle("video"), Style::Video);
    EXPECT_EQ(ExposureContrastOp::getECStyle("LOG"), Style::Log);
    EXPECT_EQ(ExposureContrastOp::getECStyle("Linear"), Style::Linear);
    EXPECT_STREQ(ExposureContrastOp::getStyleName(Style::Linear), "linear");
    EXPECT_STREQ(ExposureContrastOp::getStyleName(static_cast<Style>(3)), "");
    EXPECT_EQ(failureOf([] { ExposureContrastOp::getECStyle("film"); }), (Failure{0x2a0001, "Unrecognized E/C style: film"}));
    EXPECT_EQ(failureOf([] { ExposureContrastOp::getECStyle(""); }).id, 0x2a0001U);
    EXPECT_EQ(failureOf([] { ExposureContrastOp::getECStyle(nullptr); }).id, 0x2a0001U);
}

TEST(ExposureContrastOp, AtRestIsNothingEvenBetweenDepths)
{
    ExposureContrastOp op(Tavrin::BIT_DEPTH_8i, Tavrin::BIT_DEPTH_10i, Style::Log);
    EXPECT_TRUE(op.isNoop());
    op.getContrast()->setValue(1.1);
    EXPECT_FALSE(op.isNoop());
    op.getContrast()->setValue(1.0);
    op.getExposure()->setValue(0.1);
    EXPECT_FALSE(op.isIdentity());
}

TEST(ExposureContrastOp, IsBothDynamicAndNothingAtRest)
{
    ExposureContrastOp op;
    op.getExposure()->setDynamic(true);
    EXPECT_TRUE(op.isDynamic());
    EXPECT_TRUE(op.isNoop());
}

TEST(ExposureContrastOp, HasTheDynamicPropertiesThatAreDynamic)
{
    ExposureContrastOp op;
    op.setId("ec");
    op.getContrast()->setDynamic(true);
    EXPECT_FALSE(op.hasDynamicProperty(DynamicProperty::EXPOSURE));
    EXPECT_TRUE(op.hasDynamicProperty(DynamicProperty::CONTRAST));
    EXPECT_FALSE(op.hasDynamicProperty(DynamicProperty::BYPASS));
    EXPECT_EQ(failureOf(
                  [&] {
                      op.setDynamicProperty({DynamicProperty::EXPOSURE, 1.0});
                  }),
              (Failure{0x210013, "Dynamic property Exposure not available in ec"}));
    DynamicProperty property(DynamicProperty::BYPASS, false);
    EXPECT_EQ(failureOf([&] { op.getDynamicProperty(property); }).id, 0x210013U);
    op.getBypass()->setDynamic(true);
    EXPECT_TRUE(op.hasDynamicProperty(DynamicProperty::BYPASS));
}

TEST(ExposureContrastOp, StoresAndTellsDynamicValues)
{
    ExposureContrastOp op;
    op.getExposure()->setDynamic(true);
    op.getContrast()->setDynamic(true);
    op.getBypass()->setDynamic(true);
    op.setDynamicProperty({DynamicProperty::EXPOSURE, 1.5});
    op.setDynamicProperty({DynamicProperty::CONTRAST, 0.75});
    op.setDynamicProperty({DynamicProperty::BYPASS, true});
    EXPECT_EQ(op.getExposure()->getValue(), 1.5);
    EXPECT_EQ(op.getContrast()->getValue(), 0.75);
    EXPECT_TRUE(op.getBypass()->getValue());
    DynamicProperty property(DynamicProperty::CONTRAST, 0.0);
    op.getDynamicProperty(property);
    EXPECT_EQ(static_cast<double>(property.value), 0.75);
    property.id = DynamicProperty::EXPOSURE;
    op.getDynamicProperty(property);
    EXPECT_EQ(static_cast<double>(property.value), 1.5);
}

TEST(ExposureContrastOp, AStaticPropertyRefusesToChange)
{
    ExposureContrastOp const op;
    EXPECT_EQ(failureOf(
                  [&] {
                      op.getExposure()->setContent({DynamicProperty::EXPOSURE, 1.0});
                  }),
              (Failure{0x130002, "Invalid property: Exposure"}));
}

TEST(ExposureContrastOp, ClonesShareDynamicPropertiesAndOwnStaticOnes)
{
    ExposureContrastOp op(Tavrin::BIT_DEPTH_32f, Tavrin::BIT_DEPTH_32f, Style::Linear);
    op.setPivot(0.25);
    op.getExposure()->setDynamic(true);
    std::unique_ptr<ExposureContrastOp> const clone = cloneOf(op);
    EXPECT_EQ(clone->getStyle(), Style::Linear);
    EXPECT_EQ(clone->getPivot(), 0.25);
    clone->getExposure()->setValue(2.0);
    clone->getContrast()->setValue(3.0);
    EXPECT_EQ(op.getExposure()->getValue(), 2.0);
    EXPECT_EQ(op.getContrast()->getValue(), 1.0);
}

TEST(ExposureContrastOp, AssignmentSharesAsCloningDoes)
{
    ExposureContrastOp source;
    source.getContrast()->setDynamic(true);
    source.setStyle(Style::Log);
    source.setPivot(0.5);
    source.setName("n");
    ExposureContrastOp target;
    target = source;
    EXPECT_EQ(target.getName(), "n");
    EXPECT_EQ(target.getStyle(), Style::Log);
    EXPECT_EQ(target.getPivot(), 0.5);
    EXPECT_EQ(target.getContrast(), source.getContrast());
    EXPECT_NE(target.getExposure(), source.getExposure());
}

TEST(ExposureContrastOp, EqualsOneOfTheSameStyleValuesFlagsAndPivot)
{
    ExposureContrastOp const op;
    EXPECT_TRUE(op == *cloneOf(op));
    ExposureContrastOp other;
    other.setStyle(Style::Log);
    EXPECT_FALSE(op == other);
    other.setStyle(Style::Video);
    other.setPivot(0.2);
    EXPECT_FALSE(op == other);
    other.setPivot(0.18);
    EXPECT_TRUE(op == other);
    other.getExposure()->setDynamic(true);
    EXPECT_FALSE(op == other);
    other.getExposure()->setDynamic(false);
    other.getContrast()->setValue(2.0);
    EXPECT_FALSE(op == other);
}

TEST(ExposureContrastOp, HasNoInverse)
{
    Color::OpList list;
    EXPECT_EQ(failureOf([&] { ExposureContrastOp().inverse(list); }),
              (Failure{0x210014, "Exposure/Contrast inverse not supported"}));
}
