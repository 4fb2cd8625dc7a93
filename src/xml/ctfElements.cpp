// Which element reads which tag of a transform file. A new operator adds its elements here: a row for each range of versions, and
// one for each of its children's tags.
#include "xml/ctfElements.h"

#include "xml/CDLElt.h"
#include "xml/arrayElt.h"
#include "xml/ctfVersions.h"
#include "xml/ctfVocabulary.h"
#include "xml/ditherElt.h"
#include "xml/dynamicParamElt.h"
#include "xml/elementTable.h"
#include "xml/exposureContrastElt.h"
#include "xml/gammaElt.h"
#include "xml/gamutMapElt.h"
#include "xml/hueVectorElt.h"
#include "xml/invLut1DElt.h"
#include "xml/logElt.h"
#include "xml/lut1DElt.h"
#include "xml/lut3DElt.h"
#include "xml/matrixElt.h"
#include "xml/metadataElt.h"
#include "xml/opElt.h"
#include "xml/rangeElt.h"
#include "xml/referenceElt.h"
#include "xml/transformElt.h"

#include <algorithm>
#include <iterator>
#include <limits>

namespace Color::Xml::Reader
{

namespace
{

using OpType = Op::OpType;

// The versions of the format in which an element stands. All of them end at the newest one or where the next range begins.
struct VersionRange
{
    float from;
    bool includesFrom;
    float to;

