// The reader of every file that OpenColorIO can read.
#include "xml/ocioReader.h"

#include "transform/matrixOp.h"
#include "utils/errorMessage.h"
#include "utils/utils.h"
#include "xml/ocioOps.h"

#include <algorithm>
#include <cstddef>

namespace Color
{

namespace
{

bool equalsIgnoringCase(std::string const& a, char const* b)
{
    return Foundation::Utils::strcasecmp(a.c_str(), b) == 0;
}

// Colour decisions and profiles have readers of their own, and so have transform files, of which OpenColorIO reads a dialect.
constexpr char const* kExtensionsOfOtherReaders[] = {"ccc", "cc", "ctf", "clf", "icc", "icm", "pf"};

// Files of colour decisions, which no processor has to be made for.
constexpr char const* kCDLExtensions[] = {"cc", "ccc", "cdl"};

template <std::size_t kCount>
bool isOneOf(char const* const (&extensions)[kCount], std::string const& extension)
{
    return std::any_of(std::begin(extensions), std::end(extensions),
                       [&](char const* e) { return equalsIgnoringCase(extension, e); });
}

std::vector<std::pair<std::string, std::string>> const& formats()
{
    static auto const all = []
    {
        std::vector<std::pair<std::string, std::string>> rows = OpUtil::getFileFormats();
        std::erase_if(rows, [](auto const& row) { return isOneOf(kExtensionsOfOtherReaders, row.first); });
        return rows;
    }();
    return all;
}

OpUtil::Direction opUtilDirection(OCIOReader::DIRECTION direction)
{
    return direction == OCIOReader::DIRECTION::INVERSE ? OpUtil::Direction::Inverse : OpUtil::Direction::Forward;
}

} // namespace

// The transform under construction.
class OCIOReader::Impl
{
public:
    void parseFile(std::string const& path, OpUtil::Direction direction);
    void retrieveOps(OpUtil::Processor const& processor);
    std::shared_ptr<Transform> const& getTransform() const { return m_transform; }

private:
    void _loadTransformFile(std::string const& path, OpUtil::Direction direction);
    void _loadCDLTransformFile(std::string const& path, std::string const& id, OpUtil::Direction direction);

    std::shared_ptr<Transform> m_transform;
};

void OCIOReader::Impl::parseFile(std::string const& path, OpUtil::Direction direction)
{
    m_transform.reset();
    try
    {
        if (isOneOf(kCDLExtensions, Utils::getFileExtension(path)))
            _loadCDLTransformFile(path, "", direction);
        else
            _loadTransformFile(path, direction);
    }
    catch (OpUtil::Error const& error)
    {
        throw failure(ErrorIds::kOcioReading, Module::kOcioReader, path, error.what());
    }
}

void OCIOReader::Impl::_loadTransformFile(std::string const& path, OpUtil::Direction direction)
{
    retrieveOps(*OpUtil::getFileProcessor(path, direction));
}

void OCIOReader::Impl::_loadCDLTransformFile(std::string const& path, std::string const& id, OpUtil::Direction direction)
{
    OpUtil::Cdl cdl = OpUtil::getCDLFromFile(path, id);
    cdl.clamps = true;
    cdl.direction = direction;
    m_transform = std::make_shared<Transform>();
    OCIOUtil::appendCDLOp(m_transform->getOps(), cdl);
}

void OCIOReader::Impl::retrieveOps(OpUtil::Processor const& processor)
{
    m_transform = std::make_shared<Transform>();
    OCIOUtil::appendOps(m_transform->getOps(), processor);
    // Depths change through an operator, so there has to be one.
    if (m_transform->getOps().empty())
        m_transform->getOps().append(new MatrixOp());
}

OCIOReader::OCIOReader() : m_impl(std::make_unique<Impl>()) {}

OCIOReader::~OCIOReader() = default;

std::vector<std::pair<std::string, std::string>> OCIOReader::supportedFileFormats()
{
    return formats();
}

bool OCIOReader::isFormatSupported(std::string const& extension)
{
    return std::any_of(formats().begin(), formats().end(),
                       [&](auto const& format) { return equalsIgnoringCase(extension, format.first.c_str()); });
}

char const* OCIOReader::getName() const
{
    return "OpenColorIO Reader";
}

void OCIOReader::parseBuffer(std::string const&) const
{
    throw failure(ErrorIds::kOcioBuffer, Module::kOcioReader);
}

void OCIOReader::parseFile(std::string const& path) const
{
    parseFile(path, DIRECTION::FORWARD);
}

void OCIOReader::parseFile(std::string const& path, DIRECTION direction) const
{
    m_impl->parseFile(path, opUtilDirection(direction));
}

void OCIOReader::parse(std::shared_ptr<OpUtil::Processor const> const& processor) const
{
    m_impl->retrieveOps(*processor);
}

std::shared_ptr<Transform> OCIOReader::getTransform() const
{
    return m_impl->getTransform();
}

bool OCIOReader::isFileSupported(std::string const& path) const
{
    return isFormatSupported(Utils::getFileExtension(path));
}

} // namespace Color
