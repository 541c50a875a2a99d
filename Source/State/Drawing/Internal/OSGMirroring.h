#pragma once

#include "OSGMatrix.h"

namespace OSG
{
/// Whether the linear part has a negative determinant, so that corners run the other way round.
inline bool is_mirrored(Matrix const &matrix)
{
    auto const at = [&matrix](std::size_t c, std::size_t r) { return Real64(matrix[c][r]); };
    return at(0, 0) * (at(1, 1) * at(2, 2) - at(2, 1) * at(1, 2)) -
               at(1, 0) * (at(0, 1) * at(2, 2) - at(2, 1) * at(0, 2)) +
               at(2, 0) * (at(0, 1) * at(1, 2) - at(1, 1) * at(0, 2)) <
           0;
}
} // namespace OSG
