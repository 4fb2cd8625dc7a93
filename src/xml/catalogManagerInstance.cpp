// The catalogs of the process: loaded when somebody first asks for them.
#include "xml/catalogManagerInstance.h"

#include "utils/errorMessage.h"
#include "utils/locations.h"
#include "utils/logger.h"
#include "utils/preferencesLock.h"
#include "xml/preferencesInstance.h"

#include <filesystem>
#include <memory>
#include <system_error>

namespace Color::Xml::Impl
{

namespace
{

// In the order of these names a search goes through them: an installed transform comes before a shared one.
constexpr char kSystemCatalog[] = "Norvane";
constexpr char kSharedCatalog[] = "Shared";

bool exists(std::string const& path)
{
    std::error_code ignored;
    return std::filesystem::exists(path, ignored);
}

void requireFolder(ErrorSite site, std::string const& folder)
{
    if (!exists(folder))
    {
        throw failure(site, Module::kCatalogManager, folder);
    }
}

std::string getSharedPath()
{
    auto const lock = lockPreferences();
    return PreferencesInstance::getInstance().getPreferences()->getSharedPath();
}

} // namespace

CatalogManagerInstance& CatalogManagerInstance::getInstance()
{
    static std::unique_ptr<CatalogManagerInstance> instance;
    if (!instance)
    {
        instance.reset(new CatalogManagerInstance());
    }
    return *instance;
}

void CatalogManagerInstance::reloadCatalogs()
{
    requireFolder(ErrorIds::kCatalogPackageNotInstalled, Utils::getSystemPath());
    requireFolder(ErrorIds::kCatalogNotInstalled, Utils::getSystemColorTransformPath());
    m_catalogManager.clearCatalog(std::string());
    _loadSystemCatalog();
    _loadSharedCatalog();
}

void CatalogManagerInstance::_loadSystemCatalog()
{
    std::string const catalog = Utils::getSystemPath() + "/norv_catalog.cat";
    if (!exists(catalog))
    {
        m_catalogManager.buildCatalog(catalog, Utils::getSystemColorTransformPath(), true);
    }
    m_catalogManager.loadCatalog(kSystemCatalog, catalog);
}

void CatalogManagerInstance::_loadSharedCatalog()
{
    try
    {
        std::string const folder = getSharedPath();
        m_catalogManager.loadCatalog(kSharedCatalog, m_catalogManager.buildCatalog(folder + "/shared_catalog.cat", folder, false));
    }
    catch (Exception const& exception)
    {
        ErrorMessage const message = errorMessage(ErrorIds::kCatalogShared, Module::kCatalogManager, exception.getMessage());
        Logger::log(LOG_USER, "%s", message.getMessage().c_str());
    }
}

} // namespace Color::Xml::Impl
