// The base of readers that read files and nothing from memory.
#include "xml/fileOnlyReader.h"

namespace Color
{

void FileOnlyReader::parseBuffer(std::string const&) const
{
    throw failure(m_bufferUnsupported, m_moduleTag);
}

} // namespace Color
