// The command 'shader': texts and tables.
#include "programRun.h"

using testing::EndsWith;
using testing::HasSubstr;

namespace
{

using ShaderCommand = ProgramTest;

TEST_F(ShaderCommand, PrintsTheShaderAndWhatGoesWithIt)
{
    writeMatrixTransform(folder / "half.ctf", "0.5 0 0  0 0.5 0  0 0 0.5");
    const Outcome outcome = run({"shader", "half.ctf"});
    EXPECT_EQ(outcome.err, "");
    ASSERT_EQ(outcome.status, 0);
    EXPECT_THAT(outcome.out, HasSubstr("uniform sampler2D frontTex;\n"));
    EXPECT_THAT(outcome.out, HasSubstr("    outColor = vec4(0.5,0.5,0.5,1.0) * outColor;\n"));
    EXPECT_THAT(outcome.out, EndsWith("  gl_FragColor = outColor;\n"
                                      "}\n"
                                      "//\n"
                                      "// Textures of 32-bit floats: none\n"
                                      "//\n"
                                      "// Uniforms: none\n"));
}

TEST_F(ShaderCommand, WritesInTheLanguageThatIsAskedFor)
{
    writeMatrixTransform(folder / "mix.ctf", "0.5 0.5 0  0 0.5 0.5  0 0 1");
    EXPECT_THAT(run({"shader", "mix.ctf", "--language", "glsl"}).out, HasSubstr("outColor = mat4(0.5, 0., 0., 0., 0.5, 0.5,"));
    EXPECT_THAT(run({"shader", "mix.ctf", "--language", "cg"}).out, HasSubstr("outColor = mul(float4x4(0.5, 0.5, 0., 0.,"));
    EXPECT_THAT(run({"shader", "mix.ctf", "--language", "mul"}).out, HasSubstr("0., 1.) * outColor;\n"));
    expectFailure(run({"shader", "mix.ctf", "--language", "hlsl"}), 2, HasSubstr("--language"));
}

TEST_F(ShaderCommand, ListsTexturesAndUniforms)
{
    std::string rows;
    for (int i = 0; i < 1025; ++i)
        rows += std::to_string(i / 1024.0 * i / 1024.0) + "\n";
    writeText(folder / "look.ctf", "<ProcessList version='1.4' id='x'>\n"
                                   "<ExposureContrast inBitDepth='32f' outBitDepth='32f' style='linear'>\n"
                                   "<DynamicParameter param='EXPOSURE'/>\n"
                                   "<DynamicParameter param='LOOK_SWITCH'/>\n"
                                   "<ECParams exposure='-0.5' contrast='1.25' pivot='0.18'/>\n"
                                   "</ExposureContrast>\n"
                                   "<LUT1D inBitDepth='32f' outBitDepth='32f'>\n<Array dim='1025 1'>\n" +
                                       rows +
                                       "</Array>\n</LUT1D>\n"
                                       "<LUT3D inBitDepth='32f' outBitDepth='32f' interpolation='tetrahedral'>\n"
                                       "<Array dim='2 2 2 3'>\n"
                                       "0 0 0  0 0 1  0 1 0  0 1 1  1 0 0  1 0 1  1 1 0  1 1 0.5\n</Array>\n</LUT3D>\n"
                                       "</ProcessList>\n");
    const Outcome outcome = run({"shader", "look.ctf", "--width", "1024"});
    EXPECT_EQ(outcome.err, "");
    ASSERT_EQ(outcome.status, 0);
    EXPECT_THAT(outcome.out, HasSubstr("2D, 1024 x 2\n"));
    EXPECT_THAT(outcome.out, HasSubstr("3D, 2 x 2 x 2, nearest\n"));
    EXPECT_THAT(outcome.out, EndsWith("// Uniforms\n"
                                      "//   Bypass_0    0, may change\n"
                                      "//   Exposure_0  -0.5, may change\n"
                                      "//   Contrast_0  1.25\n"));
}

TEST_F(ShaderCommand, TellsWhatIsWrong)
{
    expectFailure(run({"shader"}), 2, HasSubstr("TRANSFORM"));
    expectFailure(run({"shader", "none.ctf"}), 1, HasSubstr("none.ctf"));
}

} // namespace
