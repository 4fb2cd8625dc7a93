// The walk by which a caller can display a transform.
#ifndef TAVRIN_TAVRIN_CONTENT_EXTRACTION_H
#define TAVRIN_TAVRIN_CONTENT_EXTRACTION_H

#include "renderer/CPURenderer.h"
#include "transform/transform.h"

#include <tavrin/transform.h>

#include <initializer_list>
#include <string>

namespace Tavrin
{

// Tells the transform section by section: its own entries, then a section for each operator. An empty transform is refused. The
// file is the one that it was read from, against which relative references are resolved; it may be empty.
void extractContent(Color::Transform const& transform, std::string const& file, Transform::ContentCallbacks& callbacks);

// Tells in the same way what a transform is turned into between the formats. Each operator has one more entry, its renderer; a
// section of its own tells a renderer that belongs to no operator.
void extractPipeline(Rendering::Pipeline const& pipeline, PixelFormat input, PixelFormat output,
                     Transform::ContentCallbacks& callbacks);

// Numbers as formatFloat prints them, one after the other; the width of the field separates them.
std::string formatTuple(std::initializer_list<float> values);

} // namespace Tavrin

#endif
