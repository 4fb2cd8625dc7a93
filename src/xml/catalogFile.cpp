// Builds the file of a catalog: an index of the transforms in a folder.
#include "xml/catalogFile.h"

#include "utils/errorMessage.h"
#include "xml/catalogTransformReader.h"
#include "xml/catalogVocabulary.h"
#include "xml/wholeFile.h"
#include "xml/xmlFormatter.h"

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <sstream>
#include <system_error>
#include <vector>

namespace Color
{

using namespace Xml;
using Writer::Formatter;
using Writer::ScopeIndent;

namespace
{

// Boost's counts times in whole seconds, too few to tell what is newer.
namespace fs = std::filesystem;
using Time = fs::file_time_type;

constexpr int kTransformLevel = 3; // Catalog, CatalogItem and CatalogTransform stand around a transform.

Exception catalogFailure(ErrorSite site, fs::path const& path)
{
    return failure(site, Module::kCatalogManager, path.string());
}

// Calls the function for each entry of the folder and of those below; folders that may not be read are passed over.
template <class Function>
void forEachEntry(fs::path const& folder, Function&& function)
{
    std::error_code error;
    fs::recursive_directory_iterator entry(folder, fs::directory_options::skip_permission_denied, error);
    for (; !error && entry != fs::recursive_directory_iterator(); entry.increment(error))
    {
        function(*entry);
    }
    if (error)
    {
        throw failure(ErrorIds::kFilesystemError, Module::kCatalogManager, folder.string(), error.message());
    }
}

// Whether the path was changed after that time. What can't be asked, such as a link to nowhere, was not.
bool isNewer(fs::path const& path, Time time)
{
    std::error_code error;
    Time const changed = fs::last_write_time(path, error);
    return !error && changed > time;
}

bool hasNewerEntry(fs::path const& folder, fs::path const& catalog, Time time)
{
    bool hasNewer = false;
    forEachEntry(folder, [&](fs::directory_entry const& entry)
                 { hasNewer = hasNewer || (entry.path() != catalog && isNewer(entry.path(), time)); });
    return hasNewer;
}

bool needsRebuild(fs::path const& catalog, fs::path const& folder)
{
    std::error_code error;
    Time const built = fs::last_write_time(catalog, error);
    return error || isNewer(folder, built) || hasNewerEntry(folder, catalog, built);
}

bool isTransformFile(fs::directory_entry const& entry)
{
    fs::path const extension = entry.path().extension();
    std::error_code ignored;
    return (extension == ".ctf" || extension == ".xml") && entry.is_regular_file(ignored);
}

std::vector<fs::path> findTransformFiles(fs::path const& folder)
{
    std::vector<fs::path> files;
    forEachEntry(fs::absolute(folder),
                 [&](fs::directory_entry const& entry)
                 {
                     if (isTransformFile(entry))
                     {
                         files.push_back(entry.path().lexically_normal());
                     }
                 });
    std::sort(files.begin(), files.end());
    return files;
}

// What the catalog keeps of a transform file; throws for another file.
std::string copyTransform(fs::path const& file)
{
    std::ostringstream copy;
    Formatter formatter(copy);
    for (int level = 0; level < kTransformLevel; ++level)
    {
        formatter.incrementIndent();
    }
    CatalogTransformReader(formatter).parseFile(file.string());
    return copy.str();
}

void writeItem(Formatter& formatter, fs::path const& file, std::string const& transform)
{
    formatter.writeStartTag(TAG_CATALOG_ITEM);
    {
        ScopeIndent const indent(formatter);
        formatter.writeContentTag(TAG_CATALOG_TRANSFORM_PATH, file.string());
        formatter.writeStartTag(TAG_CATALOG_TRANSFORM);
        formatter.getStream() << transform;
        formatter.writeEndTag(TAG_CATALOG_TRANSFORM);
    }
    formatter.writeEndTag(TAG_CATALOG_ITEM);
}

void writeCatalog(std::ostream& stream, std::vector<fs::path> const& files)
{
    stream << Writer::kProlog;
    Formatter formatter(stream);
    formatter.writeStartTag(TAG_CATALOG);
    for (fs::path const& file : files)
    {
        ScopeIndent const indent(formatter);
        try
        {
            writeItem(formatter, file, copyTransform(file));
        }
        catch (Exception const&)
        {
            // No transform, or a broken one.
        }
    }
    formatter.writeEndTag(TAG_CATALOG);
}

// The catalog of a shared folder lies in it, and its coming makes the folder newer than itself: it gets a time just after that, so
// that it is not stale from the start. No later one: times of files come from a clock of coarse ticks, and what is changed next
// could seem older. Where something else was changed while it was being built, it gets a time before.
void dateCatalog(fs::path const& catalog, fs::path const& folder, Time started)
{
    std::error_code ignored;
    Time const written = std::max(fs::last_write_time(catalog, ignored), fs::last_write_time(folder, ignored));
    fs::last_write_time(catalog, hasNewerEntry(folder, catalog, started) ? started : written + std::chrono::nanoseconds(1),
                        ignored);
}

void writeCatalogFile(fs::path const& catalog, std::vector<fs::path> const& files)
{
    try
    {
        Writer::writeWholeFile(catalog.string(), [&](std::ostream& stream) { writeCatalog(stream, files); });
    }
    catch (Exception const&)
    {
        throw catalogFailure(ErrorIds::kCatalogFilenameIllegal, catalog);
    }
}

} // namespace

std::string buildCatalog(std::string const& catalogFile, std::string const& folder, bool force)
{
    fs::path const catalog = fs::path(catalogFile).replace_extension(".cat").lexically_normal();
    std::error_code ignored;
    if (!fs::is_directory(folder, ignored))
    {
        throw catalogFailure(ErrorIds::kCatalogDirectoryNotFound, folder);
    }
    if (force || needsRebuild(catalog, folder))
    {
        Time const started = Time::clock::now();
        writeCatalogFile(catalog, findTransformFiles(folder));
        dateCatalog(catalog, folder, started);
    }
    return catalog.string();
}

} // namespace Color
