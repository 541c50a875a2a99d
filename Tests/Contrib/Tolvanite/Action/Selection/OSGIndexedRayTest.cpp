// Rays through an index, the plain loop, and the obvious computation, on the bits.

#include <algorithm>
#include <cmath>
#include <cstring>
#include <memory>
#include <thread>

#include <gmock/gmock.h>

#include "IndexSettings.h"
#include "LogCapture.h"
#include "OSGChangeList.h"
#include "OSGGeometryIterators.h"
#include "OSGGeometryRay.h"
#include "OSGIntersectAction.h"
#include "OSGThread.h"
#include "RandomGeometries.h"
#include "SameBits.h"

namespace OSG::Test
{
namespace
{
void commit() { Thread::getCurrentChangeList()->commitChanges(); }

// --- the obvious computation ---

Vec3d to_double(Vec3f const &v) { return Vec3d(v[0], v[1], v[2]); }
Vec3d between(Pnt3f const &from, Pnt3f const &to)
{
    return Vec3d(Real64(to[0]) - from[0], Real64(to[1]) - from[1], Real64(to[2]) - from[2]);
}

/// Divides first and compares then.
bool meets(Line const &ray, Vec3d const &edge1, Vec3d const &edge2, Pnt3f const &p0,
           Real64 &distance)
{
    Vec3d const direction = to_double(ray.getDirection());
    Vec3d const p = direction.cross(edge2);
    Real64 const determinant = edge1.dot(p);
    Real64 const flat = 1e-12 * 1e-12 * edge1.squareLength() * edge2.squareLength();
    if(!(determinant * determinant > flat) || !std::isfinite(determinant))
        return false;
    Vec3d const s = between(p0, ray.getPosition());
    Real64 const u = s.dot(p) / determinant;
    Vec3d const q = s.cross(edge1);
    Real64 const v = direction.dot(q) / determinant;
    distance = edge2.dot(q) / determinant;
    return u >= 0 && u <= 1 && v >= 0 && u + v <= 1 && distance >= 0;
}

bool is_in_box(Line const &ray, Real64 distance, Pnt3f const (&corners)[3])
{
    Real64 far = 0;
    for(Pnt3f const &corner : corners)
        for(int axis = 0; axis < 3; ++axis)
            far = std::max(far, std::abs(Real64(corner[axis]) - ray.getPosition()[axis]));
    for(int axis = 0; axis < 3; ++axis)
    {
        Real64 const at = Real64(ray.getDirection()[axis]) * distance;
        Real64 low = INFINITY;
        Real64 high = -INFINITY;
        for(Pnt3f const &corner : corners)
        {
            low = std::min(low, Real64(corner[axis]) - ray.getPosition()[axis]);
            high = std::max(high, Real64(corner[axis]) - ray.getPosition()[axis]);
        }
        if(!(at >= low - 1e-6 * far && at <= high + 1e-6 * far))
            return false;
    }
    return true;
}

struct Obvious
{
    RayHit hit;
    int besideBoxes = 0; ///< hits that rounding has put beside their triangle
};

Obvious obvious_nearest(Geometry const &geometry, Line const &ray, Real64 reach)
{
    Obvious result;
    result.hit.distance = reach;
    for(TriangleIterator it = geometry.beginTriangles(); it != geometry.endTriangles(); ++it)
    {
        Pnt3f const corners[3] = {it.getPosition(0), it.getPosition(1), it.getPosition(2)};
        Vec3d const edge1 = between(corners[0], corners[1]);
        Vec3d const edge2 = between(corners[0], corners[2]);
        Real64 distance = 0;
        if(!meets(ray, edge1, edge2, corners[0], distance))
            continue;
        if(!(distance < result.hit.distance ||
             (result.hit.triangle < 0 && distance == result.hit.distance)))
            continue;
        if(!is_in_box(ray, distance, corners))
        {
            ++result.besideBoxes;
            continue;
        }
        Vec3d const across = edge1.cross(edge2);
        Vec3d const unit = across * (1 / across.length());
        result.hit = {distance, it.getIndex(), Vec3f(unit[0], unit[1], unit[2])};
    }
    return result;
}

// --- random rays ---

void expect_same(RayHit const &found, RayHit const &expected)
{
    ASSERT_EQ(found.triangle, expected.triangle);
    ASSERT_TRUE(same_bits(found.distance, expected.distance))
        << found.distance << " and " << expected.distance;
    ASSERT_TRUE(same_bits(found.normal, expected.normal));
}

/// Rays that meet corners, edges and planes of the geometry, run along them or begin on them.
class RandomRays
{
  public:
    RandomRays(RandomGeometries &source, Geometry const &geometry)
        : _source(source)
        , _random(source.random())
    {
        for(TriangleIterator it = geometry.beginTriangles(); it != geometry.endTriangles(); ++it)
            for(int corner = 0; corner < 3; ++corner)
                _corners.push_back(it.getPosition(corner));
    }

