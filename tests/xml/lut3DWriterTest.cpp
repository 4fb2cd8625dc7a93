// 3D tables in files.
#include "xml/writing.h"

#include "transform/lut3DOp.h"

#include <gtest/gtest.h>

using namespace Tavrin;
using Color::Lut3DOp;
using XmlTest::startTagOf;
using XmlTest::written;

TEST(Lut3DWriter, WritesAColourOnALine)
{
    Lut3DOp op(BIT_DEPTH_8i, BIT_DEPTH_12i, "", "", Color::Descriptions(), Lut3DOp::InterpolationAlgo::Default, 2);
    op.getArray().set(0, 7.0F);
    EXPECT_EQ(written(op), "<LUT3D inBitDepth=\"8i\" outBitDepth=\"12i\">\n"
                           "    <Array dim=\"2 2 2 3\">\n"
                           "   7    0    0\n"
                           "   0    0 4095\n"
                           "   0 4095    0\n"
                           "   0 4095 4095\n"
                           "4095    0    0\n"
                           "4095    0 4095\n"
                           "4095 4095    0\n"
                           "4095 4095 4095\n"
                           "    </Array>\n"
                           "</LUT3D>\n");
}

TEST(Lut3DWriter, WritesItsInterpolationUnlessItIsTheDefault)
{
    auto const tagOf = [](Lut3DOp::InterpolationAlgo interpolation)
    {
        Lut3DOp op(2U);
        op.setInterpolation(interpolation);
        return startTagOf(op);
    };
    EXPECT_EQ(tagOf(Lut3DOp::InterpolationAlgo::Default), "<LUT3D inBitDepth=\"32f\" outBitDepth=\"32f\">");
    EXPECT_EQ(tagOf(Lut3DOp::InterpolationAlgo::Trilinear),
              "<LUT3D inBitDepth=\"32f\" outBitDepth=\"32f\" interpolation=\"trilinear\">");
    EXPECT_EQ(tagOf(Lut3DOp::InterpolationAlgo::FourPointTetrahedral),
              "<LUT3D inBitDepth=\"32f\" outBitDepth=\"32f\" interpolation=\"4pt tetrahedral\">");
}
