// Highway includes this source once for each instruction set.
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "OSGPlacedNormals.cpp"
#include <hwy/foreach_target.h>
// Behind foreach_target.h: they are read for each set.
#include <hwy/highway.h>

#include <algorithm>
#include <cmath>

#include "OSGPlacedNormals.h"

#ifndef OSG_SHORTEST_NORMAL
#define OSG_SHORTEST_NORMAL
namespace OSG
{
namespace
{
constexpr Real32 ShortestNormal = 1e-6f; // shorter ones keep their length
} // namespace
} // namespace OSG
#endif

HWY_BEFORE_NAMESPACE();
namespace OSG::HWY_NAMESPACE
{
namespace
{
namespace hn = hwy::HWY_NAMESPACE;
constexpr std::size_t MostLanes = 16;
using Lanes = hn::CappedTag<Real32, MostLanes>;
using Values = hn::Vec<Lanes>;

HWY_INLINE Values row(Matrix const &matrix, UInt32 r, Values x, Values y, Values z)
{
    Lanes const lanes;
    return hn::Add(
        hn::Add(hn::Mul(hn::Set(lanes, matrix[0][r]), x), hn::Mul(hn::Set(lanes, matrix[1][r]), y)),
        hn::Mul(hn::Set(lanes, matrix[2][r]), z));
}

HWY_INLINE void place(Real32 *normals, Matrix const *matrix)
{
    Lanes const lanes;
    Values x;
    Values y;
    Values z;
    hn::LoadInterleaved3(lanes, normals, x, y, z);
    if(matrix != nullptr)
    {
        Values const fromX = x;
        Values const fromY = y;
        Values const fromZ = z;
        x = row(*matrix, 0, fromX, fromY, fromZ);
        y = row(*matrix, 1, fromX, fromY, fromZ);
        z = row(*matrix, 2, fromX, fromY, fromZ);
    }
    auto const length = hn::Sqrt(hn::Add(hn::Add(hn::Mul(x, x), hn::Mul(y, y)), hn::Mul(z, z)));
    auto const isShort = hn::Lt(length, hn::Set(lanes, ShortestNormal));
    auto const factor = hn::Div(hn::Set(lanes, 1.f), length);
    hn::StoreInterleaved3(hn::IfThenElse(isShort, x, hn::Mul(x, factor)),
                          hn::IfThenElse(isShort, y, hn::Mul(y, factor)),
                          hn::IfThenElse(isShort, z, hn::Mul(z, factor)), lanes, normals);
}

void place_normals_in_lanes(Vec3f *normals, std::size_t count, Matrix const *matrix)
{
    std::size_t const step = hn::Lanes(Lanes());
    std::size_t at = 0;
    for(; at + step <= count; at += step)
        place(normals[at].values(), matrix);
    if(at == count)
        return;
    Vec3f rest[MostLanes];
    std::copy(normals + at, normals + count, rest);
    place(rest[0].values(), matrix);
    std::copy_n(rest, count - at, normals + at);
}
} // namespace
} // namespace OSG::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace OSG
{
HWY_EXPORT(place_normals_in_lanes);

void place_normals(Vec3f *normals, std::size_t count, Matrix const *matrix)
{
    HWY_DYNAMIC_DISPATCH(place_normals_in_lanes)(normals, count, matrix);
}

void place_normals_slowly(Vec3f *normals, std::size_t count, Matrix const *matrix)
{
    for(std::size_t i = 0; i < count; ++i)
    {
        Vec3f at = matrix != nullptr ? *matrix * normals[i] : normals[i];
        Real32 const length = std::sqrt(at[0] * at[0] + at[1] * at[1] + at[2] * at[2]);
        if(!(length < ShortestNormal))
            at = at * (1.f / length);
        normals[i] = at;
    }
}
} // namespace OSG
#endif
