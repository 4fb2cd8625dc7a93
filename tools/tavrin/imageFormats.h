// The reader and the writer of each type of image file; the table of imageTypes.h has them all.
// Readers throw Failure with the path; they check what a file claims before they ask for memory. Writers take the formats of
// their row of the table.
#ifndef TAVRIN_PROGRAM_IMAGE_FORMATS_H
#define TAVRIN_PROGRAM_IMAGE_FORMATS_H

#include "image.h"
#include "inputFile.h"
#include "outputFile.h"

namespace Program
{

// Scan lines or tiles, channels R, G, B, perhaps A, or Y alone (which becomes grey), of halfs or floats. Written in scan lines
// with ZIP compression, in the frame that the picture came from.
Image readExr(InputFile const& file, RowReport const& report);
void writeExr(Image const& image, OutputFile& file, RowReport const& report);

// All colour types; palettes and greys become RGB, a transparent colour becomes alpha. Colour chunks are not looked at.
Image readPng(InputFile const& file, RowReport const& report);
void writePng(Image const& image, OutputFile& file, RowReport const& report);

// Grey (which becomes RGB) or RGB, perhaps alpha, of 8 or 16 bits, halfs or floats, in strips or tiles, of any compression that
// libtiff knows. Written uncompressed in strips.
Image readTiff(InputFile const& file, RowReport const& report);
void writeTiff(Image const& image, OutputFile& file, RowReport const& report);

// One image element of RGB, RGBA or ABGR with 10 bits (RGB only) or 12 bits in the filled form A or 16 bits, in either byte
// order, not compressed. Written big-endian.
Image readDpx(InputFile const& file, RowReport const& report);
void writeDpx(Image const& image, OutputFile& file, RowReport const& report);

} // namespace Program

#endif