    Line ray()
    {
        Pnt3f const from = place();
        switch(_random.below(5))
        {
        case 0: // along an axis
        {
            Vec3f direction;
            direction[_random.below(3)] = _random.below(2) == 0 ? 1.f : -1.f;
            return Line(from, direction);
        }
        case 1: // nearly along an axis
        {
            Vec3f direction(_random.real(-1e-16f, 1e-16f), 0.f, _random.real(-1e-25f, 1e-25f));
            direction[_random.below(3)] = 1.f;
            return Line(from, direction);
        }
        case 2: // anywhere
            return Line(from, unit(_random.vector()));
        default:
            return Line(from, unit(place() - from));
        }
    }

    Real64 reach(RayHit const &nearest)
    {
        switch(_random.below(6))
        {
        case 0: // that of the hit, or just below
            return nearest.triangle < 0    ? 0.
                   : _random.below(2) == 0 ? nearest.distance
                                           : std::nextafter(nearest.distance, -INFINITY);
        case 1:
            return Real64(_random.real(0.f, 8.f)) * _source.scale();
        case 2:
            return NAN;
        default:
            return INFINITY;
        }
    }

  private:
    // A line does not normalise short directions.
    static Vec3f unit(Vec3f const &v)
    {
        Vec3d const wide = to_double(v);
        Vec3d const scaled = wide * (1 / wide.length());
        return Vec3f(scaled[0], scaled[1], scaled[2]);
    }
    Pnt3f corner() { return _corners[_random.below(UInt32(_corners.size()))]; }
    Pnt3f place()
    {
        UInt32 const kind = _corners.empty() ? 4 : _random.below(7);
        switch(kind)
        {
        case 0:
            return corner();
        case 1: // on a line between two corners
        {
            Pnt3f const a = corner();
            return a + (corner() - a) * _random.real(-1.f, 2.f);
        }
        case 2: // far away
            return Pnt3f() + _random.vector() * (_source.scale() * 1e4f);
        case 3: // in a plane that corners lie in
        {
            Pnt3f at = _source.position();
            UInt32 const axis = _random.below(3);
            at[axis] = corner()[axis];
            return at;
        }
        default:
            return _source.position();
        }
    }

