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

Lines optimizedContentOf(TransformPtr const& transform, OptimizerFlags flags = OPTIMIZER_DEFAULT_THRESHOLD,
                         PixelFormat in = PF_RGBA_32f, PixelFormat out = PF_RGBA_32f)
{
    Recorder recorder;
    EXPECT_EQ(told(extractOptimizedContent(transform, in, out, flags, recorder)), kGood);
    return recorder.lines();
}

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

TEST(ExtractOptimizedContent, TellsWhatIsLeftAtTheDepthsOfTheFormatsWithItsRenderers)
{
    TransformPtr const transform = fromText(document(doubling() + doubling() +
                                                         "<Range inBitDepth='32f' outBitDepth='10i'>\n"
                                                         "<minInValue>0.25</minInValue>\n"
                                                         "<maxInValue>0.75</maxInValue>\n"
                                                         "<minOutValue>0</minOutValue>\n"
                                                         "<maxOutValue>1023</maxOutValue>\n"
                                                         "</Range>",
                                                     "id='t' name='Test'"));
    ASSERT_TRUE(transform);
    // A matrix of 4 that takes 8-bit codes, and a range that gives values of 0 to 1.
    EXPECT_THAT(optimizedContentOf(transform, 90, PF_RGB_8i, PF_RGBA_16f),
                ElementsAre("begin Transform",                                                           //
                            "Input Descriptor: ",                                                        //
                            "Output Descriptor: ",                                                       //
                            "Input Bit Depth: 8i",                                                       //
                            "Output Bit Depth: 16f",                                                     //
                            "Nickname: Test",                                                            //
                            "Inverse Of: ",                                                              //
                            "Identifier: t",                                                             //
                            "begin Matrix",                                                              //
                            "Renderer: ScaleRenderer",                                                   //
                            "Identifier: ",                                                              //
                            "Name: ",                                                                    //
                            "Input Bit Depth: 8i",                                                       //
                            "Output Bit Depth: 32f",                                                     //
                            "Array Row 1:       0.0157      0.0000      0.0000      0.0000      0.0000", //
                            "Array Row 2:       0.0000      0.0157      0.0000      0.0000      0.0000", //
                            "Array Row 3:       0.0000      0.0000      0.0157      0.0000      0.0000", //
                            "Array Row 4:       0.0000      0.0000      0.0000      0.0039      0.0000", //
                            "end",                                                                       //
                            "begin Range",                                                               //
                            "Renderer: RangeScaleMinMaxRenderer",                                        //
                            "Identifier: ",                                                              //
                            "Name: ",                                                                    //
                            "Input Bit Depth: 32f",                                                      //
                            "Output Bit Depth: 16f",                                                     //
                            "Min Input Value:       0.2500",                                             //
                            "Min Output Value:       0.0000",                                            //
                            "Max Input Value:       0.7500",                                             //
                            "Max Output Value:       1.0000",                                            //
                            "end",                                                                       //
                            "end"));
}

TEST(ExtractOptimizedContent, TellsTheRendererThatBelongsToNoOperator)
{
    std::string const range = "<Range inBitDepth='8i' outBitDepth='8i'/>";
    Lines const lone = optimizedContentOf(fromText(document(range)), 90, PF_RGB_8i, PF_RGB_8i);
    EXPECT_THAT(lone, Contains("begin Range"));
    EXPECT_THAT(lone, Contains("Renderer: none"));
    EXPECT_THAT(lone, Contains("begin Depth Conversion"));
    EXPECT_THAT(lone, Contains("Renderer: ScaleRenderer"));
    // Nothing is left of a list whose operators are all bypassed.
    Lines const bypassed = optimizedContentOf(fromText(document(doubling("bypass='true'"))));
    EXPECT_THAT(bypassed, Not(Contains("begin Matrix")));
    EXPECT_THAT(bypassed, Contains("begin Depth Conversion"));
    EXPECT_THAT(optimizedContentOf(fromText(document(doubling()))), Not(Contains("begin Depth Conversion")));
}

TEST(ExtractOptimizedContent, LeavesTheTransformAsItWas)
{
    TransformPtr const transform = fromText(document(doubling() + doubling()));
    Lines const before = contentOf(transform);
    optimizedContentOf(transform);
    EXPECT_EQ(contentOf(transform), before);
    EXPECT_EQ(transform->getInputPixelFormat(), PF_UNKNOWN);
}

TEST(ExtractOptimizedContent, RefusesAnEmptyHandleAndWhatFinalizeRefuses)
{
    Recorder recorder;
    EXPECT_EQ(told(extractOptimizedContent(TransformPtr(), PF_RGB_8i, PF_RGB_8i, 90, recorder)),
              (Told{0x2030001, "NULL parameter: transform"}));
    EXPECT_EQ(told(extractOptimizedContent(scaleBy(2.0F), PF_RGB_8i, PF_RGB_8i, 0, recorder)), kNullAction);
    EXPECT_THAT(recorder.lines(), testing::IsEmpty());
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
