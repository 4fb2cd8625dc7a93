// What a caller is told of a transform for display, as lines.
#ifndef TAVRIN_TESTS_TAVRIN_CONTENT_RECORDER_H
#define TAVRIN_TESTS_TAVRIN_CONTENT_RECORDER_H

#include "transformFixtures.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

using Lines = std::vector<std::string>;

// Writes a line for each call.
class Recorder : public Tavrin::Transform::ContentCallbacks
{
public:
    void beginSection(char const* name) override { m_lines.push_back(std::string("begin ") + name); }
    void endSection() override { m_lines.push_back("end"); }
    void addEntry(char const* key, char const* value) override { m_lines.push_back(std::string(key) + ": " + value); }

    Lines const& lines() const { return m_lines; }

private:
    Lines m_lines;
};

// The values of all entries with a key.
inline Lines valuesOf(std::string const& key, Lines const& content)
{
    Lines values;
    for (std::string const& line : content)
    {
        if (line.rfind(key + ": ", 0) == 0)
            values.push_back(line.substr(key.size() + 2));
    }
    return values;
}

inline Lines contentOf(Tavrin::TransformPtr const& transform)
{
    Recorder recorder;
    EXPECT_EQ(told(transform->extractContent(recorder)), kGood);
    return recorder.lines();
}

// An operator's section.
struct DisplayedOp
{
    std::string name;
    Lines common; // identifier, name and depths, which all operators tell
    Lines own;
};

inline std::vector<DisplayedOp> displayedOps(Tavrin::TransformPtr const& transform)
{
    std::vector<DisplayedOp> sections;
    for (std::string const& line : contentOf(transform))
    {
        if (line.rfind("begin ", 0) == 0)
            sections.push_back({line.substr(6), {}, {}});
        else if (line != "end")
            (sections.back().common.size() < 4 ? sections.back().common : sections.back().own).push_back(line);
    }
    sections.erase(sections.begin()); // that of the transform
    return sections;
}

// The same of a transform's only operator.
inline DisplayedOp displayedOp(Tavrin::TransformPtr const& transform)
{
    std::vector<DisplayedOp> const ops = displayedOps(transform);
    EXPECT_EQ(ops.size(), 1U);
    return ops.empty() ? DisplayedOp() : ops.front();
}

#endif
