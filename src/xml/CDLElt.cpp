// The element <ASC_CDL>, and those of its numbers.
#include "xml/CDLElt.h"

#include "utils/utils.h"
#include "xml/ctfVocabulary.h"

#include <iterator>

namespace Color::Xml::Reader
{

namespace
{

struct SOPValue
{
    char const* tag;
    void (CDLOp::*set)(CDLOp::ChannelParams const&);
    ErrorId missing;
};

constexpr SOPValue kSOPValues[] = {
    {TAG_SLOPE, &CDLOp::setSlopeParams, ErrorIds::kSopSlopeRequired},
    {TAG_OFFSET, &CDLOp::setOffsetParams, ErrorIds::kSopOffsetRequired},
    {TAG_POWER, &CDLOp::setPowerParams, ErrorIds::kSopPowerRequired},
};

} // namespace

void CDLNodeElt::appendDescription(std::string const& text)
{
    getCDLOp()->getDescriptions() += text;
}

void SOPNodeBaseElt::start(char const**)
{
    m_isSet.fill(false);
}

void SOPNodeBaseElt::end()
{
    for (std::size_t i = 0; i < std::size(kSOPValues); ++i)
    {
        if (!m_isSet[i])
            throw failure(kSOPValues[i].missing, getTypeName());
    }
}

SOPValueElt::SOPValueElt(std::string const& name, ContainerElt* parent, unsigned int line, std::string const& file)
    : NumberListElt(name, parent, line, file, 3, ErrorIds::kSopThreeValues)
{
}

void SOPValueElt::setNumbers(std::vector<double> const& numbers)
{
    auto& node = parentAs<SOPNodeBaseElt>();
    for (std::size_t i = 0; i < std::size(kSOPValues); ++i)
    {
        if (Foundation::Utils::strcasecmp(getName().c_str(), kSOPValues[i].tag) == 0)
        {
            (node.getCDLOp()->*kSOPValues[i].set)({numbers[0], numbers[1], numbers[2]});
            node.markSet(i);
        }
    }
}

SaturationElt::SaturationElt(std::string const& name, ContainerElt* parent, unsigned int line, std::string const& file)
    : NumberListElt(name, parent, line, file, 1, ErrorIds::kSatNotSingle)
{
}

void SaturationElt::setNumbers(std::vector<double> const& numbers)
{
    parentAs<SatNodeBaseElt>().getCDLOp()->setSaturation(numbers.front());
}

} // namespace Color::Xml::Reader
