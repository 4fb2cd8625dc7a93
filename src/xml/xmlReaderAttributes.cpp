// Reads the attributes of an element by rules.
#include "xml/xmlReaderAttributes.h"

#include "utils/logger.h"
#include "utils/utils.h"
#include "xml/xmlReaderNumbers.h"

#include <utility>

namespace Color::Xml::Reader
{

using Foundation::Utils::strcasecmp;

AttributeReader& AttributeReader::text(char const* name, TakeText take)
{
    m_rules.push_back({name, std::move(take)});
    return *this;
}

AttributeReader& AttributeReader::filledText(char const* name, char const* label, TakeText take)
{
    return text(name,
                [this, label, take = std::move(take)](char const* value)
                {
                    if (*value == '\0')
                    {
                        throw m_element.failure(ErrorIds::kXmlAttributeEmpty, label, m_element.getTypeName());
                    }
                    take(value);
                });
}

AttributeReader& AttributeReader::depth(char const* name, char const* label, TakeDepth take)
{
    return text(name,
                [this, label, take = std::move(take)](char const* value)
                {
                    Tavrin::BitDepth const depth = Tavrin::getBitDepth(value);
                    if (depth == Tavrin::BIT_DEPTH_UNKNOWN)
                    {
                        throw m_element.failure(ErrorIds::kXmlAttributeIllegal, label, value, m_element.getTypeName());
                    }
                    take(depth);
                });
}

AttributeReader& AttributeReader::number(char const* name, double& value)
{
    return text(name, [&value](char const* text) { value = parseNumber<double>(text); });
}

AttributeReader& AttributeReader::word(char const* name, char const* word, ErrorSite illegal, std::function<void()> take)
{
    return text(name,
                [this, word, illegal, take = std::move(take)](char const* value)
                {
                    if (strcasecmp(value, word) != 0)
                    {
                        throw m_element.failure(illegal, m_element.getTypeName(), value);
                    }
                    take();
                });
}

AttributeReader& AttributeReader::trimmedWord(char const* name, char const* word, ErrorSite illegal, std::function<void()> take)
{
    this->word(name, word, illegal, std::move(take));
    m_rules.back().take = [takeTrimmed = std::move(m_rules.back().take)](char const* value)
    { takeTrimmed(Utils::trimString(value).c_str()); };
    return *this;
}

AttributeReader& AttributeReader::required(char const* label)
{
    m_rules.back().requiredAs = label;
    return *this;
}

void AttributeReader::read(char const** attributes)
{
    for (; *attributes; attributes += 2)
    {
        _take(attributes[0], attributes[1]);
    }
    for (Rule const& rule : m_rules)
    {
        if (rule.requiredAs && !rule.seen)
        {
            throw m_element.failure(ErrorIds::kXmlAttributeMissing, rule.requiredAs, m_element.getTypeName());
        }
    }
}

void AttributeReader::_take(char const* name, char const* value)
{
    for (Rule& rule : m_rules)
    {
        if (strcasecmp(name, rule.name) == 0)
        {
            rule.seen = true;
            rule.take(value);
            return;
        }
    }
}

void AttributeReader::_logIllegal(char const* label, char const* value) const
{
    ErrorMessage const message = errorMessage(ErrorIds::kXmlAttributeIllegal, Module::kXmlReader, label, value,
                                              m_element.getTypeName(), m_element.getXmlLocation(), m_element.getXmlFile());
    Logger::log(LOG_DEBUG, "%s", message.getMessage().c_str());
}

} // namespace Color::Xml::Reader
