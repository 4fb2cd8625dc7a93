// A build without OpenColorIO: no formats, and an error for everything else.
#include "ocio/config.h"

namespace Color::OpUtil
{

namespace
{

Error missing()
{
    return Error("This build of Tavrin has no OpenColorIO");
}

} // namespace

class Processor::Program
{
};

void Processor::finalize()
{
    throw missing();
}

void Processor::apply(float*, unsigned int, unsigned int, unsigned int) const
{
    throw missing();
}

bool isAvailable()
{
    return false;
}

std::vector<std::pair<std::string, std::string>> getFileFormats()
{
    return {};
}

std::shared_ptr<Processor const> getFileProcessor(std::string const&, Direction)
{
    throw missing();
}

Cdl getCDLFromFile(std::string const&, std::string const&)
{
    throw missing();
}

std::shared_ptr<Config const> Config::CreateFromFile(std::string const&)
{
    throw missing();
}

} // namespace Color::OpUtil
