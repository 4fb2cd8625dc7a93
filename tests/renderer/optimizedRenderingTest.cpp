// Random lists, optimized and not: they render alike, and as many operators are left as a plain model of the rules says.
#include "renderer/lut1DTables.h"
#include "renderer/optimizer.h"
#include "renderer/rendererHarness.h"
#include "transform/ops.h"
#include "transform/testOps.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <memory>
#include <random>
#include <vector>

using namespace RendererHarness;
using namespace Color;

namespace
{

constexpr double kUnitRoundoff = 0x1p-24;
constexpr unsigned int kPixels = 64;

// No clamp here is narrower than what follows it: dropping one in front of a table then changes nothing.
enum class Kind
{
    Matrix,
    IdentityMatrix,
    SwitchedOffMatrix,
    UnlimitedRange,
    Clamp,
    ScalingRange,
    Table,
    IdentityTable,
    HalfTable,
    Grid
};
constexpr int kKinds = 10;

// An operator at 32f together with what it does to errors: those of its input grow at most by the slope.
struct Step
{
    Kind kind;
    std::unique_ptr<Op> op;
    double slope = 1.0;
};

using Steps = std::vector<Step>;

// ---------------------------------------------------------------- random operators

class StepMaker
{
public:
    explicit StepMaker(unsigned int seed) : m_generator(seed) {}

    Steps list()
    {
        Steps steps(1 + m_generator() % 8);
        for (Step& step : steps)
            step = make(static_cast<Kind>(m_generator() % kKinds));
        return steps;
    }

    float number(double low, double high)
    {
        return static_cast<float>(low + (high - low) * (static_cast<double>(m_generator()) / std::mt19937::max()));
    }

private:
    Step make(Kind kind)
    {
        switch (kind)
        {
        case Kind::Matrix:
            return {kind, matrix()};
        case Kind::IdentityMatrix:
            return {kind, std::make_unique<MatrixOp>()};
        case Kind::SwitchedOffMatrix:
        {
            auto off = matrix();
            off->setBypass(bypass(true, true));
            return {kind, std::move(off)};
        }
        case Kind::UnlimitedRange:
            return {kind, range(RangeOp::emptyValue(), RangeOp::emptyValue(), RangeOp::emptyValue(), RangeOp::emptyValue())};
        case Kind::Clamp:
            return {kind, range(0.0, 1.0, 0.0, 1.0)};
        case Kind::ScalingRange:
            return {kind, range(0.1, 0.9, 0.0, 1.0), 1.25};
        case Kind::Table:
            // The steepest curve is x to the power of 2.3 times 0.8; sampled, it is no steeper.
            return {kind, std::make_unique<Lut1DOp>(tableOf(Tavrin::BIT_DEPTH_32f, Tavrin::BIT_DEPTH_32f, rows(), curve)), 1.9};
        case Kind::IdentityTable:
            return {kind, std::make_unique<Lut1DOp>(rows())};
        case Kind::HalfTable:
            return {kind, halfTable(), 0.75};
        case Kind::Grid:
            return {kind, grid()};
        }
        return {kind, nullptr};
    }

    unsigned int rows() { return 2 + m_generator() % 100; }

    std::unique_ptr<MatrixOp> matrix()
    {
        auto op = std::make_unique<MatrixOp>();
        for (unsigned int i = 0; i < 16; ++i)
            op->setArrayValue(i, number(-0.4, 0.4) + (i % 5 == 0 ? 0.7F : 0.0F));
        for (unsigned int channel = 0; m_generator() % 2 == 0 && channel < 4; ++channel)
            op->setOffsetValue(channel, number(-0.2, 0.2));
        return op;
    }

    static std::unique_ptr<RangeOp> range(double minIn, double maxIn, double minOut, double maxOut)
    {
        return std::make_unique<RangeOp>(Tavrin::BIT_DEPTH_32f, Tavrin::BIT_DEPTH_32f, minIn, maxIn, minOut, maxOut);
    }

    std::unique_ptr<Lut1DOp> halfTable()
    {
        auto op = std::make_unique<Lut1DOp>(
            table(Tavrin::BIT_DEPTH_32f, Tavrin::BIT_DEPTH_32f, 65536, Tavrin::HALF_FLAGS_INPUT_HALF_DOMAIN));
        op->getArray().scale(0.75F);
        return op;
    }

    // A mean of the channels: no steeper than its steepest argument, wherever it is interpolated.
    std::unique_ptr<Lut3DOp> grid()
    {
        using Interpolation = Lut3DOp::InterpolationAlgo;
        auto const interpolation = m_generator() % 2 == 0 ? Interpolation::Trilinear : Interpolation::Tetrahedral;
        auto op = std::make_unique<Lut3DOp>(Tavrin::BIT_DEPTH_32f, Tavrin::BIT_DEPTH_32f, "", "", Descriptions(), interpolation,
                                            2 + m_generator() % 8);
        Array& array = op->getArray();
        for (unsigned int entry = 0; entry < array.getValues().size(); entry += 3)
        {
            float const r = array.get(entry);
            float const g = array.get(entry + 1);
            float const b = array.get(entry + 2);
            array.set(entry, 0.7F * r + 0.2F * g + 0.1F * b);
            array.set(entry + 1, 0.1F * r + 0.6F * g + 0.3F * b);
            array.set(entry + 2, 0.2F * r + 0.2F * g + 0.6F * b);
        }
        return op;
    }

