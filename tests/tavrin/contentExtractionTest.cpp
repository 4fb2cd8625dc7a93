// What a caller is told of a transform for display.
#include "contentRecorder.h"

#include <gmock/gmock.h>

#include <string>

using namespace Tavrin;
using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;

namespace
{

TEST(ExtractContent, TellsTheTransformAndItsOperatorsInOrder)
{
    TransformPtr const transform = fromText(document("<Description>one</Description>\n"
                                                     "<Description>two</Description>\n"
                                                     "<InputDescriptor>from</InputDescriptor>\n"
                                                     "<OutputDescriptor>to</OutputDescriptor>\n"
                                                     "<Matrix id='m' name='Mix' inBitDepth='8i' outBitDepth='16f'>\n"
                                                     "<Description>three</Description>\n"
                                                     "<Description>four</Description>\n"
                                                     "<Array dim='4 5 4'>\n"
                                                     "1 2 3 4 5\n"
                                                     "0.1 -0.25 0 1000 -1\n"
                                                     "0.0001 0.00005 -0.00002 0 0\n"
                                                     "0 0 0 1 0.5\n"
                                                     "</Array>\n"
                                                     "</Matrix>\n"
                                                     "<Range inBitDepth='16f' outBitDepth='32f'>\n"
                                                     "<minInValue>0.25</minInValue>\n"
                                                     "<maxInValue>0.75</maxInValue>\n"
                                                     "<minOutValue>0</minOutValue>\n"
                                                     "<maxOutValue>1</maxOutValue>\n"
                                                     "</Range>",
                                                     "id='t' name='Test' inverseOf='f'"));
    ASSERT_TRUE(transform);
    // Numbers stand in fields of 12.
    EXPECT_THAT(contentOf(transform), ElementsAre("begin Transform",                                                           //
                                                  "Description 1: one",                                                        //
                                                  "Description 2: two",                                                        //
                                                  "Input Descriptor: from",                                                    //
                                                  "Output Descriptor: to",                                                     //
                                                  "Input Bit Depth: 8i",                                                       //
                                                  "Output Bit Depth: 32f",                                                     //
                                                  "Nickname: Test",                                                            //
                                                  "Inverse Of: f",                                                             //
                                                  "Identifier: t",                                                             //
                                                  "begin Matrix",                                                              //
                                                  "Identifier: m",                                                             //
                                                  "Name: Mix",                                                                 //
                                                  "Input Bit Depth: 8i",                                                       //
                                                  "Output Bit Depth: 16f",                                                     //
                                                  "Description 1: three",                                                      //
                                                  "Description 2: four",                                                       //
                                                  "Array Row 1:       1.0000      2.0000      3.0000      4.0000      5.0000", //
                                                  "Array Row 2:       0.1000     -0.2500      0.0000   1000.0000     -1.0000", //
                                                  "Array Row 3:       0.0001  5.0000e-05 -2.0000e-05      0.0000      0.0000", //
                                                  "Array Row 4:       0.0000      0.0000      0.0000      1.0000      0.5000", //
                                                  "end",                                                                       //
                                                  "begin Range",                                                               //
                                                  "Identifier: ",                                                              //
                                                  "Name: ",                                                                    //
                                                  "Input Bit Depth: 16f",                                                      //
                                                  "Output Bit Depth: 32f",                                                     //
                                                  "Min Input Value:       0.2500",                                             //
                                                  "Min Output Value:       0.0000",                                            //
                                                  "Max Input Value:       0.7500",                                             //
                                                  "Max Output Value:       1.0000",                                            //
                                                  "end",                                                                       //
                                                  "end"));
}

TEST(ExtractContent, TellsARangesLimitsAsFarAsTheyAreSet)
{
    auto const contentOfRange = [](std::string const& limits)
    { return contentOf(fromText(document("<Range inBitDepth='32f' outBitDepth='32f'>\n" + limits + "\n</Range>"))); };
    Lines const none = contentOfRange("");
    EXPECT_THAT(none, Not(Contains(HasSubstr("Value"))));
    Lines const minimum = contentOfRange("<minInValue>0.25</minInValue>\n<minOutValue>0.5</minOutValue>");
    EXPECT_THAT(minimum, Contains("Min Input Value:       0.2500"));
    EXPECT_THAT(minimum, Contains("Min Output Value:       0.5000"));
    EXPECT_THAT(minimum, Not(Contains(HasSubstr("Max"))));
    Lines const maximum = contentOfRange("<maxInValue>0.25</maxInValue>\n<maxOutValue>0.5</maxOutValue>");
    EXPECT_THAT(maximum, Contains("Max Input Value:       0.2500"));
    EXPECT_THAT(maximum, Contains("Max Output Value:       0.5000"));
    EXPECT_THAT(maximum, Not(Contains(HasSubstr("Min"))));
}

TEST(ExtractContent, TellsABypassThatIsSet)
{
    EXPECT_THAT(contentOf(fromText(document(doubling("bypass='true'")))), Contains("Bypass: true"));
    EXPECT_THAT(contentOf(fromText(document(doubling()))), Not(Contains(HasSubstr("Bypass"))));

    TransformPtr const transform = fromText(document(doubling("", "<DynamicParameter param='LOOK_SWITCH' />")));
    ASSERT_TRUE(transform);
    EXPECT_THAT(contentOf(transform), Not(Contains(HasSubstr("Bypass"))));
    transform->setDynamicProperty(DynamicProperty(DynamicProperty::BYPASS, true));
    EXPECT_THAT(contentOf(transform), Contains("Bypass: true"));
}

TEST(ExtractContent, LetsACallersExceptionPass)
{
    class Refusing : public Recorder
    {
    public:
        void endSection() override { throw std::string("enough"); }
    };
    Refusing refusing;
    TransformPtr const transform = scaleBy(2.0F);
    EXPECT_THROW(transform->extractContent(refusing), std::string);
}

} // namespace
