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

inline Lines contentOf(Tavrin::TransformPtr const& transform)
{
    Recorder recorder;
    EXPECT_EQ(told(transform->extractContent(recorder)), kGood);
    return recorder.lines();
}

#endif
