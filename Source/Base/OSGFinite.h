#pragma once

/// \file
/// Whether all numbers of a value are finite: neither infinite nor NaN.

#include <cmath>

#include "OSGMatrix.h"

namespace OSG
{
inline bool is_finite(Real32 value) { return std::isfinite(value); }

/// Of a point or vector.
template <class Tuple>
bool is_finite(Tuple const &values)
{
    bool finite = true;
    for(UInt32 i = 0; i < Tuple::Dimension; ++i)
        finite = finite && std::isfinite(values[i]);
    return finite;
}

inline bool is_finite(Matrix const &matrix)
{
    return is_finite(matrix[0]) && is_finite(matrix[1]) && is_finite(matrix[2]) &&
           is_finite(matrix[3]);
}
} // namespace OSG
