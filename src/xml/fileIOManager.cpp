// Which kinds of files there are, and how a file becomes a transform.
#include "xml/fileIOManager.h"

#include "utils/errorMessage.h"
#include "utils/locations.h"
#include "xml/cdlReader.h"
#include "xml/iccProfileReader.h"
#include "xml/ioReader.h"
#include "xml/ocioReader.h"
#include "xml/ostrand1DReader.h"
#include "xml/ostrand3DReader.h"
#include "xml/xmlTransformReader.h"

#include <algorithm>
#include <boost/filesystem.hpp>
#include <iterator>
#include <optional>
#include <string_view>

namespace Color
{

namespace
{

using Readers = std::vector<std::shared_ptr<IOReader>>;

// A kind of files: its reader, an object for one file, and its rows of the table of formats.
struct ReaderRow
{
    std::shared_ptr<IOReader> (*create)();
    FileIOManager::Formats (*supportedFileFormats)();
};

template <class Reader>
std::shared_ptr<IOReader> createReader()
{
    return std::make_shared<Reader>();
}

// In the order in which they are tried and listed: for an extension that two of them take, the library's own reader goes first.
constexpr ReaderRow kReaders[] = {
    {&createReader<XMLTransformReader>, &XMLTransformReader::supportedFileFormats},
    {&createReader<CDLReader>, &CDLReader::supportedFileFormats},
    {&createReader<Ostrand1DReader>, &Ostrand1DReader::supportedFileFormats},
    {&createReader<Ostrand3DReader>, &Ostrand3DReader::supportedFileFormats},
    {&createReader<ICCProfileReader>, &ICCProfileReader::supportedFileFormats},
    {&createReader<OCIOReader>, &OCIOReader::supportedFileFormats},
};

Readers getContentReaders(std::string const& path)
{
    Readers readers;
    for (ReaderRow const& row : kReaders)
    {
        std::shared_ptr<IOReader> const reader = row.create();
        if (reader->isFileSupported(path))
        {
            readers.push_back(reader);
        }
    }
    return readers;
}

Readers getReaders(std::string const& path)
{
    Readers readers = getContentReaders(path);
    if (readers.empty())
    {
        throw failure(ErrorIds::kFormatUnsupported, Module::kFileReader, path);
    }
    return readers;
}

// What stands in a path before the folders of the product's versions.
constexpr std::string_view kProductFolder = "Norvane/Halvard/Tavrin/";

// A folder as seen from the one of its version. None when it is not in an installation.
std::optional<boost::filesystem::path> pruneSystemBasePath(std::string const& folder)
{
    std::size_t const product = folder.find(kProductFolder);
    if (product == std::string::npos)
    {
        return std::nullopt;
    }
    std::size_t const afterVersion = folder.find('/', product + kProductFolder.size());
    return afterVersion == std::string::npos ? std::string() : folder.substr(afterVersion + 1);
}

// Rethrows an error of the file system as a failure that tells the path.
template <class Body>
auto withFilesystem(std::string const& path, Body&& body)
{
    try
    {
        return body();
    }
    catch (boost::filesystem::filesystem_error const& error)
    {
        throw failure(ErrorIds::kFilesystemError, Module::kFileReader, path, error.what());
    }
}

void requireFile(std::string const& path)
{
    boost::filesystem::file_status const status = withFilesystem(path, [&] { return boost::filesystem::status(path); });
    if (boost::filesystem::is_directory(status))
    {
        throw failure(ErrorIds::kNotAFile, Module::kFileReader, path);
    }
    if (!boost::filesystem::exists(status))
    {
        throw failure(ErrorIds::kNoFileFound, Module::kFileReader, path);
    }
}

std::shared_ptr<Transform> loadWith(IOReader const& reader, std::string const& path)
{
    reader.parseFile(path);
    return reader.getTransform();
}

std::shared_ptr<Transform> loadWithFirstOf(Readers const& readers, std::string const& path)
{
    std::string complaints;
    for (std::shared_ptr<IOReader> const& reader : readers)
    {
        try
        {
            return loadWith(*reader, path);
        }
        catch (Exception const& exception)
        {
            complaints += complaints.empty() ? "" : "\n\n";
            complaints += reader->getName();
            complaints += " error:\n\t" + exception.getMessage();
        }
    }
    throw failure(ErrorIds::kUnableToReadFile, Module::kFileReader, path, complaints);
}

} // namespace

std::vector<FileIOManager::ReaderFormats> const& FileIOManager::getFormatsByReader()
{
    static std::vector<ReaderFormats> const readers = []
    {
        std::vector<ReaderFormats> all;
        for (ReaderRow const& row : kReaders)
        {
            all.push_back({row.create()->getName(), row.supportedFileFormats()});
        }
        return all;
    }();
    return readers;
}

FileIOManager::Formats const& FileIOManager::getSupportedFileFormats()
{
    static Formats const formats = []
    {
        Formats all;
        for (ReaderFormats const& reader : getFormatsByReader())
        {
            all.insert(all.end(), reader.formats.begin(), reader.formats.end());
        }
        return all;
    }();
    return formats;
}

bool FileIOManager::isFileSupported(std::string const& path)
{
    return !getContentReaders(path).empty();
}

std::string FileIOManager::resolveSystemTransformPath(std::string const& path)
{
    namespace fs = boost::filesystem;
    fs::path const saved(path);
    auto const resolve = [&]
    {
        // Nothing is known of an installation as long as nothing has set the system's location.
        if (Utils::getSystemColorTransformPath().empty() || fs::exists(saved))
        {
            return path;
        }
        std::optional<fs::path> const folder = pruneSystemBasePath(saved.parent_path().string());
        fs::path const here = folder ? Utils::getSystemPath() / *folder / saved.filename() : fs::path();
        return folder && fs::exists(here) ? here.string() : path;
    };
    return withFilesystem(path, resolve);
}

std::shared_ptr<Transform> FileIOManager::loadTransform(std::string const& path)
{
    std::string const resolved = resolveSystemTransformPath(path);
    requireFile(resolved);
    Readers const readers = getReaders(resolved);
    return readers.size() == 1 ? loadWith(*readers.front(), resolved) : loadWithFirstOf(readers, resolved);
}

} // namespace Color
