// Where aliases lead, and what becomes of a pipeline's stages.
#include "template/templateUtils.h"
#include "support/catalogTransforms.h"
#include "support/failure.h"
#include "support/ownPreferences.h"
#include "transform/matrixOp.h"
#include "utils/preferences.h"
#include "xml/preferencesInstance.h"

using namespace CatalogTest;
using Color::ReferenceTable;
using Color::Xml::Impl::PreferencesInstance;

namespace
{

class TemplateUtils : public OwnPreferencesTest
{
protected:
    // Loading the preferences sets the system path.
    TemplateUtils() { table().addAlias("alias", {shared() + "/alias.ctf", Tavrin::BASE_PATH_NONE}); }

    static ReferenceTable& table() { return PreferencesInstance::getInstance().getPreferences()->getReferenceTable(); }
    static std::string fullPath(std::string const& path, Tavrin::BasePath basePath)
    {
        return TemplateNS::Utils::getAliasFullPath("alias", {path, basePath});
    }
    static void write(std::string const& path, std::string const& input, std::string const& output, double factor)
    {
        writeFile(path, transformFile({{"i", input, "scene"}, {"o", output, "scene"}, {}, ""}, factor));
    }
};

TEST_F(TemplateUtils, AnAbsolutePathOfAnAliasStandsWhateverItsBase)
{
    for (Tavrin::BasePath const basePath : {Tavrin::BASE_PATH_NONE, Tavrin::BASE_PATH_VENDOR, Tavrin::BASE_PATH_SHARED})
        EXPECT_EQ(fullPath("/a/b.ctf", basePath), "/a/b.ctf");
}

TEST_F(TemplateUtils, ARelativePathOfAnAliasIsRelativeToItsBase)
{
    EXPECT_EQ(fullPath("a/b.ctf", Tavrin::BASE_PATH_VENDOR), systemTransforms() + "/a/b.ctf");
    EXPECT_EQ(fullPath("a/b.ctf", Tavrin::BASE_PATH_SHARED), shared() + "/a/b.ctf");
    EXPECT_EQ(failureOf([] { fullPath("a/b.ctf", Tavrin::BASE_PATH_NONE); }),
              (Failure{0x1010001, "Reference alias must specify a basePath when using a relative path."}));
}

TEST_F(TemplateUtils, APipelineOfNoStagesIsNoTransform)
{
    EXPECT_EQ(TemplateNS::Utils::loadPipeline({}), nullptr);
}

TEST_F(TemplateUtils, StagesApplyInTheirOrderAndTheLastTellsWhereTheyLead)
{
    write(shared() + "/first.ctf", "A", "B", 2.0);
    write(shared() + "/alias.ctf", "B", "C", 3.0);
    write(shared() + "/last.ctf", "C", "D", 5.0);
    Color::ViewingPipeline pipeline;
    pipeline.appendPath(shared() + "/first.ctf");
    pipeline.appendAlias("alias");
    pipeline.appendPath(shared() + "/last.ctf");
    std::shared_ptr<Color::Transform> const transform = TemplateNS::Utils::loadPipeline(pipeline);
    EXPECT_EQ(transform->getInputDescriptor(), "A");
    EXPECT_EQ(transform->getOutputDescriptor(), "D");
    ASSERT_EQ(transform->getOps().size(), 3U);
    float const expected[] = {2.0F, 3.0F, 5.0F};
    for (unsigned int i = 0; i < 3; ++i)
        EXPECT_EQ(dynamic_cast<Color::MatrixOp const&>(transform->getOps().get(i)).getArray().getValues()[0], expected[i]);
}

TEST_F(TemplateUtils, AStageThatIsNotThereIsNamed)
{
    Color::ViewingPipeline pipeline;
    pipeline.appendPath(shared() + "/missing.ctf");
    EXPECT_EQ(failureOf([&] { TemplateNS::Utils::loadPipeline(pipeline); }),
              (Failure{0x460003, "No file found: '" + shared() + "/missing.ctf'"}));
    Color::ViewingPipeline unknown;
    unknown.appendAlias("unknown");
    EXPECT_EQ(failureOf([&] { TemplateNS::Utils::loadPipeline(unknown); }), (Failure{0x120001, "Alias 'unknown' not found."}));
}

} // namespace
