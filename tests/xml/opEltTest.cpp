// What all operator elements have in common.
#include "xml/opElt.h"

#include "support/logCapture.h"
#include "xml/ctfElements.h"
#include "xml/ctfVocabulary.h"
#include "xml/documents.h"
#include "xml/elements.h"
#include "xml/matrixElt.h"
#include "xml/rangeElt.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <memory>
#include <string>
#include <typeinfo>

using namespace XmlTest;
using namespace Color;
using namespace Color::Xml::Reader;
using testing::ElementsAre;
using OpType = Op::OpType;

namespace
{

Failure failureOfRange(std::string const& attributes)
{
    return failureOfFile(inRoot("\n<Range " + attributes + "/>"));
}

RangeOp rangeOf(std::string const& attributes, std::string const& content = "")
{
    return onlyOp<RangeOp>(
        *transformOf(inRoot("<Range inBitDepth='32f' outBitDepth='32f' " + attributes + ">" + content + "</Range>")));
}

// The next float below or above.
float below(float value)
{
    return std::nextafter(value, 0.0F);
}
float above(float value)
{
    return std::nextafter(value, 10.0F);
}

template <class Elt>
bool reads(OpType type, float version)
{
    std::unique_ptr<OpElt> const owner = OpElt::getReader(type, version);
    OpElt const* const element = owner.get(); // clang warns of a typeid whose operand calls something
    return element != nullptr && typeid(*element) == typeid(Elt);
}

} // namespace

TEST(OperatorElements, ReadWhatAllOperatorsHave)
{
    auto const transform =
        transformOf(inRoot("<Range id='i' name='n' inBitDepth='8i' outBitDepth='16f'><Description>one\ntwo</Description></Range>"));
    RangeOp const& range = onlyOp<RangeOp>(*transform);
    EXPECT_EQ(range.getId(), "i");
    EXPECT_EQ(range.getName(), "n");
    EXPECT_EQ(range.getInputBitDepth(), Tavrin::BIT_DEPTH_8i);
    EXPECT_EQ(range.getOutputBitDepth(), Tavrin::BIT_DEPTH_16f);
    EXPECT_THAT(range.getDescriptions().getList(), ElementsAre("one", "two"));
    EXPECT_THAT(transform->getDescriptions().getList(), testing::IsEmpty());
    EXPECT_FALSE(range.getBypass()->getValue());
}

TEST(OperatorElements, NeedBothDepths)
{
    EXPECT_EQ(failureOfRange("outBitDepth='8i'"),
              (Failure{0x420006, "Required attribute 'Input Bit Depth' missing in 'Range' line 2: <file>"}));
    EXPECT_EQ(failureOfRange("inBitDepth='8i'"),
              (Failure{0x420006, "Required attribute 'Output Bit Depth' missing in 'Range' line 2: <file>"}));
    EXPECT_EQ(failureOfRange(""), (Failure{0x420006, "Required attribute 'Input Bit Depth' missing in 'Range' line 2: <file>"}));
}

TEST(OperatorElements, KnowTheNamesOfDepths)
{
    EXPECT_EQ(failureOfRange("inBitDepth='9i' outBitDepth='8i'"),
              (Failure{0x420009, "Illegal 'Input Bit Depth' attribute '9i' in 'Range' line 2: <file>"}));
    EXPECT_EQ(failureOfRange("inBitDepth='8i' outBitDepth='8I'"),
              (Failure{0x420009, "Illegal 'Output Bit Depth' attribute '8I' in 'Range' line 2: <file>"}));
    EXPECT_EQ(failureOfRange("inBitDepth='8i' outBitDepth=''"),
              (Failure{0x420009, "Illegal 'Output Bit Depth' attribute '' in 'Range' line 2: <file>"}));
}

TEST(OperatorElements, MayBeBypassed)
{
    EXPECT_TRUE(rangeOf("bypass='true'").getBypass()->getValue());
    EXPECT_TRUE(rangeOf("bypass=' TRUE&#9;'").getBypass()->getValue());
    EXPECT_FALSE(rangeOf("bypass='true'").isDynamic());
    EXPECT_EQ(failureOfRange("inBitDepth='8i' outBitDepth='8i' bypass='false'"),
              (Failure{0x420024, "Illegal 'Range' bypass attribute 'false' line 2: <file>"}));
    EXPECT_EQ(failureOfRange("inBitDepth='8i' outBitDepth='8i' bypass=''"),
              (Failure{0x420024, "Illegal 'Range' bypass attribute '' line 2: <file>"}));
}

TEST(OperatorElements, TellTheFirstFaultOfTheFile)
{
    EXPECT_EQ(failureOfRange("bypass='no' inBitDepth='9i'").id, 0x420024U);
    EXPECT_EQ(failureOfRange("inBitDepth='9i' bypass='no'").id, 0x420009U);
}

TEST(OperatorElements, ValidateTheOperatorAtTheirEnd)
{
    EXPECT_EQ(failureOfFile(inRoot("<Range inBitDepth='8i' outBitDepth='8i'><minInValue>0</minInValue></Range>")),
              (Failure{0x270001, "In & Out Min limits must be both set or both missing"}));
}

