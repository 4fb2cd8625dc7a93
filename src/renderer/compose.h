// Two operators of one kind as one: the first, then the second. The depth between them must be the same, or this throws.
#ifndef TAVRIN_RENDERER_COMPOSE_H
#define TAVRIN_RENDERER_COMPOSE_H

#include "transform/lut1DOp.h"
#include "transform/lut3DOp.h"
#include "transform/matrixOp.h"

#include <memory>

namespace Color::TransformTools
{

// The grid of a composed 1D table: the first table's own, one of the ideal size for its input depth, or 65536 rows. A first table
// that has a half domain, or at least as many rows, keeps its own grid.
enum class ComposeMethod
{
    FirstGrid = 0,
    IdealGrid = 1,
    FullGrid = 2
};

// By arithmetic; the bypass is a new one.
std::unique_ptr<MatrixOp> compose(MatrixOp const& first, MatrixOp const& second);

// Tables are composed by rendering one grid of samples through both, in single precision. The result has the bypass of the first.
std::unique_ptr<Lut1DOp> compose(Lut1DOp const& first, Lut1DOp const& second, ComposeMethod method);
// The grid is the larger of the two, and the interpolation that of the first.
std::unique_ptr<Lut3DOp> compose(Lut3DOp const& first, Lut3DOp const& second);

} // namespace Color::TransformTools

#endif