    RandomGeometries &_source;
    RandomNumbers &_random;
    std::vector<Pnt3f> _corners;
};

using IndexPtr = std::unique_ptr<PrimitiveIndex>;

struct Counts
{
    int pairs = 0;
    int indexed = 0;
    int hits = 0;
    int besideBoxes = 0;
};

void expect_same_hits(Geometry const &geometry, IndexPtr const (&indices)[2], Line const &ray,
                      Real64 reach, Counts &counts)
{
    Obvious const expected = obvious_nearest(geometry, ray, reach);
    expect_same(nearest_triangle(geometry, ray, reach), expected.hit);
    for(IndexPtr const &index : indices)
    {
        if(index == nullptr || !can_cast(*index, ray))
            continue;
        expect_same(nearest_triangle_by_index(*index, geometry, ray, reach), expected.hit);
        ++counts.indexed;
    }
    ++counts.pairs;
    counts.hits += expected.hit.triangle >= 0 ? 1 : 0;
    counts.besideBoxes += expected.besideBoxes;
}

TEST(IndexedRay, GivesWhatThePlainLoopAndTheObviousComputationGiveBitForBit)
{
    constexpr int Geometries = 3000;
    constexpr int RaysForEach = 16;
    RandomGeometries source(601);
    Counts counts;
    LogCapture log;
    for(int round = 0; round < Geometries && !testing::Test::HasFailure(); ++round)
    {
        SCOPED_TRACE(round);
        GeometryPtr const geometry = make_geometry(source.geometry());
        IndexPtr const indices[2] = {
            IndexPtr(build_primitive_index(*geometry, IndexedKind::Triangles, false)),
            IndexPtr(build_primitive_index(*geometry, IndexedKind::Triangles, true))};
        RandomRays rays(source, *geometry);
        for(int i = 0; i < RaysForEach && !testing::Test::HasFailure(); ++i)
        {
            Line const ray = rays.ray();
            Real64 const reach = rays.reach(obvious_nearest(*geometry, ray, INFINITY).hit);
            expect_same_hits(*geometry, indices, ray, reach, counts);
        }
        log.clear();
    }
    EXPECT_EQ(counts.pairs, Geometries * RaysForEach);
    EXPECT_GT(counts.indexed, 20000);
    EXPECT_GT(counts.hits, 8000);
    RecordProperty("indexed", counts.indexed);
    RecordProperty("hits", counts.hits);
    RecordProperty("besideBoxes", counts.besideBoxes);
}

TEST(IndexedRay, OfEqualDistancesTheFirstTriangleStaysWhereverItStandsInTheTree)
{
    GeometryParts parts = one_primitive(TrianglesPrimitive, {});
    RandomNumbers random(602);
    for(int i = 0; i < 300; ++i)
    {
        // All of them hold the place (0, 0), and every other one lies in the plane z = 0.
        Real32 const z = i % 2 == 0 ? -1.f : 0.f;
        auto const size = static_cast<Real32>(1u << random.below(7)); // computed without rounding
        parts.positions.push_back({-size, -size, z});
        parts.positions.push_back({3 * size, -size, z});
        parts.positions.push_back({-size, 3 * size, z});
    }
    parts.lengths = {900};
    GeometryPtr const geometry = make_geometry(parts);
    for(bool const isSorted : {false, true})
    {
        IndexPtr const index(build_primitive_index(*geometry, IndexedKind::Triangles, isSorted));
        Line const down(Pnt3f(0, 0, 5), Vec3f(0, 0, -1));
        EXPECT_EQ(nearest_triangle_by_index(*index, *geometry, down, 100).triangle, 1);
        EXPECT_EQ(nearest_triangle_by_index(*index, *geometry, down, 5).triangle, 1);
        EXPECT_EQ(nearest_triangle_by_index(*index, *geometry, down, 4.9).triangle, -1);
    }
}

TEST(IndexedRay, RaysThatAreNotTameAreLeftToThePlainLoop)
{
    GeometryPtr const geometry =
        make_geometry(one_primitive(TrianglesPrimitive, {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}}));
    IndexPtr const index(build_primitive_index(*geometry, IndexedKind::Triangles));
    ASSERT_NE(index, nullptr);
    EXPECT_TRUE(can_cast(*index, Line(Pnt3f(0, 0, 5), Vec3f(0, 0, -1))));
    EXPECT_FALSE(can_cast(*index, Line()));
    EXPECT_FALSE(can_cast(*index, Line(Pnt3f(NAN, 0, 5), Vec3f(0, 0, -1))));
    EXPECT_FALSE(can_cast(*index, Line(Pnt3f(0, 2e18f, 5), Vec3f(0, 0, -1))));
    EXPECT_FALSE(can_cast(*index, Line(Pnt3f(0, 0, 5), Vec3f(0, NAN, -1))));
}

// --- scenes ---

using RayPtr = UnrecordedRefPtr<IntersectAction>;

RayPtr cast(Node *root, Line const &line, bool usesIndex)
{
    RayPtr const ray(IntersectAction::create());
    ray->setUsePrimitiveIndex(usesIndex);
    ray->setLine(line);
    ray->apply(root);
    return ray;
}

void expect_same(IntersectAction const &found, IntersectAction const &expected)
{
    ASSERT_EQ(found.didHit(), expected.didHit());
    if(!expected.didHit())
        return;
    ASSERT_EQ(found.getHitObject(), expected.getHitObject());
    ASSERT_EQ(found.getHitTriangle(), expected.getHitTriangle());
    ASSERT_TRUE(same_bits(found.getHitDistance(), expected.getHitDistance()));
    ASSERT_TRUE(same_bits(found.getHitNormal(), expected.getHitNormal()));
    ASSERT_TRUE(same_bits(found.getHitPoint(), expected.getHitPoint()));
}

NodePtr random_scene(RandomGeometries &source)
{
    RandomNumbers &random = source.random();
    Children children;
    for(UInt32 i = 1 + random.below(3); i > 0; --i)
    {
        GeometryPtr const geometry = make_geometry(source.geometry());
        Matrix const turned = rotation(Vec3f(0, 0, 1), random.real(-3.f, 3.f));
        Matrix const scaled =
            scaling(random.real(-2.f, 2.f), 1.f, random.below(8) == 0 ? 0.f : 2.f);
        children.push_back(make_transform(turned, {make_transform(scaled, {make_node(geometry)})}));
        children.push_back(make_node(geometry));
    }
    return make_group(children);
}

TEST(IndexedRay, ScenesAnswerAlikeWithAndWithoutIndices)
{
    IndexSettings const settings(IndexSettings::Building::AtOnce);
    RandomGeometries source(604);
    LogCapture log;
    int indexed = 0;
    int hits = 0;
    for(int round = 0; round < 400 && !testing::Test::HasFailure(); ++round)
    {
        SCOPED_TRACE(round);
        NodePtr const root = random_scene(source);
        commit();
        root->updateVolume();
        for(int i = 0; i < 12; ++i)
        {
            Pnt3f const from = source.position();
            Line const line(from, source.random().vector());
            RayPtr const expected = cast(root, line, false);
            RayPtr const found = cast(root, line, true);
            expect_same(*found, *expected);
            EXPECT_EQ(expected->getIndexedGeometries(), 0u);
            indexed += found->getIndexedGeometries() != 0 ? 1 : 0;
            hits += expected->didHit() ? 1 : 0;
        }
        log.clear();
    }
    EXPECT_GT(indexed, 1500);
    EXPECT_GT(hits, 500);
}

TEST(IndexedRay, AnEditIsSeenByTheNextRay)
{
    IndexSettings const settings(IndexSettings::Building::AtOnce);
    GeometryPtr const geometry =
        make_geometry(one_primitive(TrianglesPrimitive, {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}}));
    NodePtr const root = make_node(geometry);
    commit();
    root->updateVolume();
    Line const down(Pnt3f(0.2f, 0.2f, 5), Vec3f(0, 0, -1));
    EXPECT_EQ(cast(root, down, true)->getHitDistance(), 5.f);
    EXPECT_EQ(cast(root, down, true)->getIndexedGeometries(), 1u);
    auto *const points = dynamic_cast<GeoPnt3fProperty *>(geometry->getPositions());
    points->editValues().assign({{0, 0, 2}, {1, 0, 2}, {0, 1, 2}});
    root->invalidateVolume();
    EXPECT_EQ(cast(root, down, true)->getHitDistance(), 3.f);
    EXPECT_EQ(cast(root, down, true)->getIndexedGeometries(), 0u);
    commit();
    root->updateVolume();
    EXPECT_EQ(cast(root, down, true)->getHitDistance(), 3.f);
    EXPECT_EQ(cast(root, down, true)->getIndexedGeometries(), 1u);
}

