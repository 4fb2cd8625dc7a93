// The frame around each operator's text: comments, a block, and the switch of a dynamic bypass.
#include "renderer/GPUOp.h"

#include <algorithm>

namespace Rendering
{

namespace
{

// A comment never fills more than so many characters, its line end included.
constexpr std::size_t kLongestComment = 199;

// Names come from files. Whatever one holds, the comment ends where its line ends.
std::string commentLine(std::string text)
{
    std::replace_if(
        text.begin(), text.end(), [](char c) { return c >= '\0' && c < ' '; }, ' ');
    text.resize(std::min(text.size(), kLongestComment - 1));
    return text + '\n';
}

} // namespace

std::string getIndexedName(std::string const& name, int index)
{
    return name + '_' + std::to_string(index);
}

GPUOp::GPUOp(Tavrin::GPUAdaptorPtr const& adaptor, Color::Op const& op, unsigned int index)
    : m_adaptor(adaptor), m_op(op), m_index(index)
{
}

void GPUOp::addResources()
{
    if (m_op.getBypass()->isDynamic())
        _addUniform(*m_op.getBypass(), true);
    _addResources();
}

void GPUOp::addAttributeTextToShaderProgram(std::string& text)
{
    text += _stepComment("", "attributes");
    if (m_op.getBypass()->isDynamic())
        text += _declarationOf(*m_op.getBypass());
    _addAttributeTextToShaderProgram(text);
}

void GPUOp::addHelperMethodTextToShaderProgram(std::string& text)
{
    text += _stepComment("", "helper methods");
    _addHelperMethodTextToShaderProgram(text);
}

void GPUOp::addProcessingTextToShaderProgram(std::string& text)
{
    text += _stepComment("  ", GPUShaderUtils::formatText("[%s => %s]", Tavrin::getBitDepthName(getOp().getInputBitDepth()),
                                                          Tavrin::getBitDepthName(getOp().getOutputBitDepth())));
    if (m_op.getBypass()->isDynamic())
        text += "  if(" + _nameOf(*m_op.getBypass()) + "!=1.0)\n";
    text += "  {\n";
    _addProcessingTextToShaderProgram(text);
    text += "  }\n";
}

void GPUOp::_addAttributeTextToShaderProgram(std::string&) {}

void GPUOp::_addHelperMethodTextToShaderProgram(std::string&) {}

void GPUOp::_addResources() {}

GPUShaderUtils::ShaderText GPUOp::_newText(unsigned int indent) const
{
    GPUShaderUtils::ShaderText text(m_adaptor->getLanguage());
    text.setIndent(indent);
    return text;
}

std::string GPUOp::_stepComment(char const* indent, std::string const& ending) const
{
    std::string text(1, '\n');
    text += commentLine(GPUShaderUtils::formatText("%s// Step %d: %s: %s %s", indent, m_index, getOp().getOpTypeName(),
                                                   getOp().getMeaningfullIdentifier(), ending));
    return text;
}

} // namespace Rendering
