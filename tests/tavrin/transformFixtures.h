// What tests of the public transform share: transforms of one matrix, transforms from text, statuses as values, an adaptor.
#ifndef TAVRIN_TESTS_TAVRIN_TRANSFORM_FIXTURES_H
#define TAVRIN_TESTS_TAVRIN_TRANSFORM_FIXTURES_H

#include "support/recordingAdaptor.h"

#include <tavrin/tavrin.h>

#include <string>
#include <utility>
#include <vector>

// Code and words of a status; 0 and no words for success.
using Told = std::pair<Tavrin::ErrorId, std::string>;

inline Told told(Tavrin::TavStatus const& status)
{
    char const* const message = status.getErrorMessage();
    return {status.getErrorCode(), message == nullptr ? "" : message};
}

inline Told const kGood{0, ""};
inline Told const kNoCpuRenderer{0x2010001, "No 'CPU' renderer available"};
inline Told const kNullAction{0x810006, "Attempt to apply Null optimizer action"};
inline Told const kNoGpuRenderer{0x2010001, "No 'GPU' renderer available"};

// Multiplies red, green and blue.
inline Tavrin::TransformPtr scaleBy(float factor, Tavrin::BitDepth in = Tavrin::BIT_DEPTH_32f,
                                    Tavrin::BitDepth out = Tavrin::BIT_DEPTH_32f)
{
    float const matrix[9] = {factor, 0, 0, 0, factor, 0, 0, 0, factor};
    float const offsets[3] = {0, 0, 0};
    Tavrin::TransformPtr transform;
    Tavrin::CreateMatrixTransform(in, out, matrix, offsets, false, transform);
    return transform;
}

// An empty handle when the text can't be read.
inline Tavrin::TransformPtr fromText(std::string const& text)
{
    Tavrin::TransformPtr transform;
    Tavrin::loadColorTransformFromBuffer(text.c_str(), transform);
    return transform;
}

// A document that holds these elements.
inline std::string document(std::string const& elements, std::string const& attributes = "id='id'")
{
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<ProcessList version='1.3' " + attributes + ">\n" + elements +
           "\n</ProcessList>\n";
}

// Doubles red, green and blue; further attributes and children may be told.
inline std::string doubling(std::string const& attributes = "", std::string const& children = "")
{
    return "<Matrix inBitDepth='32f' outBitDepth='32f' " + attributes + ">\n" + children +
           "\n<Array dim='3 3 3'>\n2 0 0\n0 2 0\n0 0 2\n</Array>\n</Matrix>\n";
}

inline Tavrin::TavStatus finalizeForCpu(Tavrin::TransformPtr const& transform, Tavrin::PixelFormat in = Tavrin::PF_RGBA_32f,
                                        Tavrin::PixelFormat out = Tavrin::PF_RGBA_32f)
{
    return transform->finalize(in, out, Tavrin::RENDERER_CPU, Tavrin::OPTIMIZER_DEFAULT_THRESHOLD,
                               Tavrin::RESOLVE_BROADCAST_MONITOR);
}

using Pixels = std::vector<float>;

// One pixel of RGBA floats through a transform that is finalized for them; empty when that fails.
inline Pixels render(Tavrin::TransformPtr const& transform, Pixels pixel)
{
    bool const rendered = transform->applyCPU(pixel.data(), Tavrin::ROI(0, 0, 1, 1), pixel.data());
    return rendered ? pixel : Pixels();
}

// Tells when it is deleted.
class IdleAdaptor : public RecordingAdaptor
{
public:
    explicit IdleAdaptor(bool* deleted = nullptr) : m_deleted(deleted) {}
    ~IdleAdaptor() override
    {
        if (m_deleted != nullptr)
            *m_deleted = true;
    }

private:
    bool* m_deleted;
};

#endif
