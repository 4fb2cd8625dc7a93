// The model of one transform: identity, descriptive fields and the list of operators.
#ifndef TAVRIN_TRANSFORM_TRANSFORM_H
#define TAVRIN_TRANSFORM_TRANSFORM_H

#include "transform/descriptions.h"
#include "transform/metadata.h"
#include "transform/opList.h"

#include <memory>
#include <string>

namespace Color
{

class Transform
{
public:
    enum class CloneType
    {
        // References stay references.
        Plain = 0,
        // References are replaced by the operators that they resolved to (unresolved ones are refused), and operators with a
        // static bypass are left out.
        Flat = 1
    };

    // A new UUID as id.
    Transform();
    Transform(std::string const& id, std::string const& name, Descriptions const& descriptions, std::string const& inputDescriptor,
              std::string const& outputDescriptor);
    Transform(Transform const&) = delete;
    Transform& operator=(Transform const&) = delete;
    virtual ~Transform();

    // Gives an empty id a new UUID and validates the operators.
    virtual void validate();

    std::string const& getId() const { return m_id; }
    // Refuses an empty id.
    void setId(std::string const& id);
    std::string const& getName() const { return m_name; }
    void setName(std::string const& name) { m_name = name; }
    Metadata const& getInfo() const { return m_info; }
    Metadata& getInfo() { return m_info; }
    Descriptions const& getDescriptions() const { return m_descriptions; }
    Descriptions& getDescriptions() { return m_descriptions; }
    std::string const& getInputDescriptor() const { return m_inputDescriptor; }
    void setInputDescriptor(std::string const& descriptor) { m_inputDescriptor = descriptor; }
    std::string const& getOutputDescriptor() const { return m_outputDescriptor; }
    void setOutputDescriptor(std::string const& descriptor) { m_outputDescriptor = descriptor; }
    OpList const& getOps() const { return m_ops; }
    OpList& getOps() { return m_ops; }

    // The id of the transform of which this is the inverse.
    std::string const& getInverseOfId() const { return m_inverseOfId; }
    void setInverseOfId(std::string const& id) { m_inverseOfId = id; }
    void setInverseOfId(Transform const& other) { m_inverseOfId = other.getId(); }
    bool isInverseOf(Transform const& other) const;

    // These throw when there are no operators.
    BitDepth getInputBitDepth() const;
    BitDepth getOutputBitDepth() const;
    void setInputBitDepth(BitDepth depth);
    void setOutputBitDepth(BitDepth depth);

    // Adds the other's descriptions, and clones of its operators with no change of depths.
    void append(Transform const& other);
    // The info is not copied.
    std::shared_ptr<Transform> clone(CloneType type) const;

    void setDynamicProperty(DynamicProperty const& property) { m_ops.setDynamicProperty(property); }
    void getDynamicProperty(DynamicProperty& property) const { m_ops.getDynamicProperty(property); }
    bool hasReferences() const { return m_ops.hasReferences(); }
    bool hasUnresolvedReferences() const { return m_ops.hasUnresolvedReferences(); }
    bool hasAliasReferencesToResolve() const { return m_ops.hasAliasReferencesToResolve(); }
    void unresolve() { m_ops.unresolve(); }

    // The info plays no part.
    bool operator==(Transform const& other) const;

private:
    std::string m_id;
    std::string m_name;
    Metadata m_info;
    Descriptions m_descriptions;
    std::string m_inputDescriptor;
    std::string m_outputDescriptor;
    OpList m_ops;
    std::string m_inverseOfId;
};

} // namespace Color

#endif
