// Highway includes this source once for each instruction set.
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "FaceNormals.cpp"
#include <hwy/foreach_target.h>
// Behind foreach_target.h: they are read for each set.
#include <hwy/highway.h>

#include <algorithm>
#include <cmath>

#include "FaceNormals.h"

#ifndef OSG_FACE_SIDES
#define OSG_FACE_SIDES
namespace OSG::Lib3ds
{
namespace
{
constexpr float ShortestNormal = 1e-5f;
constexpr std::size_t MostLanes = 16;

/// Two sides of each of some faces, component by component: c - b and a - b.
struct FaceSides
{
    static constexpr std::size_t Width = 64;

    float p[3][Width] = {};
    float q[3][Width] = {};

    void collect(Lib3dsMesh const &mesh, std::size_t first, std::size_t count)
    {
        for(std::size_t i = 0; i < count; ++i)
        {
            unsigned short const *const index = mesh.faces[first + i].index;
            float const *const a = mesh.vertices[index[0]];
            float const *const b = mesh.vertices[index[1]];
            float const *const c = mesh.vertices[index[2]];
            for(int k = 0; k < 3; ++k)
            {
                p[k][i] = c[k] - b[k];
                q[k][i] = a[k] - b[k];
            }
        }
    }
};
} // namespace
} // namespace OSG::Lib3ds
#endif

HWY_BEFORE_NAMESPACE();
namespace OSG::Lib3ds::HWY_NAMESPACE
{
namespace
{
namespace hn = hwy::HWY_NAMESPACE;
using Lanes = hn::CappedTag<float, MostLanes>;
using Values = hn::Vec<Lanes>;

HWY_INLINE void normals_of(FaceSides const &sides, std::size_t at, float *normals)
{
    Lanes const lanes;
    auto const one = hn::Set(lanes, 1.f);
    auto const p0 = hn::LoadU(lanes, sides.p[0] + at);
    auto const p1 = hn::LoadU(lanes, sides.p[1] + at);
    auto const p2 = hn::LoadU(lanes, sides.p[2] + at);
    auto const q0 = hn::LoadU(lanes, sides.q[0] + at);
    auto const q1 = hn::LoadU(lanes, sides.q[1] + at);
    auto const q2 = hn::LoadU(lanes, sides.q[2] + at);
    auto const x = hn::Sub(hn::Mul(p1, q2), hn::Mul(p2, q1));
    auto const y = hn::Sub(hn::Mul(p2, q0), hn::Mul(p0, q2));
    auto const z = hn::Sub(hn::Mul(p0, q1), hn::Mul(p1, q0));
    auto const length = hn::Sqrt(hn::Add(hn::Add(hn::Mul(x, x), hn::Mul(y, y)), hn::Mul(z, z)));
    auto const isShort = hn::Lt(length, hn::Set(lanes, ShortestNormal));
    auto const factor = hn::Div(one, length);
    auto const alongX = hn::And(hn::Ge(x, y), hn::Ge(x, z));
    auto const overZ = hn::Ge(y, z);
    auto const axisX = hn::IfThenElseZero(alongX, one);
    auto const axisY = hn::IfThenZeroElse(alongX, hn::IfThenElseZero(overZ, one));
    auto const axisZ = hn::IfThenZeroElse(alongX, hn::IfThenZeroElse(overZ, one));
    hn::StoreInterleaved3(hn::IfThenElse(isShort, axisX, hn::Mul(x, factor)),
                          hn::IfThenElse(isShort, axisY, hn::Mul(y, factor)),
                          hn::IfThenElse(isShort, axisZ, hn::Mul(z, factor)), lanes, normals);
}

void face_normals_in_lanes(Lib3dsMesh const &mesh, float (*normals)[3])
{
    std::size_t const step = hn::Lanes(Lanes());
    FaceSides sides;
    for(std::size_t first = 0; first < mesh.nfaces; first += FaceSides::Width)
    {
        std::size_t const count = std::min<std::size_t>(FaceSides::Width, mesh.nfaces - first);
        sides.collect(mesh, first, count);
        std::size_t at = 0;
        for(; at + step <= count; at += step)
            normals_of(sides, at, normals[first + at]);
        if(at == count)
            continue;
        float rest[3 * MostLanes];
        normals_of(sides, at, rest);
        std::copy_n(rest, 3 * (count - at), normals[first + at]);
    }
}
} // namespace
} // namespace OSG::Lib3ds::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace OSG::Lib3ds
{
HWY_EXPORT(face_normals_in_lanes);

void face_normals(Lib3dsMesh const &mesh, float (*normals)[3])
{
    HWY_DYNAMIC_DISPATCH(face_normals_in_lanes)(mesh, normals);
}

namespace
{
void set_axis(float (&normal)[3])
{
    float const x = normal[0];
    float const y = normal[1];
    float const z = normal[2];
    int const axis = x >= y && x >= z ? 0 : (y >= z ? 1 : 2);
    for(int i = 0; i < 3; ++i)
        normal[i] = i == axis ? 1.f : 0.f;
}
} // namespace

void face_normals_slowly(Lib3dsMesh const &mesh, float (*normals)[3])
{
    for(std::size_t i = 0; i < mesh.nfaces; ++i)
    {
        unsigned short const *const index = mesh.faces[i].index;
        float const *const a = mesh.vertices[index[0]];
        float const *const b = mesh.vertices[index[1]];
        float const *const c = mesh.vertices[index[2]];
        float const p[3] = {c[0] - b[0], c[1] - b[1], c[2] - b[2]};
        float const q[3] = {a[0] - b[0], a[1] - b[1], a[2] - b[2]};
        float(&normal)[3] = normals[i];
        normal[0] = p[1] * q[2] - p[2] * q[1];
        normal[1] = p[2] * q[0] - p[0] * q[2];
        normal[2] = p[0] * q[1] - p[1] * q[0];
        float const length =
            std::sqrt(normal[0] * normal[0] + normal[1] * normal[1] + normal[2] * normal[2]);
        if(length < ShortestNormal)
        {
            set_axis(normal);
            continue;
        }
        for(float &component : normal)
            component *= 1.f / length;
    }
}
} // namespace OSG::Lib3ds
#endif
