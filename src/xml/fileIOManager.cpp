// Which kinds of files there are, and how a file becomes a transform.
#include "xml/fileIOManager.h"

#include "utils/errorMessage.h"
#include "xml/cdlReader.h"
#include "xml/ioReader.h"
#include "xml/ocioReader.h"
#include "xml/ostrand1DReader.h"
#include "xml/ostrand3DReader.h"
#include "xml/xmlTransformReader.h"

#include <algorithm>
#include <boost/filesystem.hpp>
#include <iterator>

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

// Files that were saved with a path inside another installation's folder are looked for in this installation's. There is no system
// location to look in as long as nothing has set one, and then a path is what it says.
std::string resolveSystemTransformPath(std::string const& path)
{
    return path;
}

void requireFile(std::string const& path)
{
    try
    {
        boost::filesystem::file_status const status = boost::filesystem::status(path);
        if (boost::filesystem::is_directory(status))
        {
            throw failure(ErrorIds::kNotAFile, Module::kFileReader, path);
        }
        if (!boost::filesystem::exists(status))
        {
            throw failure(ErrorIds::kNoFileFound, Module::kFileReader, path);
        }
    }
    catch (boost::filesystem::filesystem_error const& error)
    {
        throw failure(ErrorIds::kFilesystemError, Module::kFileReader, path, error.what());
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

FileIOManager::Formats const& FileIOManager::getSupportedFileFormats()
{
    static Formats const formats = []
    {
        Formats all;
        for (ReaderRow const& row : kReaders)
        {
            Formats const some = row.supportedFileFormats();
            all.insert(all.end(), some.begin(), some.end());
        }
        return all;
    }();
    return formats;
}

bool FileIOManager::isFileSupported(std::string const& path)
{
    return !getContentReaders(path).empty();
}

std::shared_ptr<Transform> FileIOManager::loadTransform(std::string const& path)
{
    std::string const resolved = resolveSystemTransformPath(path);
    requireFile(resolved);
    Readers const readers = getReaders(resolved);
    return readers.size() == 1 ? loadWith(*readers.front(), resolved) : loadWithFirstOf(readers, resolved);
}

} // namespace Color
