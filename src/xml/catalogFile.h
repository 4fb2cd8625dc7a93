// Builds the file of a catalog: an index of the transforms in a folder.
#ifndef TAVRIN_XML_CATALOG_FILE_H
#define TAVRIN_XML_CATALOG_FILE_H

#include <string>

namespace Color
{

// Writes what is known of all transform files in the folder and below, unless a catalog is there that is as new as all of them;
// with force, in any case. The catalog's extension becomes ".cat"; the result is its path. Files that are no transforms are left
// out.
//
// Throws when there is no such folder, or the catalog can't be written.
std::string buildCatalog(std::string const& catalogFile, std::string const& folder, bool force);

} // namespace Color

#endif
