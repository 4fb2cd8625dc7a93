// One menu of a template: a name, values to choose from, and the choice.
#include "template/parameter.h"

#include "utils/errorMessage.h"

#include <algorithm>

namespace TemplateNS
{

namespace ErrorIds = Color::ErrorIds;
namespace Module = Color::Module;

namespace
{

std::string textOf(char const* text)
{
    return text ? text : std::string();
}

} // namespace

Parameter::Parameter(char const* name) : m_name(textOf(name)) {}

std::string const& Parameter::getValue(unsigned int index) const
{
    _requireIndex(index);
    return m_values[index];
}

void Parameter::appendValue(char const* value)
{
    if (textOf(value).empty())
    {
        throw Color::failure(ErrorIds::kTemplateValueIllegal, Module::kTemplate);
    }
    m_values.emplace_back(value);
}

void Parameter::select(unsigned int index)
{
    _requireIndex(index);
    m_selectedIndex = static_cast<int>(index);
}

void Parameter::select(char const* value)
{
    // No value is empty, so that an empty one is not found.
    auto const found = std::find(m_values.begin(), m_values.end(), textOf(value));
    if (found == m_values.end())
    {
        throw Color::failure(ErrorIds::kTemplateSelectionName, Module::kTemplate, m_name, textOf(value));
    }
    m_selectedIndex = static_cast<int>(found - m_values.begin());
}

void Parameter::_requireIndex(unsigned int index) const
{
    if (index >= m_values.size())
    {
        throw Color::failure(ErrorIds::kTemplateSelectionIndex, Module::kTemplate, m_name, static_cast<int>(index));
    }
}

} // namespace TemplateNS
