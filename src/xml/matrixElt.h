// The element <Matrix>.
#ifndef TAVRIN_XML_MATRIX_ELT_H
#define TAVRIN_XML_MATRIX_ELT_H

#include "transform/matrixOp.h"
#include "xml/arrayElt.h"
#include "xml/opElt.h"

#include <string>
#include <vector>

namespace Color::Xml::Reader
{

// Versions up to 1.2: 3 by 3 values, or 4 by 4 of which the first three rows end in an offset and the last row is not used.
class MatrixElt : public TypedOpElt<MatrixOp>, public ArrayMgt
{
public:
    Array* updateDimension(std::vector<unsigned int> const& dimensions) override;
    void finalize(unsigned int valuesRead) override;

protected:
    // Turns rows of so many columns into a square matrix, and the column behind it, if there is one, into the offsets.
    void separateOffsets(unsigned int rows, unsigned int columns);
    // The array is as the operator wants it.
    void complete();
};

// Versions from 1.3: 3 or 4 rows, each with an offset at its end or without one.
class MatrixElt_1_3 : public MatrixElt
{
public:
    Array* updateDimension(std::vector<unsigned int> const& dimensions) override;
    void finalize(unsigned int valuesRead) override;
};

} // namespace Color::Xml::Reader

#endif
