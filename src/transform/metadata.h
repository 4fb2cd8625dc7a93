// A tree of named texts: the free information of a transform.
#ifndef TAVRIN_TRANSFORM_METADATA_H
#define TAVRIN_TRANSFORM_METADATA_H

#include <list>
#include <string>
#include <utility>
#include <vector>

namespace Color
{

// A node without items is a leaf and may hold a value.
class Metadata
{
public:
    using Items = std::list<Metadata>;

    // The name can't be empty.
    explicit Metadata(std::string const& name);

    std::string const& getName() const { return m_name; }
    bool isLeaf() const { return m_items.empty(); }
    // A leaf without a value.
    bool isEmpty() const { return isLeaf() && m_value.empty(); }

    // Only a leaf has a value to give.
    std::string const& getValue() const;
    Metadata& operator=(std::string const& value);

    // The first item of that name; the first form makes a new one when there is none.
    Metadata& operator[](std::string const& name);
    Metadata const& operator[](std::string const& name) const;
    // Adds an item at the end and does not look for one of the same name; for readers, which keep an index of their own.
    Metadata& append(Metadata item)
    {
        m_items.push_back(std::move(item));
        return m_items.back();
    }
    // Erases the first item of that name.
    void remove(std::string const& name);

    Items const& getItems() const;
    std::vector<std::string> getItemsNames() const;

    // Takes over value and items of another node and keeps the name; both may stand, as text before children in a file does.
    void assignContent(Metadata other);

    void clear();

private:
    std::string m_name;
    std::string m_value;
    Items m_items;
};

} // namespace Color

#endif
