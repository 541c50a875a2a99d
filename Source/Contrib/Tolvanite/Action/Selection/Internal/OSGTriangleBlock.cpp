#include "OSGTriangleBlock.h"

#include "OSGFourLanes.h"

namespace OSG
{
namespace
{
using Lanes = Real32 __attribute__((vector_size(16), aligned(4), may_alias));

Lanes row(Real32 const *values, UInt32 c)
{
    return *reinterpret_cast<Lanes const *>(values + 4 * c);
}

Lanes distance(TriangleBlock const &block, UInt32 c, BoxPlanes::Entry const &plane)
{
    return plane.normal[0] * row(block.x, c) + plane.normal[1] * row(block.y, c) +
           plane.normal[2] * row(block.z, c) - plane.distance;
}
} // namespace

void grade_block(TriangleBlock const &block, BoxPlanes const &planes, UInt32 mask,
                 BlockGrades &grades)
{
    for(UInt32 rest = mask; rest != 0; rest &= rest - 1)
    {
        UInt32 const k = static_cast<UInt32>(__builtin_ctz(rest));
        BoxPlanes::Entry const &plane = planes.planes[k];
        Lanes const a = distance(block, 0, plane);
        Lanes const b = distance(block, 1, plane);
        Lanes const c = distance(block, 2, plane);
        Real32 const margin = plane.margin;
        auto const outA = a < 0.f;
        auto const outB = b < 0.f;
        auto const outC = c < 0.f;
        grades.outside |= lane_bits(outA & outB & outC);
        grades.crossing |= lane_bits(outA | outB | outC);
        auto const clearA = a > margin;
        auto const clearB = b > margin;
        auto const clearC = c > margin;
        grades.unclear[k] = ~lane_bits(clearA & clearB & clearC) & 0xFu;
        grades.touching |= ~lane_bits((clearA | (a < -margin)) & (clearB | (b < -margin)) &
                                      (clearC | (c < -margin))) &
                           0xFu;
    }
    for(UInt32 c = 0; c < 3; ++c)
        *reinterpret_cast<Lanes *>(grades.distance + 4 * c) = distance(block, c, planes.planes[6]);
}
} // namespace OSG
