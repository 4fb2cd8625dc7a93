// Logarithms in files.
#include "xml/writing.h"

#include "transform/logOp.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>

using namespace Tavrin;
using Color::LogOp;
using XmlTest::contentOf;
using XmlTest::styleOf;
using XmlTest::written;

namespace
{

using LogStyle = LogOp::LogStyle;

LogOp logOp(LogStyle style, LogOp::Params const& red, LogOp::Params const& green, LogOp::Params const& blue)
{
    return {BIT_DEPTH_32f, BIT_DEPTH_32f, style, red, green, blue};
}

} // namespace

TEST(LogWriter, WritesParametersOfTheFilmStylesAlone)
{
    for (auto const& [style, name] : {std::pair(LogStyle::Log10, "log10"), std::pair(LogStyle::Log2, "log2"),
                                      std::pair(LogStyle::AntiLog10, "antiLog10"), std::pair(LogStyle::AntiLog2, "antiLog2")})
    {
        EXPECT_EQ(written(logOp(style, {}, {}, {})),
                  std::string("<Log inBitDepth=\"32f\" outBitDepth=\"32f\" style=\"") + name + "\">\n</Log>\n");
    }
    LogOp::Params const same{0.6, 685, 95, 1, 0.002};
    EXPECT_EQ(written(logOp(LogStyle::LogToLin, same, same, same)),
              "<Log inBitDepth=\"32f\" outBitDepth=\"32f\" style=\"logToLin\">\n"
              "    <LogParams gamma=\"0.6\" refWhite=\"685\" refBlack=\"95\" highlight=\"1\" shadow=\"0.002\" />\n"
              "</Log>\n");
    EXPECT_EQ(styleOf(logOp(LogStyle::LinToLog, same, same, same)), "linToLog");
}

TEST(LogWriter, WritesASetForEachColourWhereTheyDiffer)
{
    LogOp::Params const same{0.6, 685, 95, 1, 0};
    EXPECT_EQ(
        contentOf(logOp(LogStyle::LinToLog, same, {0.5, 700, 100, 0.75, 0.001}, same)),
        "    <LogParams channel=\"R\" gamma=\"0.6\" refWhite=\"685\" refBlack=\"95\" highlight=\"1\" shadow=\"0\" />\n"
        "    <LogParams channel=\"G\" gamma=\"0.5\" refWhite=\"700\" refBlack=\"100\" highlight=\"0.75\" shadow=\"0.001\" />\n"
        "    <LogParams channel=\"B\" gamma=\"0.6\" refWhite=\"685\" refBlack=\"95\" highlight=\"1\" shadow=\"0\" />\n");
}
