// The types of image files: one table row for each, and the choice of type and pixel format for a file.
#ifndef TAVRIN_PROGRAM_IMAGE_TYPES_H
#define TAVRIN_PROGRAM_IMAGE_TYPES_H

#include "image.h"
#include "inputFile.h"
#include "outputFile.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace Program
{

struct ImageType
{
    char const* name;
    char const* description;
    // Lower case, without dots.
    std::vector<char const*> extensions;
    // What a file may begin with.
    std::vector<std::string_view> signatures;
    // What write takes, in the order of depths.
    std::vector<Tavrin::PixelFormat> written;
    // The depth for values that none of these holds whole, and for pictures made without an input.
    Tavrin::BitDepth usualDepth;
    // The picture of a file that begins with one of the signatures. Throws Failure.
    Image (*read)(InputFile const& file, RowReport const& report);
    // Throws Failure or another std::exception; errors of the file itself are remembered there.
    void (*write)(Image const& image, OutputFile& file, RowReport const& report);
};

std::vector<ImageType> const& imageTypes();

// The type for a name that is to be written, by its extension in any case. Throws UsageFailure.
ImageType const& typeForWriting(std::string const& path);

// The format in which the type holds a picture of the source's format: of the wished depth (UsageFailure when the type has it
// not), else of the source's depth, else of the first depth that holds all the source's values, else of the usual depth.
// Alpha is kept when the type has it.
Tavrin::PixelFormat formatForWriting(ImageType const& type, std::optional<Tavrin::BitDepth> wished, Tavrin::PixelFormat source);

// Reads a picture of any of the types, told by its first bytes.
Image readImage(std::string const& path, RowReport const& report);

// Writes a picture whose format is one of the type's. The file appears whole or not at all.
void writeImage(ImageType const& type, Image const& image, std::string const& path, RowReport const& report);

} // namespace Program

#endif
