// Searches through an index against the plain loops, on the bits.

#include <algorithm>
#include <cstring>
#include <thread>

#include <gmock/gmock.h>

#include "IndexSettings.h"
#include "LogCapture.h"
#include "OSGChangeList.h"
#include "OSGFastSelectionFunctor.h"
#include "OSGPrimitiveIndexUse.h"
#include "OSGSelectionSearch.h"
#include "OSGThread.h"
#include "RandomGeometries.h"
#include "SameBits.h"
#include "SelectionScenes.h"

namespace OSG::Test
{
namespace
{
using Building = PrimitiveIndexSettings::Building;
using SelectionSearch::Extreme;
using SelectionSearch::Extremes;
using SelectionSearch::Way;

void commit() { Thread::getCurrentChangeList()->commitChanges(); }

void expect_same(Extreme const &found, Extreme const &expected)
{
    ASSERT_EQ(found.index, expected.index);
    ASSERT_TRUE(same_bits(found.distance, expected.distance))
        << found.distance << " and " << expected.distance;
    ASSERT_TRUE(same_bits(found.point, expected.point));
    ASSERT_TRUE(same_bits(found.normal, expected.normal));
    ASSERT_EQ(found.hasPoint, expected.hasPoint);
}

using Find = Extremes (*)(Geometry const &, Plane const *, Plane const &, Way *);
constexpr Find Finds[] = {&SelectionSearch::find_triangles, &SelectionSearch::find_lines,
                          &SelectionSearch::find_points};

struct Counts
{
    int indexed = 0;
    int found = 0;
    int earlierPoints = 0; ///< near points that an earlier, crossing triangle has set
};

void expect_same_answers(Geometry const &geometry, PlaneArray const &planes, UInt32 reference,
                         Counts &counts)
{
    for(Find find : Finds)
    {
        Way byLoop{false, false};
        Way byIndex;
        Extremes const expected = find(geometry, planes.data(), planes[reference], &byLoop);
        Extremes const found = find(geometry, planes.data(), planes[reference], &byIndex);
        ASSERT_FALSE(byLoop.usedIndex);
        SCOPED_TRACE(find == Finds[0] ? "triangles" : find == Finds[1] ? "lines" : "points");
        expect_same(found.near, expected.near);
        expect_same(found.far, expected.far);
        counts.indexed += byIndex.usedIndex ? 1 : 0;
        counts.found += found.near.index >= 0 || found.far.index >= 0 ? 1 : 0;
        counts.earlierPoints += !found.near.hasPoint && !(found.near.point == Pnt3f()) ? 1 : 0;
    }
    Way byLoop{false, false};
    Way byIndex;
    bool const expected = SelectionSearch::has_triangle(geometry, planes.data(), &byLoop);
    ASSERT_EQ(SelectionSearch::has_triangle(geometry, planes.data(), &byIndex), expected);
    counts.indexed += byIndex.usedIndex ? 1 : 0;
}

/// Edits what the index was built of, in one of several ways.
void edit(Geometry *geometry, RandomGeometries &source)
{
    RandomNumbers &random = source.random();
    auto *const positions = dynamic_cast<GeoPnt3fProperty *>(geometry->getPositions());
    switch(random.below(4))
    {
    case 0:
        positions->editValues()[random.below(positions->size())] = source.position();
        break;
    case 1:
        if(geometry->getLengths()->size() > 0)
            geometry->getLengths()->setValue(random.below(30), 0);
        break;
    case 2:
        if(geometry->getTypes()->size() > 0)
            geometry->getTypes()->setValue(random.below(10), 0);
        break;
    default:
    {
        UnrecordedRefPtr<GeoPnt3fProperty> const other(GeoPnt3fProperty::create());
        other->editValues() = positions->getValues();
        std::reverse(other->editValues().begin(), other->editValues().end());
        geometry->setPositions(other);
    }
    }
    if(random.below(3) != 0)
        commit();
}

// --- geometries ---

TEST(IndexedSearch, GivesWhatThePlainLoopGivesBitForBit)
{
    constexpr int Geometries = 2500;
    constexpr int VolumesForEach = 10;
    IndexSettings const settings(Building::Sorted);
    RandomGeometries source(401);
    RandomNumbers &random = source.random();
    Counts counts;
    LogCapture log;
    for(int round = 0; round < Geometries && !testing::Test::HasFailure(); ++round)
    {
        IndexSettings::set(round % 2 == 0 ? Building::Sorted : Building::AtOnce);
        GeometryPtr const geometry = make_geometry(source.geometry());
        commit();
        for(int i = 0; i < VolumesForEach && !testing::Test::HasFailure(); ++i)
        {
            SCOPED_TRACE("geometry " + std::to_string(round) + ", volume " + std::to_string(i));
            if(i % 4 == 3)
                edit(geometry, source);
            PlaneArray const planes = source.volume().Volume().getPlanes();
            expect_same_answers(*geometry, planes, random.below(6), counts);
        }
    }
    RecordProperty("Pairs", Geometries * VolumesForEach);
    RecordProperty("Indexed", counts.indexed);
    RecordProperty("Found", counts.found);
    RecordProperty("EarlierPoints", counts.earlierPoints);
    EXPECT_GT(counts.indexed, 25000);
    EXPECT_GT(counts.found, 10000);
    EXPECT_GT(counts.earlierPoints, 100);
}

// --- scenes ---

Matrix random_matrix(RandomNumbers &random)
{
    Vec3f const axis = random.vector();
    Real32 const mirror = random.below(3) == 0 ? -1.f : 1.f;
    Real32 const flat = random.below(8) == 0 ? 0.f : 1.f;
    Vec3f const by = random.vector();
    return translation(by[0], by[1], by[2]) *
           rotation(axis * (1.f / axis.length()), random.real(-2.f, 2.f)) *
           scaling(mirror * random.real(0.5f, 2.f), random.real(0.5f, 2.f),
                   flat * random.real(0.5f, 2.f));
}

void expect_same_hits(Hits const &found, Hits const &expected)
{
    ASSERT_EQ(found.size(), expected.size());
    for(std::size_t i = 0; i < found.size(); ++i)
    {
        ASSERT_EQ(found[i].node, expected[i].node);
        ASSERT_EQ(found[i].index, expected[i].index);
        ASSERT_EQ(found[i].hasPoint, expected[i].hasPoint);
        ASSERT_TRUE(same_bits(found[i].point, expected[i].point));
        ASSERT_TRUE(same_bits(found[i].normal, expected[i].normal));
        ASSERT_TRUE(same_bits(found[i].distance, expected[i].distance));
        ASSERT_TRUE(same_bits(found[i].matrix, expected[i].matrix));
    }
}

TEST(IndexedSearch, GivesTheHitsOfThePlainLoopBelowTransformsOfAllKinds)
{
    constexpr int Scenes = 1000;
    constexpr int VolumesForEach = 6;
    IndexSettings const settings(Building::Sorted);
    RandomGeometries source(402);
    RandomNumbers &random = source.random();
    LogCapture log;
    UInt64 indexed = 0;
    std::size_t hits = 0;
    for(int round = 0; round < Scenes && !testing::Test::HasFailure(); ++round)
    {
        IndexSettings::set(round % 2 == 0 ? Building::Sorted : Building::AtOnce);
        GeometryPtr const shared = make_geometry(source.geometry());
        Children children;
        for(int i = 0; i < 3; ++i)
            children.push_back(make_transform(random_matrix(random), {make_node(shared)}));
        children.push_back(make_node(shared));
        NodePtr const root = make_group(children);
        commit();
        root->updateVolume();
        commit();
        for(int i = 0; i < VolumesForEach && !testing::Test::HasFailure(); ++i)
        {
            SCOPED_TRACE("scene " + std::to_string(round) + ", volume " + std::to_string(i));
            Selection selection(source.volume(), 1 + random.below(7),
                                static_cast<SelectionFunctor::PlaneType>(random.below(6)));
            selection.action->setUsePrimitiveIndex(false);
            Hits const expected = selection.of(root);
            EXPECT_EQ(selection.action->getIndexedGeometries(), 0u);
            selection.action->setUsePrimitiveIndex(true);
            expect_same_hits(selection.of(root), expected);
            indexed += selection.action->getIndexedGeometries();
            hits += expected.size();
            FastSelectionFunctor fast(selection.action);
            selection.action->setUsePrimitiveIndex(false);
            selection.action->apply(root);
            Hits const fastExpected = fast.hits(SelectionFunctor::AllHits);
            selection.action->setUsePrimitiveIndex(true);
            selection.action->apply(root);
            expect_same_hits(fast.hits(SelectionFunctor::AllHits), fastExpected);
        }
    }
    RecordProperty("Pairs", Scenes * VolumesForEach);
    EXPECT_GT(indexed, 5000u);
    EXPECT_GT(hits, 5000u);
}

// --- the point of a triangle that lies wholly inside ---

TEST(IndexedSearch, TheNearPointIsFoundWhereItTakesManyLooks)
{
    // Each contained triangle is a little nearer than the crossing one behind it, and both are
    // nearer than all before them.
    constexpr int Pairs = 100;
    IndexSettings const settings(Building::Sorted);
    for(bool beginsWithACrossingOne : {false, true})
    {
        GeometryParts parts = one_primitive(TrianglesPrimitive, {});
        auto const add = [&parts](Real32 x, Real32 depth)
        {
            for(Vec3f const &corner :
                {Vec3f(0.4f, 0.4f, 0), Vec3f(x, 0.4f, 0), Vec3f(0.4f, 0.6f, 0)})
                parts.positions.push_back(Pnt3f() + corner - Vec3f(0, 0, depth));
        };
        if(beginsWithACrossingOne)
            add(4.f, 0.95f);
        for(int i = 0; i < Pairs; ++i)
        {
            Real32 const depth = 0.9f - 0.008f * Real32(i);
            add(0.6f, depth);
            add(4.f, depth + 0.001f);
        }
        add(0.6f, 0.05f);
        parts.lengths = {static_cast<UInt32>(parts.positions.size())};
        GeometryPtr const geometry = make_geometry(parts);
        commit();
        PlaneArray const planes = box_planes();
        Counts counts;
        expect_same_answers(*geometry, planes, SelectionFunctor::NearPlane, counts);
        EXPECT_GE(counts.indexed, 2);
        EXPECT_EQ(counts.earlierPoints, beginsWithACrossingOne ? 1 : 0);
    }
}

// --- threads ---

TEST(IndexedSearch, TwoThreadsMaySelectInOneGeometryAtOnceWhileItsIndexIsBuilt)
{
    IndexSettings const settings(Building::Automatic);
    RandomGeometries source(403);
    LogCapture log;
    for(int round = 0; round < 40; ++round)
    {
        GeometryPtr const geometry = make_geometry(source.geometry());
        std::vector<PlaneArray> volumes;
        for(int i = 0; i < 6; ++i)
            volumes.push_back(source.volume().Volume().getPlanes());
        // An index of values that are no more, which both threads find in the way.
        if(round % 2 == 0)
        {
            commit();
            IndexSettings::set(Building::AtOnce);
            SelectionSearch::has_triangle(*geometry, volumes[0].data());
            edit(geometry, source);
            IndexSettings::set(Building::Automatic);
        }
        commit();
        std::vector<Extremes> found[2];
        auto const select = [&](std::vector<Extremes> &into)
        {
            for(PlaneArray const &planes : volumes)
                for(Find find : Finds)
                    into.push_back(find(*geometry, planes.data(), planes[0], nullptr));
        };
        std::thread other([&] { select(found[1]); });
        select(found[0]);
        other.join();
        for(std::size_t i = 0; i < found[0].size(); ++i)
        {
            expect_same(found[1][i].near, found[0][i].near);
            expect_same(found[1][i].far, found[0][i].far);
        }
    }
}
} // namespace
} // namespace OSG::Test
