// The synthetic test chart.
#ifndef TAVRIN_PROGRAM_CHART_H
#define TAVRIN_PROGRAM_CHART_H

#include "image.h"

#include <string>

namespace Program
{

// How the chart's light becomes numbers.
enum class ChartEncoding
{
    // Scene-linear, 1.0 is a white surface in full light; up to 32.
    LINEAR,
    // The curve of IEC 61966-2-1; what is brighter than 1.0 is left above 1.0.
    SRGB,
    // The logarithm of film scans: code 95 of 1023 is black, 685 is 1.0, and 300 codes are a factor of ten.
    LOG
};

// The chart in PF_RGB_32f with the primaries and the white of Rec. 709. It has the same look at any size; at 16:9 nothing in it
// is stretched. From left to right and from top to bottom: 24 colour patches; all hues by saturation and brightness; a sky with
// a sun, and shaded balls; ramps; all hues from 6 stops below 1.0 to 4 above; grey from 8 stops below 1.0 to 5 above.
Image drawChart(std::string const& path, unsigned int width, unsigned int height, ChartEncoding encoding, RowReport const& report);

} // namespace Program

#endif
