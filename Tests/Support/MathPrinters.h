#pragma once

/// \file
/// How GoogleTest shows the values of the system; found by argument-dependent look-up.

#include <ostream>

#include "OSGMatrix.h"
#include "OSGPlane.h"
#include "OSGVector.h"

namespace OSG
{
template <class Tuple>
void print_numbers(Tuple const &tuple, UInt32 count, std::ostream &out)
{
    out << '(';
    for(UInt32 i = 0; i < count; ++i)
        out << (i != 0 ? ", " : "") << tuple[i];
    out << ')';
}
template <class T, UInt32 N>
void PrintTo(Point<T, N> const &p, std::ostream *out)
{
    print_numbers(p, N, *out);
}
template <class T, UInt32 N>
void PrintTo(Vector<T, N> const &v, std::ostream *out)
{
    print_numbers(v, N, *out);
}
inline void PrintTo(Quaternion const &q, std::ostream *out) { print_numbers(q, 4, *out); }
inline void PrintTo(Matrix const &m, std::ostream *out)
{
    *out << "columns";
    for(UInt32 c = 0; c < 4; ++c)
        PrintTo(m[c], out);
}
inline void PrintTo(Plane const &plane, std::ostream *out)
{
    PrintTo(plane.getNormal(), out);
    *out << " at " << plane.getDistanceFromOrigin();
}
} // namespace OSG
