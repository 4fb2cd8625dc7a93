// The catalogs of the process: loaded when somebody first asks for them.
#ifndef TAVRIN_XML_CATALOG_MANAGER_INSTANCE_H
#define TAVRIN_XML_CATALOG_MANAGER_INSTANCE_H

#include "xml/catalogManager.h"

namespace Color::Xml::Impl
{

// Takes no lock: nobody may ask for catalogs while they are loaded.
class CatalogManagerInstance
{
public:
    // Loads the catalogs the first time; if that fails it throws, and the next call tries again.
    static CatalogManagerInstance& getInstance();

    CatalogManager const& getCatalogManager() const { return m_catalogManager; }

    // The catalog of the installation's transforms is built if there is none, and then stays as it is. That of the shared folder is
    // built anew where the folder has changed; where that folder can't be used, a line in the log says so.
    void reloadCatalogs();

private:
    CatalogManagerInstance() { reloadCatalogs(); }

    void _loadSystemCatalog();
    void _loadSharedCatalog();

    CatalogManager m_catalogManager;
};

} // namespace Color::Xml::Impl

#endif
