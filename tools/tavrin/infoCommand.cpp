// tavrin info TRANSFORM: what a transform consists of.
#include "command.h"
#include "text.h"
#include "transforms.h"

#include <CLI/CLI.hpp>
#include <fmt/format.h>

#include <algorithm>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace Program
{

namespace
{

// A section with its entries, then the sections inside it, in their order.
struct Section
{
    struct Entry
    {
        std::string key;
        std::string value;
    };

    std::string name;
    std::vector<Entry> entries;
    std::vector<Section> sections;
};

// What entries that only differ by a number have in common: "Array Row " of "Array Row 12".
std::string_view stem(std::string_view key)
{
    return key.substr(0, key.find_last_not_of("0123456789") + 1);
}

// Numbers come in fields of a fixed width. Takes the blanks away that all entries of one stem begin with, so that columns stay.
void cutBlanks(std::vector<Section::Entry>& entries)
{
    for (auto first = entries.begin(); first != entries.end();)
    {
        const auto isOther = [&](Section::Entry const& entry) { return stem(entry.key) != stem(first->key); };
        const auto end = std::find_if(first, entries.end(), isOther);
        std::size_t blanks = std::string::npos;
        for (auto entry = first; entry != end; ++entry)
            blanks = std::min(blanks, entry->value.find_first_not_of(' '));
        for (; first != end; ++first)
            first->value.erase(0, blanks);
    }
}

// Collects what the library tells, so that values can be aligned.
class Collector : public Tavrin::Transform::ContentCallbacks
{
public:
    Section const& root() const { return m_root; }

    void beginSection(char const* name) override
    {
        Section& parent = *m_open.back();
        parent.sections.push_back({oneLine(name), {}, {}});
        // Only the last section of a parent is open, so the pointer stays good.
        m_open.push_back(&parent.sections.back());
    }

    void endSection() override
    {
        if (m_open.size() > 1)
        {
            cutBlanks(m_open.back()->entries);
            m_open.pop_back();
        }
    }

    void addEntry(char const* key, char const* value) override
    {
        const std::string text = printable(value);
        if (!text.empty())
            m_open.back()->entries.push_back({oneLine(key), text});
    }

private:
    Section m_root;
    std::vector<Section*> m_open{&m_root};
};

void print(Section const& section, std::size_t indent)
{
    fmt::print("{:{}}{}\n", "", indent, section.name);
    std::size_t keyWidth = 0;
    for (Section::Entry const& entry : section.entries)
        keyWidth = std::max(keyWidth, entry.key.size());
    for (Section::Entry const& entry : section.entries)
        fmt::print("{:{}}{:<{}}  {}\n", "", indent + 2, entry.key, keyWidth, entry.value);
    for (Section const& inner : section.sections)
        print(inner, indent + 2);
}

void info(std::string const& path)
{
    const Tavrin::TransformPtr transform = loadTransform(path);
    Collector collector;
    check(transform->extractContent(collector), fmt::format("cannot tell what '{}' holds", path));
    for (Section const& section : collector.root().sections)
        print(section, 0);
}

void setUp(CLI::App& command)
{
    const auto path = std::make_shared<std::string>();
    command.add_option("TRANSFORM", *path, "The transform file")->required();
    command.callback([path] { info(*path); });
}

} // namespace

const Command infoCommand = {"info", "Tell what a transform consists of", "Example:\n  tavrin info look.ctf", setUp};

} // namespace Program
