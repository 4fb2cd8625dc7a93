// The base of callers' adaptors, and the handle to one.
#include <tavrin/gpuAdaptor.h>

namespace Tavrin
{

GPUAdaptor::GPUAdaptor(ShaderLanguage language, PipelineType pipeline) : m_language(language), m_pipeline(pipeline) {}
GPUAdaptor::~GPUAdaptor() = default;

GPUAdaptorPtr::GPUAdaptorPtr() = default;
GPUAdaptorPtr::GPUAdaptorPtr(GPUAdaptor* adaptor) : m_adaptor(adaptor) {}
GPUAdaptorPtr::GPUAdaptorPtr(GPUAdaptorPtr const& other) = default;
GPUAdaptorPtr::~GPUAdaptorPtr() = default;
GPUAdaptorPtr& GPUAdaptorPtr::operator=(GPUAdaptorPtr const& other) = default;

GPUAdaptorPtr& GPUAdaptorPtr::operator=(GPUAdaptor* adaptor)
{
    m_adaptor.reset(adaptor);
    return *this;
}

GPUAdaptor* GPUAdaptorPtr::operator->()
{
    return m_adaptor.get();
}

GPUAdaptor const* GPUAdaptorPtr::operator->() const
{
    return m_adaptor.get();
}

GPUAdaptor* GPUAdaptorPtr::get()
{
    return m_adaptor.get();
}

GPUAdaptor const* GPUAdaptorPtr::get() const
{
    return m_adaptor.get();
}

} // namespace Tavrin
