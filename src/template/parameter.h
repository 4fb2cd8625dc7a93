// One menu of a template: a name, values to choose from, and the choice.
#ifndef TAVRIN_TEMPLATE_PARAMETER_H
#define TAVRIN_TEMPLATE_PARAMETER_H

#include <string>
#include <vector>

namespace TemplateNS
{

class Parameter
{
public:
    // Without values; null counts as an empty name.
    explicit Parameter(char const* name);

    std::string const& getName() const { return m_name; }
    unsigned int getNumValues() const { return static_cast<unsigned int>(m_values.size()); }
    // Refuses an index beyond the values.
    std::string const& getValue(unsigned int index) const;
    // Refuses a null or empty value. Values stand in the order in which they were appended.
    void appendValue(char const* value);

    // These refuse what is not among the values, and then the choice stays.
    void select(unsigned int index);
    void select(char const* value);
    void deselect() { m_selectedIndex = kNothing; }
    // -1 where nothing is selected.
    int getSelectedIndex() const { return m_selectedIndex; }
    // Throws where nothing is selected.
    std::string const& getSelectedValue() const { return getValue(static_cast<unsigned int>(m_selectedIndex)); }

private:
    static constexpr int kNothing = -1;

    void _requireIndex(unsigned int index) const;

    std::string m_name;
    std::vector<std::string> m_values;
    int m_selectedIndex = kNothing;
};

} // namespace TemplateNS

#endif
