// tavrin info TRANSFORM: what a transform consists of, as it stands or as it is rendered.
#include "command.h"
#include "options.h"
#include "text.h"
#include "transforms.h"

#include <CLI/CLI.hpp>
#include <fmt/format.h>

#include <algorithm>
#include <memory>
#include <optional>
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
            m_open.pop_back();
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

struct Options
{
    std::string path;
    bool all = false;
    std::optional<Tavrin::OptimizerFlags> optimizerFlags;
};

// A longer run of numbered entries, which a table's rows are, is shown by its two ends.
constexpr std::size_t kLongestRun = 20;
constexpr std::size_t kShownOfEachEnd = 4;

using Entries = std::vector<Section::Entry>;

// Writes a section and those in it.
class Printer
{
public:
    explicit Printer(bool all) : m_all(all) {}

    void print(Section const& section, std::size_t indent) const
    {
        fmt::print("{:{}}{}\n", "", indent, section.name);
        std::size_t keyWidth = 0;
        for (Section::Entry const& entry : section.entries)
            keyWidth = std::max(keyWidth, entry.key.size());
        for (auto first = section.entries.begin(); first != section.entries.end();)
        {
            const auto isOther = [&](Section::Entry const& entry) { return stem(entry.key) != stem(first->key); };
            const auto end = std::find_if(first, section.entries.end(), isOther);
            _printRun(first, end, {indent + 2, keyWidth, _commonBlanks(first, end)});
            first = end;
        }
        for (Section const& inner : section.sections)
            print(inner, indent + 2);
    }

private:
    struct Columns
    {
        std::size_t indent;
        std::size_t keyWidth;
        std::size_t cut; // characters at the start of a value that are left out
    };

    // Numbers come in fields of a fixed width: what all values of a run begin with goes, and columns stay.
    static std::size_t _commonBlanks(Entries::const_iterator first, Entries::const_iterator end)
    {
        std::size_t blanks = std::string::npos;
        for (; first != end; ++first)
            blanks = std::min(blanks, first->value.find_first_not_of(' '));
        return blanks;
    }

    void _printRun(Entries::const_iterator first, Entries::const_iterator end, Columns const& columns) const
    {
        const std::size_t count = static_cast<std::size_t>(end - first);
        if (m_all || count <= kLongestRun)
        {
            _printEntries(first, end, columns);
            return;
        }
        _printEntries(first, first + kShownOfEachEnd, columns);
        fmt::print("{:{}}... {} more ...\n", "", columns.indent, count - 2 * kShownOfEachEnd);
        _printEntries(end - kShownOfEachEnd, end, columns);
    }

    static void _printEntries(Entries::const_iterator first, Entries::const_iterator end, Columns const& columns)
    {
        for (; first != end; ++first)
            fmt::print("{:{}}{:<{}}  {}\n", "", columns.indent, first->key, columns.keyWidth, first->value.substr(columns.cut));
    }

    bool m_all;
};

Tavrin::PixelFormat formatOfDepth(Tavrin::BitDepth depth)
{
    return Tavrin::strToPF(fmt::format("PF_RGBA_{}", Tavrin::getBitDepthName(depth)).c_str());
}

// As it stands, or what is rendered from and to pixels of its own depths.
Tavrin::TavStatus extract(Tavrin::TransformPtr const& transform, std::optional<Tavrin::OptimizerFlags> optimizerFlags,
                          Collector& collector)
{
    if (!optimizerFlags)
        return transform->extractContent(collector);
    return Tavrin::extractOptimizedContent(transform, formatOfDepth(transform->getInputBitDepth()),
                                           formatOfDepth(transform->getOutputBitDepth()), *optimizerFlags, collector);
}

void info(Options const& options)
{
    const Tavrin::TransformPtr transform = loadTransform(options.path);
    Collector collector;
    check(extract(transform, options.optimizerFlags, collector), fmt::format("cannot tell what '{}' holds", options.path));
    for (Section const& section : collector.root().sections)
        Printer(options.all).print(section, 0);
}

void setUp(CLI::App& command)
{
    const auto options = std::make_shared<Options>();
    command.add_option("TRANSFORM", options->path, "The transform file")->required();
    command.add_flag("--all", options->all, "Show all rows of a long table");
    addOptimizerOption(command, "--optimized", options->optimizerFlags,
                       "Show the transform as it is rendered: what the\noptimizer leaves with these flags (see 'apply'), and\nthe "
                       "kinds of renderers");
    command.callback([options] { info(*options); });
}

} // namespace

const Command infoCommand = {"info", "Tell what a transform consists of",
                             "Examples:\n"
                             "  tavrin info look.ctf\n"
                             "  tavrin info look.ctf --optimized 90",
                             setUp};

} // namespace Program