    std::mt19937 m_generator;
};

std::shared_ptr<Color::Transform> transformOf(Steps const& steps, std::size_t count)
{
    auto transform = std::make_shared<Color::Transform>();
    for (std::size_t i = 0; i < count; ++i)
        transform->getOps().append(steps[i].op->clone());
    return transform;
}

// ---------------------------------------------------------------- what is left

bool doesNothing(Kind kind)
{
    return kind == Kind::IdentityMatrix || kind == Kind::SwitchedOffMatrix || kind == Kind::UnlimitedRange;
}

bool clamps(Kind kind)
{
    return kind == Kind::Clamp || kind == Kind::ScalingRange || kind == Kind::Table || kind == Kind::Grid;
}

// The indices of the steps that are left at the default threshold, but for merged matrices, which are left all; identity tables are
// left as clamps. A list that would be empty is left a matrix, which no step stands for.
std::vector<std::size_t> leftOf(Steps const& steps)
{
    std::vector<std::size_t> left;
    for (std::size_t i = steps.size(); i-- > 0;)
    {
        if (doesNothing(steps[i].kind))
            continue;
        bool const onlyClamps = steps[i].kind == Kind::Clamp || steps[i].kind == Kind::IdentityTable;
        bool const nextClamps = !left.empty() && clamps(steps[left.front()].kind);
        // What an identity table leaves is a clamp for the one before it too.
        bool const nextIsIdentityTable = !left.empty() && steps[left.front()].kind == Kind::IdentityTable;
        if (!onlyClamps || !(nextClamps || nextIsIdentityTable))
            left.insert(left.begin(), i);
    }
    return left;
}

bool isTable(Kind kind)
{
    return kind == Kind::Table || kind == Kind::HalfTable;
}

bool wouldMerge(Kind first, Kind second, unsigned int threshold)
{
    if (first == Kind::Matrix && second == Kind::Matrix)
        return threshold <= 95;
    if (isTable(first) && isTable(second))
        return threshold <= 75;
    return first == Kind::Grid && second == Kind::Grid && threshold <= 45;
}

std::size_t countOfLeft(Steps const& steps, unsigned int threshold)
{
    std::vector<std::size_t> const left = leftOf(steps);
    std::size_t count = left.size();
    for (std::size_t i = 1; i < left.size(); ++i)
        count -= wouldMerge(steps[left[i - 1]].kind, steps[left[i]].kind, threshold) ? 1 : 0;
    return std::max<std::size_t>(count, 1);
}

// For each step whether it is a matrix that is merged with another one.
std::vector<bool> mergedMatrices(Steps const& steps)
{
    std::vector<std::size_t> const left = leftOf(steps);
    std::vector<bool> merged(steps.size(), false);
    for (std::size_t i = 1; i < left.size(); ++i)
    {
        if (wouldMerge(steps[left[i - 1]].kind, steps[left[i]].kind, 95))
            merged[left[i - 1]] = merged[left[i]] = true;
    }
    return merged;
}

// ---------------------------------------------------------------- how far results may differ

using Channels = std::array<double, 4>;

// Follows one pixel through a list: how far the values that the two lists give may be apart.
struct ErrorBound
{
    // Two lists that have the same operators from here on give the same for the same values, and round what is not the same: a
    // value between two rows of a table takes five operations.
    void throughCurve(double slope)
    {
        for (double& error : apart)
            error = error == 0.0 ? 0.0 : error * slope + 2 * 5 * kUnitRoundoff;
    }

    // A matrix that is merged with others costs a product, two sums and the sum with an offset where it is applied, and as much
    // for its part in the composition and what is applied then. Each of these eight roundings is relative to sums of magnitudes,
    // since terms may cancel each other.
    void throughMergedMatrix(MatrixOp const& matrix)
    {
        Channels const before = magnitude;
        throughMatrix(matrix);
        for (unsigned int row = 0; row < 4; ++row)
        {
            magnitude[row] = std::abs(matrix.getOffsetValue(row));
            for (unsigned int column = 0; column < 4; ++column)
                magnitude[row] += std::abs(matrix.getArray().get(4 * row + column)) * before[column];
            apart[row] += 8 * kUnitRoundoff * magnitude[row];
        }
    }

    void throughMatrix(MatrixOp const& matrix)
    {
        Channels const before = apart;
        for (unsigned int row = 0; row < 4; ++row)
        {
            apart[row] = 0.0;
            for (unsigned int column = 0; column < 4; ++column)
                apart[row] += std::abs(matrix.getArray().get(4 * row + column)) * before[column];
        }
    }

