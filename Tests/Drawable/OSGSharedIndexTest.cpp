#include "OSGSharedIndex.h"

#include <gmock/gmock.h>

#include "MathPrinters.h"
#include "OSGGeometryIterators.h"
#include "PrimitiveExpansion.h"
#include "RandomNumbers.h"

namespace OSG::Test
{
namespace
{
using testing::ElementsAre;

std::vector<Pnt3f> const Corners = {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {1, 1, 0}};
std::vector<Vec3f> const Axes = {{1, 0, 0}, {0, 1, 0}, {0, 0, 1}};

std::vector<UInt32> index_of(Geometry const &geometry, UInt16 slot)
{
    std::vector<UInt32> result;
    for(UInt32 i = 0; i < geometry.getIndex(slot)->size(); ++i)
        result.push_back(geometry.getIndex(slot)->getValue(i));
    return result;
}

TEST(CreateSharedIndex, EachCombinationStandsOnceInTheOrderOfFirstUse)
{
    GeometryPtr const geometry = make_geometry(
        {{TrianglesPrimitive}, {6}, Corners, Axes, {3, 1, 0, 3, 1, 2}, {2, 2, 2, 2, 0, 2}});
    EXPECT_EQ(createSharedIndex(geometry), 5);
    EXPECT_THAT(index_of(*geometry, Geometry::PositionsSlot), ElementsAre(0, 1, 2, 0, 3, 4));
    EXPECT_EQ(geometry->getIndex(Geometry::PositionsSlot),
              geometry->getIndex(Geometry::NormalsSlot));
    ASSERT_EQ(geometry->getPositions()->size(), 5u);
    EXPECT_EQ(Pnt3f(geometry->getPositions()->getArray()[3]), Corners[1]);
    EXPECT_EQ(Vec3f(geometry->getNormals()->getArray()[3]), Axes[0]);
}

TEST(CreateSharedIndex, AGeometryWithOneIndexStaysAsItIs)
{
    GeometryPtr const geometry =
        make_geometry({{TrianglesPrimitive}, {3}, Corners, Axes, {3, 1, 0}});
    geometry->setIndices(geometry->getIndex(Geometry::PositionsSlot));
    GeoVectorProperty *const positions = geometry->getPositions();
    GeoIntegralProperty *const index = geometry->getIndex(Geometry::PositionsSlot);
    EXPECT_EQ(createSharedIndex(geometry), 0);
    EXPECT_EQ(geometry->getPositions(), positions);
    EXPECT_EQ(geometry->getIndex(Geometry::NormalsSlot), index);
}

TEST(CreateSharedIndex, AGeometryWithoutIndexStaysAsItIs)
{
    GeometryPtr const geometry = make_geometry({{TrianglesPrimitive}, {3}, Corners, Axes});
    EXPECT_EQ(createSharedIndex(geometry), 0);
    EXPECT_EQ(geometry->getIndex(Geometry::PositionsSlot), nullptr);
}

TEST(CreateSharedIndex, AnIndexThatOneSlotLacksIsFolded)
{
    GeometryPtr const geometry =
        make_geometry({{TrianglesPrimitive}, {3}, Corners, Axes, {3, 1, 3}});
    EXPECT_EQ(createSharedIndex(geometry), 3); // the normals go by the vertices
    EXPECT_EQ(geometry->beginTriangles().getNormal(2), Axes[2]);
    EXPECT_EQ(geometry->beginTriangles().getPosition(2), Corners[3]);
}

TEST(CreateSharedIndex, ArraysOfOthersAreNotTouched)
{
    GeometryPtr const geometry =
        make_geometry({{TrianglesPrimitive}, {3}, Corners, Axes, {3, 1, 0}, {0, 0, 1}});
    UnrecordedRefPtr<GeoVectorProperty> const shared(geometry->getPositions());
    createSharedIndex(geometry);
    EXPECT_NE(geometry->getPositions(), shared);
    EXPECT_EQ(shared->size(), 4u);
    EXPECT_EQ(Pnt3f(shared->getArray()[3]), Corners[3]);
}

TEST(CreateSharedIndex, APositionOutOfRangeBecomesTheLargestNumber)
{
    GeometryPtr const geometry =
        make_geometry({{TrianglesPrimitive}, {4}, Corners, Axes, {3, 99, 0, 1}, {0, 1, 2, 0}});
    EXPECT_EQ(createSharedIndex(geometry), 3);
    EXPECT_THAT(index_of(*geometry, Geometry::PositionsSlot), ElementsAre(0, 4294967295u, 1, 2));
}

TEST(CreateSharedIndex, AnotherElementOutOfRangeBecomesZero)
{
    GeometryPtr const geometry =
        make_geometry({{TrianglesPrimitive}, {3}, Corners, Axes, {3, 1, 0}, {0, 77, 1}});
    EXPECT_EQ(createSharedIndex(geometry), 3);
    EXPECT_EQ(geometry->beginTriangles().getNormal(1), Vec3f());
    EXPECT_EQ(geometry->beginTriangles().getNormal(2), Axes[1]);
}

TEST(CreateSharedIndex, ElementsThatNoGeometryHasYetGiveWhatIndicesGive)
{
    RandomNumbers random(74);
    for(UInt32 round = 0; round < 300; ++round)
    {
        SCOPED_TRACE(round);
        UInt32 const vertices = 3 + random.below(round < 290 ? 40 : 9000);
        GeometryParts parts{{PolygonPrimitive}, {vertices}, Corners, Axes};
        for(UInt32 i = 0; i < vertices; ++i)
        {
            parts.index.push_back(random.below(6)); // some are out of range
            parts.normalIndex.push_back(random.below(4));
        }
        GeometryPtr const indexed = make_geometry(parts);
        GeometryPtr const given = make_geometry({{PolygonPrimitive}, {vertices}, Corners, Axes});
        std::vector<VertexElements> elements(2);
        elements[0].slot = Geometry::PositionsSlot;
        elements[0].elements.assign(parts.index.begin(), parts.index.end());
        elements[1].slot = Geometry::NormalsSlot;
        elements[1].elements.assign(parts.normalIndex.begin(), parts.normalIndex.end());
        EXPECT_EQ(createSharedIndex(*given, std::move(elements), &make_index),
                  createSharedIndex(indexed));
        for(UInt16 slot : {Geometry::PositionsSlot, Geometry::NormalsSlot})
        {
            EXPECT_EQ(index_of(*given, slot), index_of(*indexed, slot));
            VectorArray const ours = given->getProperty(slot)->getArray();
            VectorArray const theirs = indexed->getProperty(slot)->getArray();
            ASSERT_EQ(ours.size(), theirs.size());
            for(UInt32 i = 0; i < ours.size(); ++i)
                ASSERT_TRUE(std::equal(ours[i], ours[i] + 3, theirs[i]));
        }
    }
}

TEST(CreateSharedIndex, NullAndGeometriesWithoutPositionsGiveZero)
{
    GeometryPtr const geometry(Geometry::create());
    EXPECT_EQ(createSharedIndex(geometry), 0);
    EXPECT_EQ(createSharedIndex(nullptr), 0);
}

TEST(CreateSharedIndex, RandomGeometriesShowTheSameTrianglesAfterwards)
{
    RandomNumbers random(73);
    for(int round = 0; round < 500; ++round)
    {
        SCOPED_TRACE(round);
        GeometryParts parts{{TriangleStripPrimitive}, {3 + random.below(20)}, Corners, Axes};
        for(UInt32 i = 0; i < parts.lengths[0]; ++i)
        {
            parts.index.push_back(random.below(4));
            parts.normalIndex.push_back(random.below(4)); // 3 is out of range
        }
        GeometryPtr const folded = make_geometry(parts);
        std::set<std::pair<UInt32, UInt32>> combinations;
        for(UInt32 i = 0; i < parts.lengths[0]; ++i)
            combinations.insert({parts.index[i], parts.normalIndex[i]});
        ASSERT_EQ(createSharedIndex(folded), static_cast<Int32>(combinations.size()));
        TriangleIterator it = folded->beginTriangles();
        for(std::array<UInt32, 3> const &triangle : expand_parts(parts, triangles_of))
        {
            for(int corner = 0; corner < 3; ++corner)
            {
                ASSERT_EQ(it.getPosition(corner), position_of(parts, triangle[corner]));
                ASSERT_EQ(it.getNormal(corner), normal_of(parts, triangle[corner]));
            }
            ++it;
        }
        ASSERT_FALSE(it != folded->endTriangles());
    }
}

/// Folds the geometry and holds the index to the obvious way of numbering.
void expect_numbering(GeometryParts const &parts)
{
    std::map<std::pair<UInt32, UInt32>, UInt32> numbers;
    std::vector<UInt32> expected;
    for(std::size_t i = 0; i < parts.index.size(); ++i)
    {
        std::pair<UInt32, UInt32> const combination(parts.index[i], parts.normalIndex[i]);
        UInt32 const next = static_cast<UInt32>(numbers.size());
        expected.push_back(numbers.emplace(combination, next).first->second);
    }
    GeometryPtr const geometry = make_geometry(parts);
    ASSERT_EQ(createSharedIndex(geometry), static_cast<Int32>(numbers.size()));
    ASSERT_EQ(index_of(*geometry, Geometry::PositionsSlot), expected);
    for(auto const &[combination, number] : numbers)
    {
        ASSERT_EQ(Pnt3f(geometry->getPositions()->getArray()[number]),
                  parts.positions[combination.first]);
        ASSERT_EQ(Vec3f(geometry->getNormals()->getArray()[number]),
                  parts.normals[combination.second]);
    }
}

TEST(CreateSharedIndex, ManyCombinationsOfOnePositionAreNumberedAlike)
{
    RandomNumbers random(74);
    GeometryParts parts{{PolygonPrimitive}, {20000}, Corners, {}};
    for(UInt32 i = 0; i < 20000; ++i)
    {
        parts.normals.push_back(random.vector());
        parts.index.push_back(i < 10000 ? random.below(4) : 1);
        parts.normalIndex.push_back(random.below(20000));
    }
    expect_numbering(parts);
}

TEST(CreateSharedIndex, AFewVerticesOfALargeArrayAreNumberedAlike)
{
    RandomNumbers random(75);
    GeometryParts parts{{PolygonPrimitive}, {60}, {}, Axes};
    for(UInt32 i = 0; i < 10000; ++i)
        parts.positions.push_back(random.point(-1, 1));
    for(UInt32 i = 0; i < 60; ++i)
    {
        parts.index.push_back(random.below(10) * 900);
        parts.normalIndex.push_back(random.below(3));
    }
    expect_numbering(parts);
}
} // namespace
} // namespace OSG::Test