TEST(OperatorElements, NeedATransform)
{
    RangeElt element;
    EXPECT_EQ(failureOf([&] { element.setContext("Range", nullptr, 4, "f.ctf"); }),
              (Failure{0x420002, "XML Parsing error: Tag 'ProcessList' missing line 4: f.ctf"}));
}

TEST(OperatorElements, GiveTheOperatorToTheTransformBeforeTheyLookAtAttributes)
{
    auto const transform = std::make_shared<Transform>();
    RangeElt element;
    element.setContext("Range", transform, 4, "f.ctf");
    EXPECT_TRUE(transform->getOps().empty());
    EXPECT_EQ(failureOf([&] { element.start(Attributes{"inBitDepth", "?"}); }).id, 0x420009U);
    EXPECT_EQ(transform->getOps().size(), 1U);
    EXPECT_EQ(&transform->getOps().get(0), element.getOp());
}

TEST(DynamicParameters, MakeTheBypassDynamic)
{
    RangeOp const range = rangeOf("bypass='true'", "<DynamicParameter param='look_SWITCH'/>");
    EXPECT_TRUE(range.hasDynamicProperty(DynamicProperty::BYPASS));
    EXPECT_TRUE(range.getBypass()->getValue());
    EXPECT_FALSE(rangeOf("").hasDynamicProperty(DynamicProperty::BYPASS));
}

TEST(DynamicParameters, WithoutAParameterChangeNothing)
{
    EXPECT_FALSE(rangeOf("", "<DynamicParameter/>").isDynamic());
    EXPECT_FALSE(rangeOf("", "<DynamicParameter name='LOOK_SWITCH'>text</DynamicParameter>").isDynamic());
}

TEST(DynamicParameters, MustBeTheOperators)
{
    for (std::string const name : {"EXPOSURE", "contrast", "BYPASS", "LOOK", ""})
    {
        EXPECT_EQ(failureOfFile(inRoot("<Range inBitDepth='8i' outBitDepth='8i'><DynamicParameter param='" + name + "'/></Range>")),
                  (Failure{0x420019, "Invalid dynamic parameter '" + name + "' for op 'Range'"}));
    }
}

TEST(ElementTable, GivesMatricesByVersion)
{
    for (float const version : {-std::numeric_limits<float>::infinity(), 0.0F, 1.0F, 1.2F})
        EXPECT_TRUE(reads<MatrixElt>(OpType::MatrixOp, version)) << version;
    for (float const version : {above(1.2F), 1.3F, 1.4F, 1.5F})
        EXPECT_TRUE(reads<MatrixElt_1_3>(OpType::MatrixOp, version)) << version;
}

TEST(ElementTable, GivesRangesInAllVersions)
{
    for (float const version : {-std::numeric_limits<float>::infinity(), 0.0F, 1.2F, 1.3F, 1.5F})
        EXPECT_TRUE(reads<RangeElt>(OpType::RangeOp, version)) << version;
}

TEST(ElementTable, GivesNothingOutsideTheVersionsOfAnOperator)
{
    for (unsigned int type = 0; type <= 13; ++type)
    {
        EXPECT_EQ(OpElt::getReader(static_cast<OpType>(type), above(1.5F)), nullptr) << type;
        EXPECT_EQ(OpElt::getReader(static_cast<OpType>(type), std::numeric_limits<float>::quiet_NaN()), nullptr) << type;
    }
    for (OpType const type : {OpType::InvLut1DOp, OpType::LogOp, OpType::CDLOp, OpType::DitherOp})
        EXPECT_EQ(OpElt::getReader(type, below(1.3F)), nullptr);
    for (OpType const type : {OpType::GamutMapOp, OpType::HueVectorOp})
        EXPECT_EQ(OpElt::getReader(type, below(1.4F)), nullptr);
}

TEST(ElementTable, KnowsTheOperatorsOfAllTags)
{
    struct Case
    {
        char const* tag;
        OpType type;
    };
    Case const cases[] = {
        {"LUT1D", OpType::Lut1DOp},
        {"InverseLUT1D", OpType::InvLut1DOp},
        {"LUT3D", OpType::Lut3DOp},
        {"Matrix", OpType::MatrixOp},
        {"Range", OpType::RangeOp},
        {"Reference", OpType::ReferenceOp},
        {"Gamma", OpType::GammaOp},
        {"ExposureContrast", OpType::ExposureContrastOp},
        {"Log", OpType::LogOp},
        {"ASC_CDL", OpType::CDLOp},
        {"Dither", OpType::DitherOp},
        {"GamutMap", OpType::GamutMapOp},
        {"HueVector", OpType::HueVectorOp},
        {"hUEvECTOR", OpType::HueVectorOp},
    };
    for (Case const& c : cases)
    {
        OpType const* const type = findOperator(c.tag);
        ASSERT_NE(type, nullptr) << c.tag;
        EXPECT_EQ(*type, c.type) << c.tag;
    }
    EXPECT_EQ(findOperator("Array"), nullptr);
    EXPECT_EQ(findOperator("LUT"), nullptr);
    EXPECT_EQ(findOperator("LUT1DD"), nullptr);
}
