#pragma once

/// \file
/// Holds a renderer's picture against the slow one.

#include <iosfwd>

#include "SlowPicture.h"

namespace OSG::Test
{
/// A picture as a renderer gives it: three bytes a pixel, row by row from the left top corner.
struct Pixels
{
    UInt32 width = 0;
    UInt32 height = 0;
    std::vector<UInt8> rgb;

    UInt8 const *at(UInt32 x, UInt32 y) const { return &rgb[(std::size_t(y) * width + x) * 3]; }
    UInt8 *at(UInt32 x, UInt32 y) { return &rgb[(std::size_t(y) * width + x) * 3]; }
};

/// A byte may differ by this much: renderers round colours, weights of texels and each blending to
/// a step of 1/255.
inline constexpr int ColorTolerance = 3;

struct PictureComparison
{
    UInt32 compared = 0; ///< pixels away from edges
    UInt32 covered = 0;  ///< those of them that show a triangle
    UInt32 wrong = 0;    ///< those whose colour differs by more than ColorTolerance
    int largest = 0;     ///< greatest difference of a byte among the pixels compared
    UInt32 worstX = 0;
    UInt32 worstY = 0;

    bool isEqual() const { return wrong == 0; }
};

/// Pictures of different sizes differ in each pixel.
PictureComparison compare(SlowPicture const &expected, Pixels const &pixels);

/// The slow picture as a renderer would give it.
Pixels pixels_of(SlowPicture const &picture);

void PrintTo(PictureComparison const &comparison, std::ostream *out);
} // namespace OSG::Test
