// Files of all kinds that are cut off or have wrong bytes: whatever they hold, reading ends soon with a transform or a clear
// failure, and within bounded memory.
#include "xml/cdlReader.h"
#include "xml/iccProfileReader.h"
#include "xml/ostrand1DReader.h"
#include "xml/ostrand3DReader.h"

#include "support/failure.h"
#include "support/iccProfileBytes.h"
#include "support/temporaryFolder.h"
#include "xml/tableFiles.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <memory>
#include <ostream>
#include <random>
#include <string>
#include <sys/resource.h>

namespace
{

struct SmallFile
{
    std::string name;
    std::string content;
    std::unique_ptr<Color::IOReader> (*createReader)();
};

template <class Reader>
std::unique_ptr<Color::IOReader> create()
{
    return std::make_unique<Reader>();
}

void PrintTo(SmallFile const& file, std::ostream* out)
{
    *out << file.name;
}

std::string const kCorrection = "<ColorCorrection id='a'>\n"
                                "<Description>one &amp;\n two</Description><InputDescription>in</InputDescription>\n"
                                "<SOPNode><Description>sop</Description>\n<Slope>1.1 1 0.9</Slope>\n"
                                "<Offset>-0.1, 0, 0.1</Offset><Power>1\n1e0\n0x1p0</Power></SOPNode>\n"
                                "<SatNode><Saturation>0.9</Saturation></SatNode>\n"
                                "</ColorCorrection>\n";

SmallFile const kFiles[] = {
    {"list.cdl",
     "<?xml version='1.0' encoding='UTF-8'?>\n<ColorDecisionList xmlns='urn:ASC:CDL:v1.01'>\n"
     "<Description>all</Description><ViewingDescription>dark</ViewingDescription>\n"
     "<ColorDecision><MediaRef ref='a.dpx'/>\n" +
         kCorrection + "</ColorDecision></ColorDecisionList>",
     &create<Color::CDLReader>},
    {"collection.ccc", "<ColorCorrectionCollection>" + kCorrection + kCorrection + "</ColorCorrectionCollection>",
     &create<Color::CDLReader>},
    {"fragment.cc", kCorrection, &create<Color::CDLReader>},
    {"8to10.lut", "# a comment\nLUT: 1 256 65536f\n\n" + XmlTest::lines(256, [](int i) { return 60 * i; }) + "# end\n",
     &create<Color::Ostrand1DReader>},
    // Incomplete: what is read of a whole one is the same over and over.
    {"gamma.icc", XmlTest::ProfileBytes().build(), &create<Color::ICCProfileReader>},
    {"table.icm", XmlTest::ProfileBytes().setCurves({0, 100, 13107, 32768, 65535}).build(), &create<Color::ICCProfileReader>},
    {"straight.pf", XmlTest::ProfileBytes().setCurves({}).build(), &create<Color::ICCProfileReader>},
    {"mesh.3dl",
     "3DMESH\n# a comment\n0 64 128 192 256 320 384 448 512 576 640 704 768 832 896 960 1023\n"
     "0 0 0\n1\\t2 3\n\n  4095 -5 +6\r\n" +
         XmlTest::lines(20, [](int i) { return i; }) + "1023 1023 1023\n",
     &create<Color::Ostrand3DReader>},
};

// The most memory that this process ever held, in kilobytes.
long peakMemory()
{
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return usage.ru_maxrss;
}

class DamagedFiles : public testing::TestWithParam<SmallFile>
{
protected:
    void TearDown() override
    {
        // Sanitizers have much memory of their own.
#if !defined(__SANITIZE_ADDRESS__) && !defined(__SANITIZE_THREAD__)
        EXPECT_LT(peakMemory() - m_peakBefore, 256 * 1024);
#endif
    }

    // A transform, or a failure with words.
    void expectAnOutcome(std::string const& content) const
    {
        // A file that is written over is flushed to the disk, a new one is not.
        std::filesystem::remove(m_folder.file(GetParam().name));
        std::string const path = m_folder.write(GetParam().name, content);
        std::unique_ptr<Color::IOReader> const reader = GetParam().createReader();
        Failure const failure = failureOf([&] { reader->parseFile(path); });
        ASSERT_EQ(failure.id == 0, failure.words.empty());
        ASSERT_TRUE(failure.id != 0 || !reader->getTransform()->getOps().empty());
    }

private:
    TemporaryFolder const m_folder;
    long const m_peakBefore = peakMemory();
};

} // namespace

TEST_P(DamagedFiles, MayEndAnywhere)
{
    std::string const& content = GetParam().content;
    for (std::size_t length = 0; length <= content.size(); ++length)
        expectAnOutcome(content.substr(0, length));
}

TEST_P(DamagedFiles, MayHaveAnyByteAnywhere)
{
    std::mt19937 random(20240610);
    for (int i = 0; i < 10000; ++i)
    {
        std::string content = GetParam().content;
        for (unsigned int changes = 1 + random() % 3; changes > 0; --changes)
            content[random() % content.size()] = static_cast<char>(random());
        expectAnOutcome(content);
    }
}

INSTANTIATE_TEST_SUITE_P(OfEachKind, DamagedFiles, testing::ValuesIn(kFiles),
                         [](auto const& info) { return info.param.name.substr(info.param.name.find('.') + 1); });
