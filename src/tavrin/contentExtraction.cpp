// The walk by which a caller can display a transform: what every operator tells, and for each operator what is its own.
#include "tavrin/contentExtraction.h"

#include "transform/ops.h"
#include "utils/errorMessage.h"
#include "utils/utils.h"
#include "xml/xmlTransformResolver.h"

#include <algorithm>
#include <array>
#include <iterator>

namespace Tavrin
{

namespace
{

using Callbacks = Transform::ContentCallbacks;
using Color::Utils::formatFloat;

void addEntry(Callbacks& callbacks, std::string const& key, std::string const& value)
{
    callbacks.addEntry(key.c_str(), value.c_str());
}

void addNumber(Callbacks& callbacks, std::string const& key, double value)
{
    addEntry(callbacks, key, formatFloat(static_cast<float>(value)));
}

// Of red, green and blue.
void addTuple(Callbacks& callbacks, std::string const& key, double red, double green, double blue)
{
    addEntry(callbacks, key, formatTuple({static_cast<float>(red), static_cast<float>(green), static_cast<float>(blue)}));
}

void addDescriptions(Callbacks& callbacks, Color::Descriptions const& descriptions)
{
    unsigned int number = 0;
    for (std::string const& text : descriptions.getList())
        addEntry(callbacks, "Description " + std::to_string(++number), text);
}

// What each operator tells of its own: an overload for every operator.

void addOwnEntries(Callbacks& callbacks, Color::MatrixOp const& matrix)
{
    Color::MatrixOp::MatrixArray const& array = matrix.getArray();
    for (unsigned int row = 0; row < 4; ++row)
    {
        unsigned int const first = row * array.getDimension();
        addEntry(callbacks, "Array Row " + std::to_string(row + 1),
                 formatTuple({array.get(first), array.get(first + 1), array.get(first + 2), array.get(first + 3),
                              matrix.getOffsets()[row]}));
    }
}

void addOwnEntries(Callbacks& callbacks, Color::RangeOp const& range)
{
    if (!range.minIsEmpty())
    {
        addNumber(callbacks, "Min Input Value", range.getMinInValue());
        addNumber(callbacks, "Min Output Value", range.getMinOutValue());
    }
    if (!range.maxIsEmpty())
    {
        addNumber(callbacks, "Max Input Value", range.getMaxInValue());
        addNumber(callbacks, "Max Output Value", range.getMaxOutValue());
    }
}

// The path itself where it can't be resolved.
std::string resolvedPathOf(Color::ReferenceOp const& reference, std::string const& file)
{
    std::string path = reference.getPath();
    Color::statusOf([&] { path = Color::TransformUtils::resolvePath(reference, file); });
    return path;
}

void addOwnEntries(Callbacks& callbacks, Color::ReferenceOp const& reference, std::string const& file)
{
    if (!reference.getAlias().empty())
    {
        addEntry(callbacks, "Alias", reference.getAlias());
        return;
    }
    addEntry(callbacks, "Base Path", getBasePathName(reference.getBasePath()));
    addEntry(callbacks, "Path", reference.getPath());
    std::string const resolvedPath = resolvedPathOf(reference, file);
    if (resolvedPath != reference.getPath())
        addEntry(callbacks, "Resolved Path", resolvedPath);
}

void addOwnEntries(Callbacks& callbacks, Color::GammaOp const& gamma)
{
    addEntry(callbacks, "Gamma Style", Color::GammaOp::getGammaStyleName(gamma.getGammaStyle()));
    for (Color::GammaOp::Params const& params :
         {gamma.getRedParams(), gamma.getGreenParams(), gamma.getBlueParams(), gamma.getAlphaParams()})
    {
        static constexpr char const* kNames[] = {"gamma", "offset"};
        for (std::size_t i = 0; i < std::min(params.size(), std::size(kNames)); ++i)
            addNumber(callbacks, kNames[i], params[i]);
    }
}

void addOwnEntries(Callbacks& callbacks, Color::ExposureContrastOp const& op)
{
    addEntry(callbacks, "E/C Style", Color::ExposureContrastOp::getStyleName(op.getStyle()));
    addNumber(callbacks, "Exposure", op.getExposure()->getValue());
    addNumber(callbacks, "Contrast", op.getContrast()->getValue());
    addNumber(callbacks, "Gamma", 1.0); // The operator has no gamma of its own: always the neutral one.
    addNumber(callbacks, "Pivot", op.getPivot());
}

void addOwnEntries(Callbacks& callbacks, Color::LogOp const& log)
{
    addEntry(callbacks, "Log Style", Color::LogOp::getLogStyleName(log.getLogStyle()));
    if (!Color::LogOp::hasParameters(log.getLogStyle()))
        return;
    // In the order of the display; the numbers are places in the operator's lists.
    struct
    {
        char const* name;
        std::size_t index;
    } const entries[] = {{"RefWhite", 1}, {"RefBlack", 2}, {"Highlight", 3}, {"Shadow", 4}, {"Gamma", 0}};
    for (auto const& entry : entries)
    {
        addTuple(callbacks, entry.name, log.getRedParams().at(entry.index), log.getGrnParams().at(entry.index),
                 log.getBluParams().at(entry.index));
    }
}

void addOwnEntries(Callbacks& callbacks, Color::CDLOp const& cdl)
{
    addEntry(callbacks, "CDL Style", Color::CDLOp::getCDLStyleName(cdl.getCDLStyle()));
    addTuple(callbacks, "Slope", cdl.getSlopeParams()[0], cdl.getSlopeParams()[1], cdl.getSlopeParams()[2]);
    addTuple(callbacks, "Offset", cdl.getOffsetParams()[0], cdl.getOffsetParams()[1], cdl.getOffsetParams()[2]);
    addTuple(callbacks, "Power", cdl.getPowerParams()[0], cdl.getPowerParams()[1], cdl.getPowerParams()[2]);
    addNumber(callbacks, "Saturation", cdl.getSaturation());
}

// One entry for each row, or grid point, of a table.
void addTableRows(Callbacks& callbacks, Color::Array const& array)
{
    for (unsigned int first = 0; first + 2 < array.getValues().size(); first += 3)
        addEntry(callbacks, "Array Row " + std::to_string(first / 3 + 1),
                 formatTuple({array.get(first), array.get(first + 1), array.get(first + 2)}));
}

// An inverse table too.
void addOwnEntries(Callbacks& callbacks, Color::Lut1DOp const& lut)
{
    addEntry(callbacks, "Interpolation", Color::Lut1DOp::getInterpolationName(lut.getInterpolation()));
    addEntry(callbacks, "Array Dimension", std::to_string(lut.getArray().getDimension()));
    if (lut.isInputHalfDomain())
        addEntry(callbacks, "Half Domain", "Yes");
    if (lut.isOutputRawHalfs())
        addEntry(callbacks, "Raw Halfs", "Yes");
    if (lut.getHueAdjust() != Color::Lut1DOp::HueAdjust::None)
        addEntry(callbacks, "Hue Adjustment", Color::Lut1DOp::getHueAdjustName(lut.getHueAdjust()));
    addTableRows(callbacks, lut.getArray());
}

void addOwnEntries(Callbacks& callbacks, Color::Lut3DOp const& lut)
{
    std::string const dimension = std::to_string(lut.getArray().getDimension());
    addEntry(callbacks, "Interpolation", Color::Lut3DOp::getInterpolationName(lut.getInterpolation()));
    addEntry(callbacks, "Array Dimension", dimension + " x " + dimension + " x " + dimension);
    addTableRows(callbacks, lut.getArray());
}

void addOwnEntries(Callbacks&, Color::DitherOp const&) {}

void addOwnEntries(Callbacks& callbacks, Color::GamutMapOp const& gamutMap)
{
    addEntry(callbacks, "Gamut Map Style", Color::GamutMapOp::getStyleName(gamutMap.getStyle()));
}

void addOwnEntries(Callbacks& callbacks, Color::HueVectorOp const& hueVector)
{
    using Op = Color::HueVectorOp;
    addEntry(callbacks, "Hue Vector Style", Op::getStyleName(hueVector.getStyle()));
    addEntry(callbacks, "Parameter Style", Op::getParamStyleName(hueVector.getParamStyle()));
    static constexpr char const* kNames[Op::kParameterCount] = {"Center", "Width", "Amount"};
    for (std::size_t i = 0; i < hueVector.getParams().size() && i < Op::kParameterCount; ++i)
        addNumber(callbacks, kNames[i], hueVector.getParams()[i]);
}

// All operators but a reference are the same wherever they were read.
template <class Operator>
void addOwnEntries(Callbacks& callbacks, Operator const& op, std::string const& /*file*/)
{
    addOwnEntries(callbacks, op);
}

using AddOwnEntries = void (*)(Callbacks& callbacks, Color::Op const& op, std::string const& file);

constexpr std::array kOwnEntries = {
#define TAVRIN_OP(number, Class, name, Family)                                           \
    AddOwnEntries([](Callbacks& callbacks, Color::Op const& op, std::string const& file) \
                  { addOwnEntries(callbacks, static_cast<Color::Class const&>(op), file); }),
#include "transform/opTypes.def"
#undef TAVRIN_OP
};

void addRenderer(Callbacks& callbacks, Rendering::VirtualRenderer const* renderer)
{
    addEntry(callbacks, "Renderer", renderer == nullptr ? "none" : Rendering::getRendererKindName(renderer->getOpType()));
}

void addOpEntries(Callbacks& callbacks, Color::Op const& op, std::string const& file = std::string())
{
    addEntry(callbacks, "Identifier", op.getId());
    addEntry(callbacks, "Name", op.getName());
    addEntry(callbacks, "Input Bit Depth", getBitDepthName(op.getInputBitDepth()));
    addEntry(callbacks, "Output Bit Depth", getBitDepthName(op.getOutputBitDepth()));
    if (op.getBypass()->getValue())
        addEntry(callbacks, "Bypass", "true");
    addDescriptions(callbacks, op.getDescriptions());
    kOwnEntries.at(static_cast<std::size_t>(op.getOpType()))(callbacks, op, file);
}

void addTransformEntries(Callbacks& callbacks, Color::Transform const& transform, BitDepth input, BitDepth output)
{
    addDescriptions(callbacks, transform.getDescriptions());
    addEntry(callbacks, "Input Descriptor", transform.getInputDescriptor());
    addEntry(callbacks, "Output Descriptor", transform.getOutputDescriptor());
    addEntry(callbacks, "Input Bit Depth", getBitDepthName(input));
    addEntry(callbacks, "Output Bit Depth", getBitDepthName(output));
    addEntry(callbacks, "Nickname", transform.getName());
    addEntry(callbacks, "Inverse Of", transform.getInverseOfId());
    addEntry(callbacks, "Identifier", transform.getId());
}

template <class Content>
void addSection(Callbacks& callbacks, std::string const& name, Content const& content)
{
    callbacks.beginSection(name.c_str());
    content();
    callbacks.endSection();
}

} // namespace

void extractContent(Color::Transform const& transform, std::string const& file, Callbacks& callbacks)
{
    // Depths first: an empty transform has none, and is refused before a section begins.
    BitDepth const input = transform.getInputBitDepth();
    BitDepth const output = transform.getOutputBitDepth();
    addSection(callbacks, "Transform",
               [&]
               {
                   addTransformEntries(callbacks, transform, input, output);
                   Color::OpList const& ops = transform.getOps();
                   for (unsigned int i = 0; i < ops.size(); ++i)
                       addSection(callbacks, ops.get(i).getOpTypeName(), [&] { addOpEntries(callbacks, ops.get(i), file); });
               });
}

void extractPipeline(Rendering::Pipeline const& pipeline, PixelFormat input, PixelFormat output, Callbacks& callbacks)
{
    auto const addOp = [&](unsigned int i)
    {
        Color::Op const& op = pipeline.transform->getOps().get(i);
        addSection(callbacks, op.getOpTypeName(),
                   [&]
                   {
                       addRenderer(callbacks, pipeline.rendererOfOp[i]);
                       addOpEntries(callbacks, op);
                   });
    };
    addSection(callbacks, "Transform",
               [&]
               {
                   addTransformEntries(callbacks, *pipeline.transform, Color::Utils::depthOf(input), Color::Utils::depthOf(output));
                   for (unsigned int i = 0; i < pipeline.transform->getOps().size(); ++i)
                       addOp(i);
                   if (pipeline.convertsDepthOnly())
                       addSection(callbacks, "Depth Conversion", [&] { addRenderer(callbacks, &(*pipeline.renderers)[0]); });
               });
}

std::string formatTuple(std::initializer_list<float> values)
{
    std::string text;
    for (float const value : values)
        text += formatFloat(value);
    return text;
}

} // namespace Tavrin
