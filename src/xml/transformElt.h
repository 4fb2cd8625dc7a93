// The element <ProcessList>, the root of a transform file, and the texts that describe a transform or an operator.
#ifndef TAVRIN_XML_TRANSFORM_ELT_H
#define TAVRIN_XML_TRANSFORM_ELT_H

#include "transform/transform.h"
#include "xml/xmlReaderElements.h"

#include <memory>
#include <string>

namespace Color::Xml::Reader
{

class TransformElt : public ContainerElt
{
public:
    // Makes the transform that the document fills.
    TransformElt(std::string const& name, unsigned int line, std::string const& file);

    void start(char const** attributes) override;
    // Validates the transform.
    void end() override;
    std::string const& getIdentifier() const override { return m_transform->getId(); }
    std::string const& getTypeName() const override;
    void appendDescription(std::string const& text) override;
    float getVersion() const override { return m_version; }
    // Throws for a version above the newest.
    void setVersion(float version);

    std::shared_ptr<Transform> const& getTransform() const { return m_transform; }
    // The descriptors become the transform's at the end.
    std::string& getInputDescriptor() { return m_inputDescriptor; }
    std::string& getOutputDescriptor() { return m_outputDescriptor; }

private:
    void _readVersion(char const* text);

    std::shared_ptr<Transform> m_transform;
    float m_version = 1.5F;
    std::string m_inputDescriptor;
    std::string m_outputDescriptor;
};

// <Description>: each line is an entry of the parent's descriptions.
class DescriptionElt : public PlainElt
{
public:
    using PlainElt::PlainElt;

    void setRawData(std::string const& text, unsigned int line) override;
};

// <InputDescriptor> and <OutputDescriptor>: lines are joined with nothing between them. The parent is a TransformElt.
class InputDescriptorElt : public PlainElt
{
public:
    using PlainElt::PlainElt;

    void setRawData(std::string const& text, unsigned int line) override;
};

class OutputDescriptorElt : public PlainElt
{
public:
    using PlainElt::PlainElt;

    void setRawData(std::string const& text, unsigned int line) override;
};

} // namespace Color::Xml::Reader

#endif
