// The base of the generators of shader text, one of which stands for each operator while a shader is built.
#ifndef TAVRIN_RENDERER_GPU_OP_H
#define TAVRIN_RENDERER_GPU_OP_H

#include "renderer/GPUShaderUtils.h"
#include "transform/op.h"

#include <tavrin/gpuAdaptor.h>

#include <memory>
#include <string>

namespace Rendering
{

// "NAME_INDEX": the index keeps operators of one kind apart.
std::string getIndexedName(std::string const& name, int index);

// Lives while its operator's part of a shader is written. What has to live longer belongs to the adaptor or to the operator.
//
// The one thing that operators' texts share is the variable outColor, which each reads and writes; its values are parts of full
// signal, whatever the depths.
class GPUOp
{
public:
    // Index is the operator's place in the list, from 0.
    GPUOp(Tavrin::GPUAdaptorPtr const& adaptor, Color::Op const& op, unsigned int index);
    GPUOp(GPUOp const&) = delete;
    GPUOp& operator=(GPUOp const&) = delete;
    virtual ~GPUOp() = default;

    // What the texts are made from.
    virtual Color::Op const& getOp() const { return m_op; }

    // Hands uniforms and textures to the adaptor.
    void addResources();
    // These append: uniforms and samplers; functions; statements, in a block of their own.
    void addAttributeTextToShaderProgram(std::string& text);
    void addHelperMethodTextToShaderProgram(std::string& text);
    void addProcessingTextToShaderProgram(std::string& text);

protected:
    virtual void _addAttributeTextToShaderProgram(std::string& text);
    virtual void _addHelperMethodTextToShaderProgram(std::string& text);
    virtual void _addProcessingTextToShaderProgram(std::string& text) = 0;
    virtual void _addResources();

    Tavrin::GPUAdaptor& _getAdaptor() { return *m_adaptor.get(); }
    unsigned int _getIndex() const { return m_index; }
    // Empty, in the adaptor's language.
    GPUShaderUtils::ShaderText _newText(unsigned int indent) const;

    // A property whose value the adaptor reads anew for each drawing.
    template <class Property>
    void _addUniform(Property const& property, bool isBoolean)
    {
        _getAdaptor().addUniform(property.getIdentifier(), property.isDynamic(), _nameOf(property).c_str(), isBoolean,
                                 property.getAddress());
    }
    template <class Property>
    std::string _declarationOf(Property const& property) const
    {
        return "uniform float " + _nameOf(property) + ";\n";
    }
    template <class Property>
    std::string _nameOf(Property const& property) const
    {
        return getIndexedName(property.getPropertyName(), static_cast<int>(m_index));
    }

private:
    // "// Step INDEX: TYPE: IDENTIFIER ENDING".
    std::string _stepComment(char const* indent, std::string const& ending) const;

    Tavrin::GPUAdaptorPtr m_adaptor;
    Color::Op const& m_op;
    unsigned int m_index;
};

// A generator that knows its operator's class.
template <class AnyOp>
class TypedGPUOp : public GPUOp
{
public:
    TypedGPUOp(Tavrin::GPUAdaptorPtr const& adaptor, AnyOp const& op, unsigned int index) : GPUOp(adaptor, op, index) {}

protected:
    AnyOp const& _getTypedOp() const { return static_cast<AnyOp const&>(getOp()); }
};

} // namespace Rendering

#endif