    // Of red, green and blue; alpha goes by.
    void throughGrid()
    {
        double const largest = std::max({apart[0], apart[1], apart[2]});
        double const alpha = apart[3];
        apart.fill(largest);
        throughCurve(1.0);
        apart[3] = alpha;
    }

    // A clamp in its place gives the value itself, the table a place between two rows: scaled, a fraction, two rows and their mean.
    void throughIdentityTable()
    {
        for (unsigned int channel = 0; channel < 3; ++channel)
            apart[channel] += 6 * kUnitRoundoff;
    }

    Channels apart{};
    Channels magnitude{};
};

void advance(ErrorBound& bound, Step const& step, bool isMerged)
{
    switch (step.kind)
    {
    case Kind::Matrix:
        if (isMerged)
            bound.throughMergedMatrix(static_cast<MatrixOp const&>(*step.op));
        else
            bound.throughMatrix(static_cast<MatrixOp const&>(*step.op));
        break;
    case Kind::ScalingRange:
    case Kind::Table:
    case Kind::HalfTable:
        bound.throughCurve(step.slope);
        break;
    case Kind::Grid:
        bound.throughGrid();
        break;
    case Kind::IdentityTable:
        bound.throughIdentityTable();
        break;
    default:
        break;
    }
}

std::vector<float> rendered(std::shared_ptr<Color::Transform> const& transform, std::vector<float> const& pixels)
{
    std::vector<float> result(pixels.size());
    rendererOf(transform, Tavrin::PF_RGBA_32f, Tavrin::PF_RGBA_32f)
        .apply(pixels.data(), result.data(), Rendering::ROI(0, 0, kPixels, 1), 0, 0);
    return result;
}

// A bound for each value of the result.
std::vector<double> bounds(Steps const& steps, std::vector<float> const& pixels)
{
    std::vector<bool> const merged = mergedMatrices(steps);
    std::vector<ErrorBound> bound(kPixels);
    std::vector<float> values = pixels;
    for (std::size_t i = 0; i < steps.size(); ++i)
    {
        bool const beginsRun = merged[i] && (i == 0 || !merged[i - 1]);
        for (unsigned int pixel = 0; pixel < kPixels; ++pixel)
        {
            for (unsigned int channel = 0; beginsRun && channel < 4; ++channel)
                bound[pixel].magnitude[channel] = std::abs(values[4 * pixel + channel]);
            advance(bound[pixel], steps[i], merged[i]);
        }
        values = rendered(transformOf(steps, i + 1), pixels);
    }
    std::vector<double> result;
    for (ErrorBound const& pixel : bound)
        result.insert(result.end(), pixel.apart.begin(), pixel.apart.end());
    return result;
}

std::string describe(Steps const& steps)
{
    std::string text;
    for (Step const& step : steps)
        text += std::to_string(static_cast<int>(step.kind)) + " ";
    return text;
}

std::shared_ptr<Color::Transform> optimized(Steps const& steps, unsigned int threshold)
{
    auto transform = transformOf(steps, steps.size());
    TransformTools::optimize(transform, threshold, TransformTools::OptimizerOverrides());
    return transform;
}

TEST(OptimizedRendering, GivesWhatTheListGivesAsItStands)
{
    for (unsigned int seed = 0; seed < 400; ++seed)
    {
        StepMaker maker(seed);
        Steps const steps = maker.list();
        SCOPED_TRACE("seed " + std::to_string(seed) + ", kinds " + describe(steps));
        std::vector<float> pixels(4 * kPixels);
        for (float& value : pixels)
            value = maker.number(-0.25, 1.25);
        std::vector<float> const plain = rendered(transformOf(steps, steps.size()), pixels);
        std::vector<float> const simplified = rendered(optimized(steps, Tavrin::OPTIMIZER_DEFAULT_THRESHOLD), pixels);
        std::vector<double> const tolerance = bounds(steps, pixels);
        for (std::size_t i = 0; i < plain.size(); ++i)
        {
            ASSERT_LE(std::abs(double{plain[i]} - double{simplified[i]}), tolerance[i])
                << "value " << i << ": " << plain[i] << ", optimized " << simplified[i];
        }
    }
}

TEST(OptimizedRendering, HasAsManyRenderersAsOperatorsAreLeft)
{
    for (unsigned int seed = 0; seed < 400; ++seed)
    {
        Steps const steps = StepMaker(seed).list();
        auto const renderers = [&](unsigned int threshold)
        { return rendererOf(optimized(steps, threshold), Tavrin::PF_RGBA_32f, Tavrin::PF_RGBA_32f).getNumRenderers(); };
        for (unsigned int threshold : {90U, 75U, 45U})
        {
            ASSERT_EQ(countOfLeft(steps, threshold), renderers(threshold))
                << "seed " << seed << ", threshold " << threshold << ", kinds " << describe(steps);
        }
    }
}

} // namespace