TEST(IndexedRay, ThreadsCastRaysInOneSceneWhileItsIndexIsBuilt)
{
    PrimitiveIndexSettings const before = PrimitiveIndexUse::getSettings();
    PrimitiveIndexUse::setSettings({1, 1, PrimitiveIndexSettings::Building::Automatic});
    RandomNumbers random(605);
    for(int round = 0; round < 20; ++round)
    {
        GeometryParts parts = one_primitive(TrianglesPrimitive, {});
        for(int i = 0; i < 3000; ++i)
            parts.positions.push_back(random.point(-1.f, 1.f));
        parts.lengths = {3000};
        NodePtr const root = make_node(make_geometry(parts));
        commit();
        root->updateVolume();
        std::vector<Line> lines;
        std::vector<RayPtr> expected;
        for(int i = 0; i < 20; ++i)
        {
            lines.push_back(Line(random.point(-2.f, 2.f), random.vector()));
            expected.push_back(cast(root, lines.back(), false));
        }
        auto const work = [&]
        {
            for(std::size_t i = 0; i < lines.size(); ++i)
                expect_same(*cast(root, lines[i], true), *expected[i]);
        };
        std::thread other(work);
        work();
        other.join();
    }
    PrimitiveIndexUse::setSettings(before);
}
} // namespace
} // namespace OSG::Test
