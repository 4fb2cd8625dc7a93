// A pointer to another transform file, by path or by alias.
#include "transform/referenceOp.h"

#include "utils/errorMessage.h"
#include "utils/nameTable.h"
#include "utils/preferences.h"

namespace Color
{

namespace
{

// The alias that stands for another one, by the kind of monitor.
constexpr char kCurrentMonitor[] = "currentMonitor";
constexpr Utils::NameTable<Tavrin::ResolveFlags, 2> kMonitors{{{
    {Tavrin::RESOLVE_GRAPHICS_MONITOR, ALIAS_GRAPHICS_MONITOR},
    {Tavrin::RESOLVE_BROADCAST_MONITOR, ALIAS_BROADCAST_MONITOR},
}}};

} // namespace

ReferenceOp::ReferenceOp() : TypedOp(Tavrin::BIT_DEPTH_32f, Tavrin::BIT_DEPTH_32f) {}

ReferenceOp::ReferenceOp(BitDepth in, BitDepth out, std::string const& id, std::string const& name,
                         Descriptions const& descriptions, std::string const& alias)
    : TypedOp(in, out, id, name, descriptions), m_alias(alias), m_currentAlias(alias)
{
}

ReferenceOp::ReferenceOp(BitDepth in, BitDepth out, std::string const& id, std::string const& name,
                         Descriptions const& descriptions, std::string const& path, BasePath basePath)
    : TypedOp(in, out, id, name, descriptions), m_path(path), m_basePath(basePath)
{
}

void ReferenceOp::setInputBitDepth(BitDepth depth)
{
    Op::setInputBitDepth(depth);
    if (m_resolvedOps && !m_resolvedOps->empty())
        m_resolvedOps->get(0).setInputBitDepth(depth);
}

void ReferenceOp::setOutputBitDepth(BitDepth depth)
{
    Op::setOutputBitDepth(depth);
    if (m_resolvedOps && !m_resolvedOps->empty())
        m_resolvedOps->get(m_resolvedOps->size() - 1).setOutputBitDepth(depth);
}

void ReferenceOp::validate() const
{
    Op::validate();
    if (m_alias.empty() && m_path.empty())
        throw failure(ErrorIds::kReferenceWithoutTarget, Module::kReference, getMeaningfullIdentifier());
    if (m_resolvedOps)
        m_resolvedOps->validate();
}

bool ReferenceOp::isDynamic() const
{
    return m_resolvedOps && m_resolvedOps->isDynamic();
}

bool ReferenceOp::hasDynamicProperty(DynamicProperty::Ids id) const
{
    return m_resolvedOps && m_resolvedOps->hasDynamicProperty(id);
}

void ReferenceOp::setDynamicProperty(DynamicProperty const& property)
{
    _checkIfResolved();
    m_resolvedOps->setDynamicProperty(property);
}

void ReferenceOp::getDynamicProperty(DynamicProperty& property) const
{
    getResolvedOps().getDynamicProperty(property);
}

bool ReferenceOp::operator==(Op const& other) const
{
    if (this == &other)
        return true;
    if (other.getOpType() != getOpType() || !Op::operator==(other))
        return false;
    auto const& reference = static_cast<ReferenceOp const&>(other);
    return m_alias == reference.m_alias && m_currentAlias == reference.m_currentAlias && m_path == reference.m_path &&
           m_basePath == reference.m_basePath && m_resolvedOps == reference.m_resolvedOps;
}

void ReferenceOp::unresolve()
{
    m_resolvedOps.reset();
    m_currentAlias = m_alias;
}

void ReferenceOp::setAlias(std::string const& alias)
{
    m_alias = alias;
    m_currentAlias = alias;
    m_basePath = Tavrin::BASE_PATH_NONE;
    m_resolvedOps.reset();
}

void ReferenceOp::setPath(std::string const& path, BasePath basePath)
{
    m_path = path;
    m_basePath = basePath;
    m_resolvedOps.reset();
}

bool ReferenceOp::isAliasToResolve() const
{
    return m_alias == kCurrentMonitor || (m_resolvedOps && m_resolvedOps->hasAliasReferencesToResolve());
}

void ReferenceOp::resolveAlias(Tavrin::ResolveFlags flags)
{
    if (m_currentAlias != kCurrentMonitor)
        return;
    char const* const monitor = kMonitors.nameOf(flags, nullptr);
    if (monitor == nullptr)
        throw failure(ErrorIds::kReferenceNotAnAlias, Module::kReference, getMeaningfullIdentifier());
    m_currentAlias = monitor;
}

OpList const& ReferenceOp::getResolvedOps() const
{
    _checkIfResolved();
    return *m_resolvedOps;
}

void ReferenceOp::setResolvedOps(OpList const& ops)
{
    m_resolvedOps = ops;
    setInputBitDepth(getInputBitDepth());
    setOutputBitDepth(getOutputBitDepth());
}

void ReferenceOp::_checkIfResolved() const
{
    if (needsResolving())
        throw failure(ErrorIds::kReferenceUnresolved, Module::kReference, getMeaningfullIdentifier());
}

} // namespace Color
