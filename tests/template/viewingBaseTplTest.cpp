// What every transform for viewing gets: no references, an exposure where it begins, a contrast where it ends.
#include "template/viewingBaseTpl.h"
#include "support/catalogTransforms.h"
#include "support/failure.h"
#include "support/ownPreferences.h"
#include "template/stockViewingTpl.h"
#include "transform/exposureContrastOp.h"
#include "transform/matrixOp.h"
#include "transform/referenceOp.h"
#include "xml/preferencesInstance.h"

#include <gtest/gtest.h>

using Color::DynamicProperty;
using Color::ExposureContrastOp;
using Color::MatrixOp;
using Color::Op;

namespace
{

// A template whose transform is a test's.
class FixedTpl : public TemplateNS::ViewingBaseTpl
{
public:
    explicit FixedTpl(std::shared_ptr<Color::Transform> transform) : m_transform(std::move(transform)) {}

private:
    std::shared_ptr<Color::Transform> _createTransform() const override { return m_transform; }

    std::shared_ptr<Color::Transform> m_transform;
};

std::shared_ptr<Color::Transform> transformOf(std::vector<Op*> const& ops)
{
    auto transform = std::make_shared<Color::Transform>();
    for (Op* const op : ops)
        transform->getOps().append(op);
    return transform;
}

std::vector<Op::OpType> typesAfter(std::shared_ptr<Color::Transform> const& transform)
{
    std::shared_ptr<Color::Transform> const created = FixedTpl(transform).createTransform();
    std::vector<Op::OpType> types;
    for (unsigned int i = 0; i < created->getOps().size(); ++i)
        types.push_back(created->getOps().get(i).getOpType());
    return types;
}

Op* exposureContrast(bool exposure, bool contrast)
{
    auto* const op = new ExposureContrastOp;
    op->getExposure()->setDynamic(exposure);
    op->getContrast()->setDynamic(contrast);
    return op;
}

constexpr auto kMatrix = Op::OpType::MatrixOp;
constexpr auto kExposureContrast = Op::OpType::ExposureContrastOp;
using Types = std::vector<Op::OpType>;

ExposureContrastOp const& exposureContrastAt(Color::Transform const& transform, unsigned int index)
{
    return dynamic_cast<ExposureContrastOp const&>(transform.getOps().get(index));
}

TEST(ViewingTemplate, AddsAnExposureAtTheHeadAndAContrastAtTheTail)
{
    std::shared_ptr<Color::Transform> const transform = FixedTpl(transformOf({new MatrixOp})).createTransform();
    ASSERT_EQ(transform->getOps().size(), 3U);
    for (unsigned int const index : {0U, 2U})
    {
        ExposureContrastOp const& op = exposureContrastAt(*transform, index);
        EXPECT_EQ(op.getStyle(), ExposureContrastOp::Style::Linear);
        EXPECT_EQ(op.getPivot(), 1.0);
        EXPECT_TRUE(op.isIdentity());
        EXPECT_EQ(op.getExposure()->isDynamic(), index == 0U);
        EXPECT_EQ(op.getContrast()->isDynamic(), index == 2U);
    }
    transform->validate();
}

TEST(ViewingTemplate, AddsOnlyWhatIsNotThere)
{
    EXPECT_EQ(typesAfter(transformOf({new MatrixOp, exposureContrast(true, false)})),
              (Types{kMatrix, kExposureContrast, kExposureContrast}));
    EXPECT_EQ(typesAfter(transformOf({exposureContrast(false, true), new MatrixOp})),
              (Types{kExposureContrast, kExposureContrast, kMatrix}));
    EXPECT_EQ(typesAfter(transformOf({exposureContrast(true, true)})), Types{kExposureContrast});
    EXPECT_EQ(typesAfter(transformOf({exposureContrast(false, true), exposureContrast(true, false)})),
              (Types{kExposureContrast, kExposureContrast}));
    EXPECT_EQ(typesAfter(transformOf({exposureContrast(false, false)})),
              (Types{kExposureContrast, kExposureContrast, kExposureContrast}));
}

TEST(ViewingTemplate, KeepsWhatASignalOfTheFirstOperatorsDepthMeans)
{
    std::shared_ptr<Color::Transform> const transform =
        FixedTpl(transformOf({new MatrixOp(Tavrin::BIT_DEPTH_10i, Tavrin::BIT_DEPTH_12i, "id", "name", {})})).createTransform();
    transform->validate();
    EXPECT_EQ(transform->getInputBitDepth(), Tavrin::BIT_DEPTH_32f);
    EXPECT_EQ(transform->getOutputBitDepth(), Tavrin::BIT_DEPTH_32f);
}

using ViewingTemplateWithReferences = OwnPreferencesTest;

TEST_F(ViewingTemplateWithReferences, HasTheirOperatorsInstead)
{
    std::string const file = CatalogTest::writeFile(m_folder.path() / "a.ctf", CatalogTest::transformFile({}, 2.0));
    auto const reference = [&] {
        return new Color::ReferenceOp(Tavrin::BIT_DEPTH_32f, Tavrin::BIT_DEPTH_32f, "id", "name", {}, file, Tavrin::BASE_PATH_NONE);
    };
    std::shared_ptr<Color::Transform> const referring = transformOf({reference(), reference()});
    EXPECT_EQ(typesAfter(referring), (Types{kExposureContrast, kMatrix, kMatrix, kExposureContrast}));
    EXPECT_TRUE(referring->hasUnresolvedReferences()) << "the template's own transform was changed";
}

TEST_F(ViewingTemplateWithReferences, TakesOperatorsThatAReferenceHasAlready)
{
    auto* const reference = new Color::ReferenceOp;
    reference->setPath("/nowhere.ctf", Tavrin::BASE_PATH_NONE);
    reference->setResolvedOps(transformOf({exposureContrast(true, true)})->getOps());
    EXPECT_EQ(typesAfter(transformOf({reference})), Types{kExposureContrast});
}

TEST(StockTemplate, ConsultsNoSelection)
{
    TemplateNS::StockViewingTpl const stock(Tavrin::STOCK_TEMPLATE_RAW);
    for (auto const& parameter : {stock.getWorkingSpaces(), stock.getViewTransforms()})
    {
        EXPECT_EQ(parameter->getNumValues(), 1U);
        EXPECT_EQ(parameter->getSelectedValue(), "raw");
        parameter->deselect();
    }
    std::shared_ptr<Color::Transform> const transform = stock.createTransform();
    EXPECT_EQ(transform->getName(), "Stock Raw Transform");
    EXPECT_EQ(transform->getOps().size(), 2U) << "its exposure and contrast are dynamic already";
}

TEST(StockTemplate, OfANumberThatDoesNotExistMakesNoTransform)
{
    TemplateNS::StockViewingTpl const stock(static_cast<Tavrin::StockTemplate>(1));
    EXPECT_EQ(failureOf([&] { stock.createTransform(); }), (Failure{0x2020004, "Invalid parameter"}));
}

} // namespace
