#pragma once

/// \file
/// How different two pictures look to a person. It serves pictures of real models, of which so many
/// pixels lie at edges that a comparison pixel by pixel says little.

#include <iosfwd>

#include "Oracle/PictureComparison.h"

namespace OSG::Test
{
/// Differences of colours are those of CIE 1976 (L*, a*, b*), where 2.3 is just noticeable. Each
/// colour is the mean over three by three pixels, so that an edge which falls to the neighbouring
/// pixel counts little.
struct PerceivedDifference
{
    /// Bounds of two pictures that look the same.
    static constexpr Real64 MostMean = 0.5;
    static constexpr Real64 MostNoticed = 0.01;
    /// A difference that is seen at a glance.
    static constexpr Real64 Glance = 10;

    Real64 mean = 0;    ///< over all pixels
    Real64 noticed = 0; ///< share of the pixels whose difference is above Glance

    bool looksTheSame() const { return mean <= MostMean && noticed <= MostNoticed; }
};

/// Pictures of different sizes differ in each pixel.
PerceivedDifference perceived_difference(Pixels const &a, Pixels const &b);

void PrintTo(PerceivedDifference const &difference, std::ostream *out);
} // namespace OSG::Test
