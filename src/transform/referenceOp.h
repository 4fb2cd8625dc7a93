// A pointer to another transform file, by path or by alias.
#ifndef TAVRIN_TRANSFORM_REFERENCE_OP_H
#define TAVRIN_TRANSFORM_REFERENCE_OP_H

#include "transform/opList.h"

#include <optional>
#include <string>

namespace Color
{

using Tavrin::BasePath;

// Stands for the operators of another file. Which ones these are is found out elsewhere and told by setResolvedOps; until then the
// reference is unresolved. An alias decides where there is a path too.
class ReferenceOp : public TypedOp<ReferenceOp, Op::OpType::ReferenceOp>
{
public:
    // 32f to 32f and pointing nowhere: not yet valid.
    ReferenceOp();
    ReferenceOp(BitDepth in, BitDepth out, std::string const& id, std::string const& name, Descriptions const& descriptions,
                std::string const& alias);
    ReferenceOp(BitDepth in, BitDepth out, std::string const& id, std::string const& name, Descriptions const& descriptions,
                std::string const& path, BasePath basePath);

    // The ends of the resolved operators keep the depths of the reference.
    void setInputBitDepth(BitDepth depth) override;
    void setOutputBitDepth(BitDepth depth) override;
    // An alias or a path is needed, and resolved operators that are valid.
    void validate() const override;
    bool needsResolving() const override { return !m_resolvedOps.has_value(); }
    // The dynamic properties are those of the resolved operators; an unresolved reference has none.
    bool isDynamic() const override;
    bool hasDynamicProperty(DynamicProperty::Ids id) const override;
    void setDynamicProperty(DynamicProperty const& property) override;
    void getDynamicProperty(DynamicProperty& property) const override;
    bool operator==(Op const& other) const override;
    // Forgets the resolved operators, and what the alias was taken for.
    void unresolve() override;

    std::string const& getAlias() const { return m_alias; }
    // The alias in force: it differs from the alias where that is the one for the current monitor and has been resolved.
    std::string const& getCurrentAlias() const { return m_currentAlias; }
    // Forgets the base path and the resolved operators; a path stays.
    void setAlias(std::string const& alias);

    std::string const& getPath() const { return m_path; }
    BasePath getBasePath() const { return m_basePath; }
    // Forgets the resolved operators; an alias stays.
    void setPath(std::string const& path, BasePath basePath);

    // Whether what the reference stands for depends on the flags of resolving: it or a reference that it resolved to, at any depth,
    // is the alias for the current monitor.
    bool isAliasToResolve() const;
    // Takes the alias in force for the monitor of these flags, if it is the one for the current monitor.
    void resolveAlias(Tavrin::ResolveFlags flags);

    // Throws while the reference is unresolved.
    OpList const& getResolvedOps() const;
    // Keeps a copy, whose ends take the depths of the reference.
    void setResolvedOps(OpList const& ops);

private:
    void _checkIfResolved() const;

    std::string m_alias;
    std::string m_currentAlias;
    std::string m_path;
    BasePath m_basePath = Tavrin::BASE_PATH_NONE;
    std::optional<OpList> m_resolvedOps;
};

} // namespace Color

#endif
