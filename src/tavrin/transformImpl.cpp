// The transform behind a public handle. No Color::Exception leaves a public operation: it becomes the status.
#include "tavrin/transformImpl.h"

#include "renderer/optimizer.h"
#include "tavrin/contentExtraction.h"
#include "transform/referenceOp.h"
#include "utils/errorMessage.h"
#include "utils/preferencesLock.h"
#include "utils/utils.h"
#include "xml/xmlTransformResolver.h"

#include <set>

namespace Tavrin::Impl
{

namespace
{

namespace ErrorIds = Color::ErrorIds;
namespace Module = Color::Module;
using Color::statusOf;

using CloneType = Color::Transform::CloneType;

std::string textOf(char const* text)
{
    return text == nullptr ? std::string() : std::string(text);
}

Color::Exception noRenderer(char const* which)
{
    return Color::failure(ErrorIds::kNoRenderer, Module::kLibrary, which);
}

// One description a line.
std::string concatenateDescriptions(Color::Descriptions const& descriptions)
{
    std::string lines;
    for (std::string const& text : descriptions.getList())
    {
        if (&text != &descriptions.getList().front())
            lines += '\n';
        lines += text;
    }
    return lines;
}

// A transform without operators has no depth to tell.
template <class Getter>
BitDepth depthOrUnknown(Color::Transform const& transform, Getter getDepth)
{
    return transform.getOps().empty() ? BIT_DEPTH_UNKNOWN : (transform.*getDepth)();
}

// The aliases that references to them, and references in the files that these stand for, depend on.
void collectAliases(Color::OpList const& ops, std::set<std::string>& aliases)
{
    for (unsigned int i = 0; i < ops.size(); ++i)
    {
        if (ops.get(i).getOpType() != Color::Op::OpType::ReferenceOp)
            continue;
        auto const& reference = static_cast<Color::ReferenceOp const&>(ops.get(i));
        if (!reference.getCurrentAlias().empty())
            aliases.insert(reference.getCurrentAlias());
        collectAliases(reference.getResolvedOps(), aliases);
    }
}

// What is between two rows, in bytes. A stride below the row's size wraps, and the engine's sum of both wraps back to the stride.
unsigned int paddingOf(unsigned int stride, PixelFormat format, ROI const& roi)
{
    return stride - getPixelSizeInByte(format) * roi.imageWidth;
}

} // namespace

// What the alias of the current monitor stood for before is not known, so that it is resolved here in any case.
Transform::Transform(std::shared_ptr<Color::Transform> transform, std::string const& fullPath)
    : m_transform(std::move(transform)), m_fullPath(fullPath)
{
    if (!m_transform->hasReferences())
        return;
    m_registration = std::make_unique<AliasRegistration>(*this);
    auto const lock = Color::lockPreferences();
    if (m_transform->hasUnresolvedReferences() || m_transform->hasAliasReferencesToResolve())
        _resolve(RESOLVE_GRAPHICS_MONITOR);
    if (m_transform->hasAliasReferencesToResolve())
        m_resolveFlags = RESOLVE_GRAPHICS_MONITOR;
    _registerToAliases();
}

std::shared_ptr<Color::Transform> Transform::getModel(TransformPtr const& handle)
{
    auto const* const transform = dynamic_cast<Transform const*>(handle.get());
    return transform == nullptr ? nullptr : transform->m_transform;
}

TransformPtr Transform::clone() const
{
    TransformPtr copy;
    statusOf([&] { copy.reset(new Transform(m_transform->clone(CloneType::Plain), m_fullPath)); });
    return copy;
}

char const* Transform::getId() const
{
    return m_transform->getId().c_str();
}

TavStatus Transform::setId(char const* id)
{
    return statusOf([&] { m_transform->setId(textOf(id)); });
}

char const* Transform::getName() const
{
    return m_transform->getName().c_str();
}

TavStatus Transform::setName(char const* name)
{
    return statusOf([&] { m_transform->setName(textOf(name)); });
}

char const* Transform::getDescriptions() const
{
    static std::string buffer;
    buffer = concatenateDescriptions(m_transform->getDescriptions());
    return buffer.c_str();
}

TavStatus Transform::setDescription(char const* description)
{
    return statusOf(
        [&]
        {
            std::string const text = textOf(description); // Read before anything is cleared: it may be a text of this transform.
            m_transform->getDescriptions().clear();
            m_transform->getDescriptions() += text;
        });
}

char const* Transform::getInputDescriptor() const
{
    return m_transform->getInputDescriptor().c_str();
}

TavStatus Transform::setInputDescriptor(char const* descriptor)
{
    return statusOf([&] { m_transform->setInputDescriptor(textOf(descriptor)); });
}

char const* Transform::getOutputDescriptor() const
{
    return m_transform->getOutputDescriptor().c_str();
}

TavStatus Transform::setOutputDescriptor(char const* descriptor)
{
    return statusOf([&] { m_transform->setOutputDescriptor(textOf(descriptor)); });
}

BitDepth Transform::getInputBitDepth() const
{
    return depthOrUnknown(*m_transform, &Color::Transform::getInputBitDepth);
}

BitDepth Transform::getOutputBitDepth() const
{
    return depthOrUnknown(*m_transform, &Color::Transform::getOutputBitDepth);
}

PixelFormat Transform::getInputPixelFormat() const
{
    return m_inputPixelFormat;
}

TavStatus Transform::setInputPixelFormat(PixelFormat format)
{
    return setPixelFormats(format, m_outputPixelFormat);
}

PixelFormat Transform::getOutputPixelFormat() const
{
    return m_outputPixelFormat;
}

TavStatus Transform::setOutputPixelFormat(PixelFormat format)
{
    return setPixelFormats(m_inputPixelFormat, format);
}

TavStatus Transform::setPixelFormats(PixelFormat input, PixelFormat output)
{
    if (input == m_inputPixelFormat && output == m_outputPixelFormat)
        return TavStatus();
    return finalize(input, output, m_rendererFlags, m_optimizerFlags, m_resolveFlags);
}

bool Transform::isInverseOf(TransformPtr const& other) const
{
    std::shared_ptr<Color::Transform> const model = getModel(other);
    return model != nullptr && m_transform->isInverseOf(*model);
}

bool Transform::hasReferences() const
{
    return m_transform->hasReferences();
}

bool Transform::hasAliasReferencesToResolve() const
{
    return m_transform->hasAliasReferencesToResolve();
}

TavStatus Transform::extractContent(ContentCallbacks& callbacks) const
{
    return statusOf([&] { Tavrin::extractContent(*m_transform, m_fullPath, callbacks); });
}

TavStatus Transform::setDynamicProperty(DynamicProperty const& property)
{
    return statusOf([&] { m_transform->setDynamicProperty(property); });
}

TavStatus Transform::getDynamicProperty(DynamicProperty& property) const
{
    return statusOf([&] { m_transform->getDynamicProperty(property); });
}

TavStatus Transform::setGPUAdaptor(GPUAdaptorPtr& adaptor)
{
    m_gpuAdaptor = adaptor;
    _releaseRenderers();
    return TavStatus();
}

GPUAdaptorPtr Transform::getGPUAdaptor() const
{
    return m_gpuAdaptor;
}

// The values are stored before anything can fail, so that update repeats a failed finalize. Renderers are kept when all of them
// are built; any failure leaves none.
TavStatus Transform::finalize(PixelFormat input, PixelFormat output, RendererFlags rendererFlags, OptimizerFlags optimizerFlags,
                              ResolveFlags resolveFlags)
{
    auto const lock = _lockAgainstAliases();
    m_rendererFlags = rendererFlags;
    m_optimizerFlags = optimizerFlags;
    m_inputPixelFormat = input;
    m_outputPixelFormat = output;
    _releaseRenderers();
    return statusOf(
        [&]
        {
            if (m_transform->hasReferences())
                _resolveAnew(resolveFlags);
            std::shared_ptr<Color::Transform> flat = m_transform->clone(CloneType::Flat);
            Color::TransformTools::optimize(flat, m_optimizerFlags);
            auto cpuRenderer = _createCPURenderer(flat);
            auto gpuRenderer = _createGPURenderer(flat);
            m_cpuRenderer = std::move(cpuRenderer);
            m_gpuRenderer = std::move(gpuRenderer);
        });
}

TavStatus Transform::applyCPU(void const* source, ROI const& roi, void* destination)
{
    TavStatus const status = statusOf([&] { _requireCPURenderer(); });
    if (!status)
        return status;
    unsigned int const sourceStride = getPixelSizeInByte(m_inputPixelFormat) * roi.imageWidth;
    unsigned int const destinationStride = getPixelSizeInByte(m_outputPixelFormat) * roi.imageWidth;
    return applyCPU(source, sourceStride, roi, destination, destinationStride);
}

TavStatus Transform::applyCPU(void const* source, unsigned int sourceStride, ROI const& roi, void* destination,
                              unsigned int destinationStride)
{
    return statusOf(
        [&]
        {
            _requireCPURenderer();
            Color::Utils::validateROI(roi);
            m_cpuRenderer->apply(source, destination, roi, paddingOf(sourceStride, m_inputPixelFormat, roi),
                                 paddingOf(destinationStride, m_outputPixelFormat, roi));
        });
}

TavStatus Transform::applyGPU(unsigned int textureId, Vertices const& position, Vertices const& textureCoordinates) const
{
    return statusOf(
        [&]
        {
            if (m_gpuRenderer == nullptr)
                throw noRenderer("GPU");
            m_gpuRenderer->apply(textureId, position, textureCoordinates);
        });
}

void Transform::update()
{
    auto const lock = _lockAgainstAliases();
    m_transform->unresolve();
    finalize(m_inputPixelFormat, m_outputPixelFormat, m_rendererFlags, m_optimizerFlags, m_resolveFlags);
}

void Transform::extractOptimizedContent(PixelFormat input, PixelFormat output, OptimizerFlags optimizerFlags,
                                        ContentCallbacks& callbacks) const
{
    extractPipeline(Rendering::makePipeline(getOptimizedTransform(optimizerFlags), input, output), input, output, callbacks);
}

std::shared_ptr<Color::Transform> Transform::getOptimizedTransform(OptimizerFlags flags) const
{
    std::shared_ptr<Color::Transform> flat = getResolvedTransform()->clone(CloneType::Flat);
    Color::TransformTools::optimize(flat, flags);
    return flat;
}

std::shared_ptr<Color::Transform> Transform::getResolvedTransform() const
{
    if (!m_transform->hasReferences())
        return m_transform;
    if (!m_transform->hasUnresolvedReferences())
        return m_transform->clone(CloneType::Flat);
    std::shared_ptr<Color::Transform> const copy = m_transform->clone(CloneType::Plain);
    Color::TransformUtils::resolve(m_fullPath, m_resolveFlags, copy);
    return copy->clone(CloneType::Flat);
}

// A change of an alias in another thread finalizes too.
std::unique_lock<std::recursive_mutex> Transform::_lockAgainstAliases() const
{
    return m_registration ? Color::lockPreferences() : std::unique_lock<std::recursive_mutex>();
}

void Transform::_resolve(ResolveFlags flags)
{
    m_transform->unresolve();
    Color::TransformUtils::resolve(m_fullPath, flags, m_transform);
}

// Where that is needed. Files that come in through an alias may bring in other aliases; a failure with the same flags leaves the
// old ones registered, so that a change of one of them may mend it.
void Transform::_resolveAnew(ResolveFlags flags)
{
    bool const hasNewFlags = flags != m_resolveFlags;
    if (hasNewFlags)
        _deregisterFromAliases();
    if (hasNewFlags || m_transform->hasUnresolvedReferences())
    {
        _resolve(flags);
        m_resolveFlags = flags;
        _registerToAliases();
    }
}

void Transform::_registerToAliases()
{
    std::set<std::string> aliases;
    collectAliases(m_transform->getOps(), aliases);
    m_registration->registerTo(aliases);
}

void Transform::_deregisterFromAliases()
{
    m_registration->deregister();
    if (m_transform->hasUnresolvedReferences())
        throw Color::failure(ErrorIds::kUnresolvedReferences, Module::kLibrary);
}

std::shared_ptr<Rendering::GenericCPURenderer>
Transform::_createCPURenderer(std::shared_ptr<Color::Transform> const& transform) const
{
    if ((m_rendererFlags & RENDERER_CPU) == 0)
        return nullptr;
    auto renderer = Rendering::getCPURenderer(Rendering::RENDERING_CPU);
    // A copy of large tables takes its time; only a GPU renderer needs the transform after this.
    bool const isShared = (m_rendererFlags & RENDERER_GPU) != 0;
    renderer->finalize(isShared ? transform->clone(CloneType::Plain) : transform, m_inputPixelFormat, m_outputPixelFormat);
    return renderer;
}

std::shared_ptr<Rendering::GenericGPURenderer> Transform::_createGPURenderer(std::shared_ptr<Color::Transform> const& transform)
{
    if ((m_rendererFlags & RENDERER_GPU) == 0)
        return nullptr;
    auto renderer = Rendering::getGPURenderer(Rendering::RENDERING_GPU);
    if (m_gpuAdaptor.get() == nullptr)
        throw noRenderer("GPU");
    renderer->setGPUAdaptor(m_gpuAdaptor);
    renderer->finalize(transform);
    return renderer;
}

void Transform::_releaseRenderers()
{
    m_cpuRenderer.reset();
    m_gpuRenderer.reset();
}

void Transform::_requireCPURenderer() const
{
    if (m_cpuRenderer == nullptr)
        throw noRenderer("CPU");
}

} // namespace Tavrin::Impl
