// Follows references to other transform files.
#include "xml/xmlTransformResolver.h"

#include "utils/errorMessage.h"
#include "utils/locations.h"
#include "utils/preferencesLock.h"
#include "xml/fileIOManager.h"
#include "xml/preferencesInstance.h"
#include "xml/xmlReaderLimits.h"

#include <boost/filesystem.hpp>
#include <set>

namespace Color
{

namespace
{

namespace fs = boost::filesystem;
namespace Limits = Xml::Reader::Limits;

// The path of a file in an installation, up to the transforms: the product's folder, in it one for each version (they begin with
// the year), in that the transforms.
constexpr std::string_view kVersionFolders = "Norvane/Halvard/Tavrin/20";
constexpr std::string_view kTransformsFolder = "/transforms/";

// A file finds its siblings in its own installation.
std::string systemTransformsFor(std::string const& file)
{
    std::size_t const version = file.find(kVersionFolders);
    std::size_t const transforms =
        version == std::string::npos ? version : file.find(kTransformsFolder, version + kVersionFolders.size());
    return transforms == std::string::npos ? Utils::getSystemColorTransformPath()
                                           : file.substr(0, transforms + kTransformsFolder.size());
}

// A bypassed reference bypasses what it stands for, and one that can be bypassed while it renders shares its switch with it.
void passOnBypass(ReferenceOp const& reference, OpList& ops)
{
    std::shared_ptr<BypassDynamicProperty> const& bypass = reference.getBypass();
    if (!bypass->isDynamic() && !bypass->getValue())
    {
        return;
    }
    for (unsigned int i = 0; i < ops.size(); ++i)
    {
        ops.get(i).setBypass(bypass);
    }
}

// A file that is among the visited ones for as long as this lives.
class Visit
{
public:
    Visit(std::set<fs::path>& visited, fs::path const& path) : m_visited(visited), m_place(visited.insert(path).first) {}
    Visit(Visit const&) = delete;
    Visit& operator=(Visit const&) = delete;
    ~Visit() { m_visited.erase(m_place); }

private:
    std::set<fs::path>& m_visited;
    std::set<fs::path>::iterator m_place;
};

} // namespace

class XMLTransformResolver::Impl
{
public:
    explicit Impl(Preferences const& preferences) : m_preferences(preferences) {}

    void resolve(std::string const& file, Tavrin::ResolveFlags flags, Transform& transform)
    {
        m_visited.clear();
        m_loads = 0;
        _resolveTransform(file, flags, transform);
    }

    std::string resolvePath(ReferenceOp& reference, std::string const& file, Tavrin::ResolveFlags flags) const
    {
        auto const lock = lockPreferences();
        if (reference.getAlias().empty())
        {
            return _resolvePath(reference.getPath(), reference.getBasePath(), file);
        }
        reference.resolveAlias(flags);
        ReferenceTable::AliasInfo const& info = m_preferences.getReferenceTable().findAlias(reference.getCurrentAlias());
        return _resolvePath(info.getPath(), info.getBasePath(), file);
    }

private:
    void _resolveTransform(std::string const& file, Tavrin::ResolveFlags flags, Transform& transform)
    {
        if (!transform.hasUnresolvedReferences())
        {
            return;
        }
        OpList& ops = transform.getOps();
        for (unsigned int i = 0; i < ops.size(); ++i)
        {
            if (ops.get(i).getOpType() == Op::OpType::ReferenceOp)
            {
                _resolveReference(file, flags, static_cast<ReferenceOp&>(ops.get(i)));
            }
        }
    }

    void _resolveReference(std::string const& file, Tavrin::ResolveFlags flags, ReferenceOp& reference)
    {
        std::string const path = resolvePath(reference, file, flags);
        fs::path const place = FileIOManager::resolveSystemTransformPath(path);
        _refuseCycle(path, place);
        std::shared_ptr<Transform> const loaded = _load(path, reference);
        passOnBypass(reference, loaded->getOps());
        Visit const visit(m_visited, place);
        _resolveTransform(path, flags, *loaded);
        reference.setResolvedOps(loaded->getOps());
    }

    // Two spellings of a file, or a link to it, are the same file.
    void _refuseCycle(std::string const& path, fs::path const& place) const
    {
        try
        {
            for (fs::path const& visited : m_visited)
            {
                if (fs::equivalent(place, visited))
                {
                    throw failure(ErrorIds::kReferenceCycle, Module::kResolver, path);
                }
            }
        }
        catch (fs::filesystem_error const& error)
        {
            throw failure(ErrorIds::kFilesystemError, Module::kResolver, path, error.what());
        }
    }

    std::shared_ptr<Transform> _load(std::string const& path, ReferenceOp const& reference)
    {
        if (m_visited.size() == Limits::kReferenceNesting || ++m_loads > Limits::kReferences)
        {
            throw failure(ErrorIds::kReferenceLoadFailed, Module::kResolver, reference.getMeaningfullIdentifier(),
                          "too many references");
        }
        try
        {
            return FileIOManager::loadTransform(path);
        }
        catch (Exception const& exception)
        {
            throw failure(ErrorIds::kReferenceLoadFailed, Module::kResolver, reference.getMeaningfullIdentifier(),
                          exception.getMessage());
        }
    }

    std::string _resolvePath(fs::path const& path, Tavrin::BasePath basePath, std::string const& file) const
    {
        return path.has_root_directory() ? path.string() : (_resolveBasePath(basePath, file) / path).string();
    }

    fs::path _resolveBasePath(Tavrin::BasePath basePath, std::string const& file) const
    {
        switch (basePath)
        {
        case Tavrin::BASE_PATH_VENDOR:
            return systemTransformsFor(file);
        case Tavrin::BASE_PATH_SHARED:
            return m_preferences.getSharedPath();
        default:
            throw failure(ErrorIds::kReferenceWithoutBasePath, Module::kResolver);
        }
    }

    Preferences const& m_preferences;
    std::set<fs::path> m_visited; // The chain of files from the first reference to the one that is followed.
    std::size_t m_loads = 0;
};

XMLTransformResolver::XMLTransformResolver(Preferences const& preferences) : m_impl(std::make_unique<Impl>(preferences)) {}

XMLTransformResolver::~XMLTransformResolver() = default;

void XMLTransformResolver::resolve(std::string const& file, Tavrin::ResolveFlags flags, std::shared_ptr<Transform> const& transform)
{
    m_impl->resolve(file, flags, *transform);
}

std::string XMLTransformResolver::resolvePath(ReferenceOp* reference, std::string const& file, Tavrin::ResolveFlags flags) const
{
    if (!reference)
    {
        throw failure(ErrorIds::kResolverReferenceNull, Module::kResolver);
    }
    return m_impl->resolvePath(*reference, file, flags);
}

namespace TransformUtils
{

namespace
{

Preferences const& preferences()
{
    return *Xml::Impl::PreferencesInstance::getInstance().getPreferences();
}

} // namespace

void resolve(std::string const& file, Tavrin::ResolveFlags flags, std::shared_ptr<Transform> const& transform)
{
    XMLTransformResolver(preferences()).resolve(file, flags, transform);
}

std::string resolvePath(ReferenceOp const& reference, std::string const& file)
{
    ReferenceOp copy(reference); // Its alias would be resolved too.
    return XMLTransformResolver(preferences()).resolvePath(&copy, file, Tavrin::RESOLVE_GRAPHICS_MONITOR);
}

} // namespace TransformUtils

} // namespace Color
