// The base of the elements whose text is a list of so many numbers, over any number of lines.
#include "xml/numberListElt.h"

#include "utils/utils.h"
#include "xml/xmlReaderNumbers.h"

namespace Color::Xml::Reader
{

NumberListElt::NumberListElt(std::string const& name, ContainerElt* parent, unsigned int line, std::string const& file,
                             std::size_t count, ErrorSite wrongCount)
    : PlainElt(name, parent, line, file), m_count(count), m_wrongCount(wrongCount)
{
}

void NumberListElt::setRawData(std::string const& text, unsigned int)
{
    m_text += text;
    m_text += ' ';
}

void NumberListElt::end()
{
    std::string const text = Utils::trimString(m_text);
    std::vector<double> numbers;
    try
    {
        numbers = getNumbers<double>(text);
    }
    catch (Exception const&)
    {
        throw failure(ErrorIds::kValuesIllegal, truncateString(text), getTypeName());
    }
    if (numbers.size() != m_count)
    {
        throw failure(m_wrongCount, getTypeName());
    }
    setNumbers(numbers);
}

} // namespace Color::Xml::Reader
