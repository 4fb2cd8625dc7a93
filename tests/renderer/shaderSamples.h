// Operators of every kind and style, for tests of what they become on the GPU.
#ifndef TAVRIN_TESTS_RENDERER_SHADER_SAMPLES_H
#define TAVRIN_TESTS_RENDERER_SHADER_SAMPLES_H

#include "transform/transform.h"

#include <functional>
#include <memory>
#include <string>
#include <vector>

// Under its name lie the expected texts in tests/data/shaders.
struct ShaderSample
{
    std::string name;
    std::function<void(Color::OpList& ops)> append;

    std::shared_ptr<Color::Transform> makeTransform() const
    {
        auto transform = std::make_shared<Color::Transform>();
        append(transform->getOps());
        return transform;
    }
};

inline void PrintTo(ShaderSample const& sample, std::ostream* out)
{
    *out << sample.name;
}

std::vector<ShaderSample> shaderSamples();

#endif
