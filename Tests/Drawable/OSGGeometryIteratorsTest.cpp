#include "OSGGeometryIterators.h"

#include <gmock/gmock.h>

#include "LogCapture.h"
#include "MathPrinters.h"
#include "PrimitiveExpansion.h"
#include "RandomNumbers.h"

namespace OSG::Test
{
namespace
{
using testing::ElementsAre;
using testing::IsEmpty;

std::string const OutOfRange =
    "Geometry without a name: an index is out of range, what it belongs to is passed over\n";

std::vector<Pnt3f> numbered_points(UInt32 count)
{
    std::vector<Pnt3f> points;
    for(UInt32 i = 0; i < count; ++i)
        points.emplace_back(i, 2 * i, 3 * i);
    return points;
}

using Numbers = std::vector<UInt32>;

Numbers triangle_elements(Geometry const &geometry)
{
    Numbers result;
    for(TriangleIterator it = geometry.beginTriangles(); it != geometry.endTriangles(); ++it)
    {
        for(Int32 corner = 0; corner < 3; ++corner)
            result.push_back(it.getPositionIndex(corner));
    }
    return result;
}

Numbers line_elements(Geometry const &geometry)
{
    Numbers result;
    for(LineIterator it = geometry.beginLines(); it != geometry.endLines(); ++it)
    {
        result.push_back(it.getPositionIndex(0));
        result.push_back(it.getPositionIndex(1));
    }
    return result;
}

// --- one primitive of each type ---

struct TypeCase
{
    char const *name;
    PrimitiveType type;
    UInt32 length;
    Numbers triangles;
    Numbers lines;
};

void PrintTo(TypeCase const &c, std::ostream *out) { *out << c.name; }

class PrimitiveTypes : public testing::TestWithParam<TypeCase>
{
};

TEST_P(PrimitiveTypes, BreakIntoTheirTrianglesAndLines)
{
    TypeCase const &c = GetParam();
    GeometryPtr const geometry = make_geometry(one_primitive(c.type, numbered_points(c.length)));
    EXPECT_EQ(triangle_elements(*geometry), c.triangles);
    EXPECT_EQ(line_elements(*geometry), c.lines);
}

INSTANTIATE_TEST_SUITE_P(
    Geometry, PrimitiveTypes,
    testing::Values(
        TypeCase{"points", PointsPrimitive, 3, {}, {}},
        TypeCase{"lines", LinesPrimitive, 4, {}, {0, 1, 2, 3}},
        TypeCase{"lineLoop", LineLoopPrimitive, 3, {}, {0, 1, 1, 2, 2, 0}},
        TypeCase{"lineStrip", LineStripPrimitive, 3, {}, {0, 1, 1, 2}},
        TypeCase{"triangles", TrianglesPrimitive, 6, {0, 1, 2, 3, 4, 5}, {}},
        TypeCase{"strip", TriangleStripPrimitive, 5, {0, 1, 2, 2, 1, 3, 2, 3, 4}, {}},
        TypeCase{"fan", TriangleFanPrimitive, 5, {0, 1, 2, 0, 2, 3, 0, 3, 4}, {}},
        TypeCase{"quads", QuadsPrimitive, 8, {0, 1, 2, 0, 2, 3, 4, 5, 6, 4, 6, 7}, {}},
        TypeCase{"quadStrip", QuadStripPrimitive, 6, {0, 1, 3, 0, 3, 2, 2, 3, 5, 2, 5, 4}, {}},
        TypeCase{"polygon", PolygonPrimitive, 4, {0, 1, 2, 0, 2, 3}, {}}),
    [](auto const &instance) { return std::string(instance.param.name); });

INSTANTIATE_TEST_SUITE_P(
    IncompleteGeometry, PrimitiveTypes,
    testing::Values(TypeCase{"empty", PolygonPrimitive, 0, {}, {}},
                    TypeCase{"oneLineVertex", LineLoopPrimitive, 1, {}, {}},
                    TypeCase{"oddLines", LinesPrimitive, 5, {}, {0, 1, 2, 3}},
                    TypeCase{"loopOfTwo", LineLoopPrimitive, 2, {}, {0, 1, 1, 0}},
                    TypeCase{
                        "sevenTriangleVertices", TrianglesPrimitive, 7, {0, 1, 2, 3, 4, 5}, {}},
                    TypeCase{"stripOfTwo", TriangleStripPrimitive, 2, {}, {}},
                    TypeCase{"sevenQuadVertices", QuadsPrimitive, 7, {0, 1, 2, 0, 2, 3}, {}},
                    TypeCase{"quadStripOfThree", QuadStripPrimitive, 3, {}, {}},
                    TypeCase{"quadStripOfFive", QuadStripPrimitive, 5, {0, 1, 3, 0, 3, 2}, {}},
                    TypeCase{"polygonOfTwo", PolygonPrimitive, 2, {}, {}}),
    [](auto const &instance) { return std::string(instance.param.name); });

// --- indices ---

TEST(TriangleIterator, WithoutIndexTakesTheVerticesInTheirOrder)
{
    GeometryPtr const geometry =
        make_geometry({{TrianglesPrimitive, PolygonPrimitive}, {3, 4}, numbered_points(7)});
    EXPECT_THAT(triangle_elements(*geometry), ElementsAre(0, 1, 2, 3, 4, 5, 3, 5, 6));
}

TEST(TriangleIterator, AnIndexNamesTheElements)
{
    GeometryPtr const geometry =
        make_geometry({{TrianglesPrimitive}, {3}, numbered_points(4), {}, {3, 0, 2}});
    TriangleIterator const it = geometry->beginTriangles();
    EXPECT_THAT(triangle_elements(*geometry), ElementsAre(3, 0, 2));
    EXPECT_EQ(it.getPosition(0), Pnt3f(3, 6, 9));
}

TEST(TriangleIterator, EachSlotGoesByItsOwnIndex)
{
    GeometryPtr const geometry = make_geometry({{TrianglesPrimitive},
                                                {3},
                                                numbered_points(3),
                                                {{0, 0, 1}, {0, 1, 0}},
                                                {2, 1, 0},
                                                {1, 0, 1}});
    TriangleIterator const it = geometry->beginTriangles();
    EXPECT_EQ(it.getPositionIndex(0), 2u);
    EXPECT_EQ(it.getNormalIndex(0), 1u);
    EXPECT_EQ(it.getNormal(0), Vec3f(0, 1, 0));
    EXPECT_EQ(it.getNormal(1), Vec3f(0, 0, 1));
}

TEST(TriangleIterator, TextureCoordinatesHaveTheirElements)
{
    GeometryPtr const geometry =
        make_geometry(one_primitive(TrianglesPrimitive, numbered_points(3)));
    std::vector<Vec2f> const values = {{0, 0}, {0, 1}, {1, 0}};
    geometry->setTexCoords(make_property<GeoVec2fProperty>(values));
    std::vector<UInt32> const index = {2, 2, 1};
    geometry->setIndex(make_property<GeoUInt32Property>(index), Geometry::TexCoordsSlot);
    TriangleIterator const it = geometry->beginTriangles();
    EXPECT_EQ(it.getTexCoordsIndex(0), 2u);
    EXPECT_EQ(it.getTexCoordsIndex(2), 1u);
}

TEST(TriangleIterator, AbsentNormalsReadAsZero)
{
    GeometryPtr const geometry =
        make_geometry(one_primitive(TrianglesPrimitive, numbered_points(3)));
    EXPECT_EQ(geometry->beginTriangles().getNormal(0), Vec3f());
}

TEST(TriangleIterator, NormalsOutOfRangeReadAsZero)
{
    GeometryPtr const geometry = make_geometry(
        {{TrianglesPrimitive}, {3}, numbered_points(3), {{0, 0, 1}}, {}, {0, 1, 4294967295u}});
    TriangleIterator const it = geometry->beginTriangles();
    EXPECT_EQ(it.getNormal(0), Vec3f(0, 0, 1));
    EXPECT_EQ(it.getNormal(1), Vec3f());
    EXPECT_EQ(it.getNormal(2), Vec3f());
}

TEST(TriangleIterator, MoreCornersThanNormalIndicesReadAsZero)
{
    GeometryPtr const geometry =
        make_geometry({{TrianglesPrimitive}, {3}, numbered_points(3), {{0, 0, 1}}, {}, {0}});
    EXPECT_EQ(geometry->beginTriangles().getNormal(2), Vec3f());
}

// --- running numbers ---

TEST(TriangleIterator, CountsWhatItDeliversOverAllPrimitives)
{
    GeometryPtr const geometry = make_geometry(
        {{PolygonPrimitive, LinesPrimitive, TrianglesPrimitive}, {4, 2, 3}, numbered_points(9)});
    TriangleIterator it = geometry->beginTriangles();
    for(Int32 expected = 0; expected < 3; ++expected, ++it)
        EXPECT_EQ(it.getIndex(), expected);
    EXPECT_FALSE(it != geometry->endTriangles());
}

TEST(TriangleIterator, KnowsThePrimitiveOfATriangle)
{
    GeometryPtr const geometry =
        make_geometry({{LinesPrimitive, TrianglesPrimitive}, {2, 3}, numbered_points(5)});
    EXPECT_EQ(geometry->beginTriangles().getPrimitiveIndex(), 1u);
}

TEST(TriangleIterator, WhatIsNotDeliveredDoesNotCount)
{
    GeometryPtr const geometry = make_geometry(
        {{TrianglesPrimitive}, {9}, numbered_points(3), {}, {0, 1, 2, 0, 1, 7, 2, 1, 0}});
    TriangleIterator it = geometry->beginTriangles();
    ++it;
    EXPECT_EQ(it.getIndex(), 1);
    EXPECT_EQ(it.getPositionIndex(0), 2u);
}

// --- out of range ---

TEST(TriangleIterator, PassesOverTrianglesWithAnIndexOutOfRangeAndWarnsOnce)
{
    LogCapture log;
    GeometryPtr const geometry =
        make_geometry({{TriangleFanPrimitive}, {6}, numbered_points(4), {}, {0, 1, 9, 2, 3, 9}});
    EXPECT_THAT(triangle_elements(*geometry), ElementsAre(0, 2, 3));
    EXPECT_THAT(triangle_elements(*geometry), ElementsAre(0, 2, 3));
    EXPECT_THAT(log.texts(), ElementsAre(OutOfRange));
}

TEST(TriangleIterator, StopsWherePositionsEnd)
{
    LogCapture log;
    GeometryPtr const geometry = make_geometry({{PolygonPrimitive}, {5}, numbered_points(4)});
    EXPECT_THAT(triangle_elements(*geometry), ElementsAre(0, 1, 2, 0, 2, 3));
    EXPECT_THAT(log.texts(), ElementsAre(OutOfRange));
}

TEST(TriangleIterator, AQuadWithoutItsLastCornerStillHasItsFirstHalf)
{
    LogCapture log;
    GeometryPtr const geometry = make_geometry({{QuadsPrimitive}, {8}, numbered_points(7)});
    EXPECT_THAT(triangle_elements(*geometry), ElementsAre(0, 1, 2, 0, 2, 3, 4, 5, 6));
}

TEST(TriangleIterator, LengthsOfFourBillionEndAtTheVertices)
{
    LogCapture log;
    GeometryPtr const geometry =
        make_geometry({{TrianglesPrimitive, TriangleStripPrimitive, PolygonPrimitive},
                       {3, 4294967295u, 4294967295u},
                       numbered_points(6)});
    EXPECT_THAT(triangle_elements(*geometry), ElementsAre(0, 1, 2, 3, 4, 5));
    EXPECT_THAT(log.texts(), ElementsAre(OutOfRange));
}

TEST(TriangleIterator, TypesWithoutALengthHaveNoVertices)
{
    GeometryPtr const geometry = make_geometry(
        {{TrianglesPrimitive, TrianglesPrimitive, TrianglesPrimitive}, {3}, numbered_points(9)});
    EXPECT_THAT(triangle_elements(*geometry), ElementsAre(0, 1, 2));
}

TEST(TriangleIterator, LengthsWithoutATypeAreNotLookedAt)
{
    GeometryPtr const geometry =
        make_geometry({{TrianglesPrimitive}, {3, 3, 3}, numbered_points(9)});
    EXPECT_THAT(triangle_elements(*geometry), ElementsAre(0, 1, 2));
}

TEST(TriangleIterator, UnknownTypesTakeTheirVerticesAndGiveNothing)
{
    GeometryPtr const geometry =
        make_geometry({{77, TrianglesPrimitive}, {2, 3}, numbered_points(5)});
    EXPECT_THAT(triangle_elements(*geometry), ElementsAre(2, 3, 4));
    EXPECT_THAT(line_elements(*geometry), IsEmpty());
}

TEST(TriangleIterator, AnEmptyGeometryHasNothing)
{
    GeometryPtr const geometry(Geometry::create());
    EXPECT_FALSE(geometry->beginTriangles() != geometry->endTriangles());
    EXPECT_FALSE(geometry->beginLines() != geometry->endLines());
    EXPECT_FALSE(geometry->beginPrimitives() != geometry->endPrimitives());
}

TEST(TriangleIterator, WithoutPositionsNothingIsDelivered)
{
    LogCapture log;
    GeometryPtr const geometry = make_geometry({{TrianglesPrimitive}, {3}, {}, {}, {0, 1, 2}});
    EXPECT_THAT(triangle_elements(*geometry), IsEmpty());
    EXPECT_THAT(log.texts(), ElementsAre(OutOfRange));
}

TEST(TriangleIterator, AssignsAndComparesAsAValue)
{
    GeometryPtr const geometry =
        make_geometry(one_primitive(TrianglesPrimitive, numbered_points(6)));
    TriangleIterator it;
    it = geometry->beginTriangles();
    TriangleIterator const first = it;
    ++it;
    EXPECT_TRUE(it != first);
    EXPECT_TRUE(first == geometry->beginTriangles());
    EXPECT_EQ(it.getPositionIndex(0), 3u);
}

TEST(LineIterator, ALoopThatIsCutShortIsNotClosed)
{
    LogCapture log;
    GeometryPtr const geometry = make_geometry({{LineLoopPrimitive}, {4}, numbered_points(3)});
    EXPECT_THAT(line_elements(*geometry), ElementsAre(0, 1, 1, 2));
    EXPECT_THAT(log.texts(), ElementsAre(OutOfRange));
}

// --- primitives ---

TEST(PrimitiveIterator, DeliversEveryEntryOfTheTypes)
{
    GeometryPtr const geometry =
        make_geometry({{PointsPrimitive, 77, PolygonPrimitive, QuadsPrimitive},
                       {2, 1, 4294967295u},
                       numbered_points(5)});
    std::vector<std::array<UInt32, 4>> seen;
    for(PrimitiveIterator it = geometry->beginPrimitives(); it != geometry->endPrimitives(); ++it)
        seen.push_back({it.getIndex(), it.getType(), it.getLength(), it.getAvailable()});
    EXPECT_THAT(seen, ElementsAre(std::array<UInt32, 4>{0, PointsPrimitive, 2, 2},
                                  std::array<UInt32, 4>{1, 77, 1, 1},
                                  std::array<UInt32, 4>{2, PolygonPrimitive, 4294967295u, 2},
                                  std::array<UInt32, 4>{3, QuadsPrimitive, 0, 0}));
}

TEST(PrimitiveIterator, ReadsTheVerticesOfItsPrimitive)
{
    GeometryPtr const geometry = make_geometry({{PointsPrimitive, PointsPrimitive},
                                                {2, 2},
                                                numbered_points(4),
                                                {{0, 0, 1}, {0, 1, 0}, {1, 0, 0}, {0, 0, -1}},
                                                {3, 2, 1, 9}});
    PrimitiveIterator it = geometry->beginPrimitives();
    ++it;
    EXPECT_EQ(it.getPosition(0), Pnt3f(1, 2, 3));
    EXPECT_EQ(it.getNormal(0), Vec3f(1, 0, 0));
    EXPECT_TRUE(it.hasPosition(0));
    EXPECT_FALSE(it.hasPosition(1));
    EXPECT_EQ(it.getPosition(1), Pnt3f());
}

// --- against the slow way ---

GeometryParts random_parts(RandomNumbers &random)
{
    GeometryParts parts;
    for(UInt32 i = random.below(6); i > 0; --i)
        parts.types.push_back(random.below(12) == 0 ? 77 : random.below(10));
    UInt32 vertices = 0;
    for(UInt32 i = random.below(7); i > 0; --i)
    {
        parts.lengths.push_back(random.below(9));
        vertices += parts.lengths.back();
    }
    for(UInt32 i = random.below(20); i > 0; --i)
        parts.positions.push_back(random.point(-1, 1));
    for(UInt32 i = random.below(10); i > 0; --i)
        parts.normals.push_back(random.vector());
    if(random.below(3) != 0)
    {
        for(UInt32 i = random.below(vertices + 2); i > 0; --i)
            parts.index.push_back(random.below(22));
    }
    if(random.below(2) != 0)
    {
        for(UInt32 i = random.below(vertices + 2); i > 0; --i)
            parts.normalIndex.push_back(random.below(11));
    }
    return parts;
}

template <class Iterator, std::size_t Corners>
void expect_delivers(GeometryParts const &parts, Iterator it, Iterator const &end,
                     PartList<Corners> const &expected)
{
    Int32 running = 0;
    for(std::array<UInt32, Corners> const &part : expected)
    {
        ASSERT_TRUE(it != end);
        ASSERT_EQ(it.getIndex(), running++);
        for(std::size_t corner = 0; corner < Corners; ++corner)
        {
            Int32 const i = static_cast<Int32>(corner);
            ASSERT_EQ(it.getVertex(i), part[corner]);
            ASSERT_EQ(it.getPositionIndex(i), position_element(parts, part[corner]));
            ASSERT_EQ(it.getPosition(i), position_of(parts, part[corner]));
            ASSERT_EQ(it.getNormal(i), normal_of(parts, part[corner]));
        }
        ++it;
    }
    ASSERT_FALSE(it != end);
}

TEST(TriangleIterator, DeliversWhatTheSlowExpansionDoesOnRandomGeometries)
{
    LogCapture log;
    RandomNumbers random(71);
    for(int round = 0; round < 20000 && !testing::Test::HasFatalFailure(); ++round)
    {
        SCOPED_TRACE(round);
        GeometryParts const parts = random_parts(random);
        GeometryPtr const geometry = make_geometry(parts);
        expect_delivers(parts, geometry->beginTriangles(), geometry->endTriangles(),
                        expand_parts(parts, triangles_of));
        expect_delivers(parts, geometry->beginLines(), geometry->endLines(),
                        expand_parts(parts, lines_of));
    }
}
} // namespace
} // namespace OSG::Test
