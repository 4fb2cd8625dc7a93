// An ordered list of free texts.
#ifndef TAVRIN_TRANSFORM_DESCRIPTIONS_H
#define TAVRIN_TRANSFORM_DESCRIPTIONS_H

#include <string>
#include <vector>

namespace Color
{

class Descriptions
{
public:
    using List = std::vector<std::string>;

    List const& getList() const { return m_list; }
    void clear() { m_list.clear(); }

    Descriptions& operator+=(std::string const& text)
    {
        m_list.push_back(text);
        return *this;
    }
    Descriptions& operator+=(Descriptions const& other)
    {
        List const copy = other.m_list; // The other one may be this one.
        m_list.insert(m_list.end(), copy.begin(), copy.end());
        return *this;
    }
    friend Descriptions operator+(Descriptions first, Descriptions const& second) { return first += second; }
    bool operator==(Descriptions const& other) const = default;

private:
    List m_list;
};

} // namespace Color

#endif
