// The tables that are measured, as numbers and as operators of documents, and transforms made of documents.
#ifndef TAVRIN_BENCH_SHARED_TABLES_H
#define TAVRIN_BENCH_SHARED_TABLES_H

#include <tavrin/tavrin.h>

#include <string>
#include <vector>

namespace Bench
{

// A power, from 0 to 1.
float curve(double x);

// The curve at so many rows.
std::vector<float> column(unsigned int rows);

// Saturation and the curve: smooth, and different in every channel.
void lookAt(double r, double g, double b, float* out);

// The look at so many points an axis, blue varying fastest.
std::vector<float> grid(unsigned int points);

// Elements of a document, between 32-bit floats. The tag is that of a 1D table or of its inverse.
std::string table1DElement(std::string const& tag, unsigned int rows);
std::string table3DElement(unsigned int points, std::string const& interpolation);

// Exits with the message of a call that failed.
void check(Tavrin::TavStatus const& status);

// The transform of a document that holds these elements.
Tavrin::TransformPtr fromElements(std::string const& elements);

// One table by itself.
Tavrin::TransformPtr table1D(unsigned int rows);
Tavrin::TransformPtr table3D(unsigned int points, std::string const& interpolation = "trilinear");

} // namespace Bench

#endif
