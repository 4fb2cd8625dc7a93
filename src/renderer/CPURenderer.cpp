// From an operator list to renderers: it is set to the depths of the two formats, then each operator's family picks.
#include "renderer/CPURenderer.h"

#include "renderer/CPUSelector.h"
#include "renderer/opRenderers.h"
#include "renderer/renderableOp.h"
#include "renderer/transformTools.h"
#include "transform/ops.h"
#include "utils/errorMessage.h"
#include "utils/logger.h"
#include "utils/utils.h"

#include <algorithm>
#include <array>

namespace Rendering
{

namespace
{

using Color::BitDepth;
using Color::Op;
using Color::Transform;
namespace ErrorIds = Color::ErrorIds;
namespace Module = Color::Module;

// Logs what is built, for people who wonder what became of their transform.
class Dump
{
public:
    Dump()
    {
        char const* const value = Foundation::Utils::getEnv("TAVRIN_DUMP_CPU");
        m_wanted = value != nullptr && *value != '\0';
    }

    void begin(Transform const& transform) const
    {
        if (m_wanted)
            Color::Logger::log(Color::LOG_USER, "Transform %s", transform.getName().c_str());
    }
    void op(Op const& op) const
    {
        if (m_wanted)
            Color::Logger::log(Color::LOG_USER, "Op %s: [%s, %s]", op.getOpTypeName().c_str(),
                               Tavrin::getBitDepthName(op.getInputBitDepth()), Tavrin::getBitDepthName(op.getOutputBitDepth()));
    }
    void end() const
    {
        if (m_wanted)
            Color::Logger::log(Color::LOG_USER, "*********");
    }

private:
    bool m_wanted;
};

using AddAlgorithm = void (*)(Op const& op, TransformProcessor& processor);

constexpr std::array kFamilies = {
#define TAVRIN_OP(number, Class, name, Family)                   \
    AddAlgorithm([](Op const& op, TransformProcessor& processor) \
                 { Family::addAlgorithm(static_cast<Color::Class const&>(op), processor); }),
#include "transform/opTypes.def"
#undef TAVRIN_OP
};

void addProcessor(Op const& op, TransformProcessor& processor)
{
    requireFinalized(op);
    kFamilies.at(static_cast<std::size_t>(op.getOpType()))(op, processor);
}

// Both differences are worked out first, so that a lone operator gets both.
void adjustBitDepth(Transform& transform, PixelFormat in, PixelFormat out)
{
    BitDepth const inDepth = Color::Utils::depthOf(in);
    BitDepth const outDepth = Color::Utils::depthOf(out);
    bool const changesInput = transform.getInputBitDepth() != inDepth;
    bool const changesOutput = transform.getOutputBitDepth() != outDepth;
    if (changesInput)
        transform.setInputBitDepth(inDepth);
    if (changesOutput)
        transform.setOutputBitDepth(outDepth);
}

// There is always a renderer: where nothing is to be done, a scale changes the depth. Without operators the code values stay.
void addDepthConversion(Transform const& transform, TransformProcessor& processor)
{
    Color::MatrixOp matrix(Tavrin::BIT_DEPTH_8i, Tavrin::BIT_DEPTH_8i, "", "", Color::Descriptions());
    if (!transform.getOps().empty())
    {
        matrix.setInputBitDepth(transform.getInputBitDepth());
        matrix.setOutputBitDepth(transform.getOutputBitDepth());
    }
    MatrixRenderer::addAlgorithm(matrix, processor);
}

} // namespace

Pipeline makePipeline(std::shared_ptr<Transform> const& transform, PixelFormat in, PixelFormat out)
{
    if (transform == nullptr)
        throw Color::failure(ErrorIds::kRendererTransformNull, Module::kRenderer);
    if (transform->hasUnresolvedReferences())
        refuseUnresolved();

    Pipeline pipeline{transform, std::make_shared<TransformProcessor>(), {}};
    if (!transform->getOps().empty())
    {
        Color::TransformTools::setIntermediateBitdepth(Tavrin::BIT_DEPTH_32f, pipeline.transform);
        adjustBitDepth(*transform, in, out);
    }
    Color::OpList const& ops = transform->getOps();
    TransformProcessor& renderers = *pipeline.renderers;
    Dump const dump;
    dump.begin(*transform);
    for (unsigned int i = 0; i < ops.size(); ++i)
    {
        dump.op(ops.get(i));
        std::size_t const before = renderers.size();
        addProcessor(ops.get(i), renderers);
        pipeline.rendererOfOp.push_back(renderers.size() > before ? &renderers[before] : nullptr);
    }
    dump.end();
    if (renderers.empty())
        addDepthConversion(*transform, renderers);
    return pipeline;
}

bool Pipeline::convertsDepthOnly() const
{
    return std::all_of(rendererOfOp.begin(), rendererOfOp.end(), [](auto const* renderer) { return renderer == nullptr; });
}

void CPURenderer::finalize(std::shared_ptr<Transform> const& transform, PixelFormat in, PixelFormat out)
{
    m_valueTables.reset();
    m_processor.reset();
    m_processor = makePipeline(transform, in, out).renderers;
    m_valueTables = std::make_unique<ValueTablesOnDemand>(*m_processor, in, out);
    m_inPF = in;
    m_outPF = out;
}

void CPURenderer::apply(void const* source, void* destination, ROI const& roi, unsigned int sourcePadding,
                        unsigned int destinationPadding)
{
    CPUEngine(m_inPF, m_outPF)
        .apply(source, destination, roi, sourcePadding, destinationPadding, *m_processor,
               m_valueTables->get(std::size_t{roi.width} * roi.height));
}

unsigned int CPURenderer::getNumRenderers() const
{
    return m_processor == nullptr ? 0 : static_cast<unsigned int>(m_processor->size());
}

unsigned int CPURenderer::getRendererType(unsigned int index) const
{
    if (index >= getNumRenderers())
        throw Color::failure(ErrorIds::kRendererIndex, Module::kRenderer);
    return static_cast<unsigned int>((*m_processor)[index].getOpType());
}

} // namespace Rendering