    constexpr bool contains(float version) const { return (version > from || (includesFrom && version == from)) && version <= to; }
};

constexpr VersionRange upTo(float version)
{
    return {-std::numeric_limits<float>::infinity(), true, version};
}

constexpr VersionRange above(float version)
{
    return {version, false, Versions::kNewest};
}

constexpr VersionRange since(float version)
{
    return {version, true, Versions::kNewest};
}

template <class Elt>
std::unique_ptr<OpElt> createOpElt()
{
    return std::make_unique<Elt>();
}

struct OpRow
{
    char const* tag;
    OpType type;
    VersionRange versions;
    std::unique_ptr<OpElt> (*create)();
};

// clang-format off
constexpr OpRow kOperators[] = {
    {TAG_LUT1D,             OpType::Lut1DOp,            upTo(1.3F),              &createOpElt<Lut1DElt>},
    {TAG_LUT1D,             OpType::Lut1DOp,            above(1.3F),             &createOpElt<Lut1DElt_1_4>},
    {TAG_INVLUT1D,          OpType::InvLut1DOp,         since(1.3F),             &createOpElt<InvLut1DElt>},
    {TAG_LUT3D,             OpType::Lut3DOp,            upTo(Versions::kNewest), &createOpElt<Lut3DElt>},
    {TAG_MATRIX,            OpType::MatrixOp,           upTo(1.2F),              &createOpElt<MatrixElt>},
    {TAG_MATRIX,            OpType::MatrixOp,           above(1.2F),             &createOpElt<MatrixElt_1_3>},
    {TAG_RANGE,             OpType::RangeOp,            upTo(Versions::kNewest), &createOpElt<RangeElt>},
    {TAG_REFERENCE,         OpType::ReferenceOp,        upTo(Versions::kNewest), &createOpElt<ReferenceElt>},
    {TAG_GAMMA,             OpType::GammaOp,            upTo(1.4F),              &createOpElt<GammaElt>},
    {TAG_GAMMA,             OpType::GammaOp,            above(1.4F),             &createOpElt<GammaElt_1_5>},
    {TAG_EXPOSURE_CONTRAST, OpType::ExposureContrastOp, upTo(Versions::kNewest), &createOpElt<ExposureContrastElt>},
    {TAG_LOG,               OpType::LogOp,              since(1.3F),             &createOpElt<LogElt>},
    {TAG_CDL,               OpType::CDLOp,              since(1.3F),             &createOpElt<CDLElt>},
    {TAG_DITHER,            OpType::DitherOp,           since(1.3F),             &createOpElt<DitherElt>},
    {TAG_GAMUT_MAP,         OpType::GamutMapOp,         since(1.4F),             &createOpElt<GamutMapElt>},
    {TAG_HUE_VECTOR,        OpType::HueVectorOp,        since(1.4F),             &createOpElt<HueVectorElt>},
};
// clang-format on

constexpr bool hasElements(OpType type)
{
    return std::any_of(std::begin(kOperators), std::end(kOperators), [=](OpRow const& row) { return row.type == type; });
}
#define TAVRIN_OP(number, Class, name, Family) static_assert(hasElements(OpType::Class), "No element reads " #Class);
#include "transform/opTypes.def"
#undef TAVRIN_OP

// Which one depends on the version that the parent was chosen by.
std::unique_ptr<Element> createGammaParams(std::string const& tag, ContainerElt* parent, unsigned int line, std::string const& file)
{
    return dynamic_cast<GammaElt&>(*parent).createGammaParamsElt(tag, parent, line, file);
}

std::unique_ptr<Element> refuse(std::string const& tag, ContainerElt*, unsigned int line, std::string const& file)
{
    throw failure(ErrorIds::kXmlAttributeNotSupported, Module::kXmlReader, tag, file, line);
}

bool inUnfinishedArrayOwner(Element const& parent)
{
    auto const* const owner = dynamic_cast<ArrayMgt const*>(&parent);
    return owner && !owner->isCompleted();
}

constexpr char kRangeReason[] = ": Range Value tags not allowed in this element";
constexpr char kSopReason[] = ": Slope, Offset or Power tags not allowed in this element";

// clang-format off
constexpr ChildRow kChildren[] = {
    {TAG_INFO,              &in<TransformElt>,           &createElt<InfoElt>,              ": Info not allowed in this element"},
    {TAG_ARRAY,             &in<ArrayMgt>,               nullptr,                          ": Color::Array not allowed in this element"},
    {TAG_ARRAY,             &inUnfinishedArrayOwner,     &createElt<ArrayElt>,             ": Only one Color::Array allowed per op"},
    {TAG_DESCRIPTION,       &in<ContainerElt>,           &createElt<DescriptionElt>,       nullptr},
    {TAG_INPUT_DESCRIPTOR,  &in<TransformElt>,           &createElt<InputDescriptorElt>,   ": InputDescriptor not allowed in this element"},
    {TAG_OUTPUT_DESCRIPTOR, &in<TransformElt>,           &createElt<OutputDescriptorElt>,  ": OutputDescriptor not allowed in this element"},
    {TAG_INDEX_MAP,         &in<ContainerElt>,           &refuse,                          nullptr},
    {TAG_MIN_IN_VALUE,      &in<RangeElt>,               &createElt<RangeValueElt>,        kRangeReason},
    {TAG_MAX_IN_VALUE,      &in<RangeElt>,               &createElt<RangeValueElt>,        kRangeReason},
    {TAG_MIN_OUT_VALUE,     &in<RangeElt>,               &createElt<RangeValueElt>,        kRangeReason},
    {TAG_MAX_OUT_VALUE,     &in<RangeElt>,               &createElt<RangeValueElt>,        kRangeReason},
    {TAG_GAMMA_PARAMS,      &in<GammaElt>,               &createGammaParams,               ": Gamma Params not allowed in this element"},
    {TAG_EC_PARAMS,         &in<ExposureContrastElt>,    &createElt<ECParamsElt>,          ": E/C Params not allowed in this element"},
    {TAG_DYNAMIC_PARAMETER, &in<OpElt>,                  &createElt<DynamicParamElt>,      ": Dynamic properties not allowed in this element"},
    {TAG_LOG_PARAMS,        &in<LogElt>,                 &createElt<LogParamsElt>,         ": Log Params not allowed in this element"},
    {TAG_HUE_VECTOR_PARAMS, &in<HueVectorElt>,           &createElt<HueVectorParamsElt>,   ": HueVector Params not allowed in this element"},
    {TAG_SOPNODE,           &in<CDLElt>,                 &createElt<SOPNodeElt>,           ": SOPNode not allowed in this element"},
    {TAG_SLOPE,             &in<SOPNodeElt>,             &createElt<SOPValueElt>,          kSopReason},
    {TAG_OFFSET,            &in<SOPNodeElt>,             &createElt<SOPValueElt>,          kSopReason},
    {TAG_POWER,             &in<SOPNodeElt>,             &createElt<SOPValueElt>,          kSopReason},
    {TAG_SATNODE,           &in<CDLElt>,                 &createElt<SatNodeElt>,           ": SatNode not allowed in this element"},
    {TAG_SATURATION,        &in<SatNodeElt>,             &createElt<SaturationElt>,        ": Saturation not allowed in this element"},
};
// clang-format on

} // namespace

Op::OpType const* findOperator(char const* tag)
{
    auto const* const row =
        std::find_if(std::begin(kOperators), std::end(kOperators), [&](OpRow const& known) { return isTag(tag, known.tag); });
    return row == std::end(kOperators) ? nullptr : &row->type;
}

// Every type has a row.
char const* getOperatorTag(Op::OpType type)
{
    return std::find_if(std::begin(kOperators), std::end(kOperators), [=](OpRow const& row) { return row.type == type; })->tag;
}

std::unique_ptr<OpElt> OpElt::getReader(Op::OpType type, float version)
{
    auto const* const row =
        std::find_if(std::begin(kOperators), std::end(kOperators),
                     [&](OpRow const& known) { return known.type == type && known.versions.contains(version); });
    return row == std::end(kOperators) ? nullptr : row->create();
}

std::unique_ptr<Element> createChild(std::string const& tag, ContainerElt& parent, unsigned int line, std::string const& file)
{
    return createChild({kChildren}, tag, parent, line, file);
}

} // namespace Color::Xml::Reader
