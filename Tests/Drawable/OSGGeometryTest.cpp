#include "OSGGeometry.h"

#include <gmock/gmock.h>

#include "GeometryBuilders.h"
#include "LogCapture.h"
#include "MathPrinters.h"
#include "OSGBoxVolume.h"
#include "OSGChangeList.h"
#include "OSGGeometryIterators.h"
#include "OSGMemManager.h"
#include "OSGName.h"
#include "OSGThread.h"
#include "RandomNumbers.h"

namespace OSG::Test
{
namespace
{
using testing::ElementsAre;

BoxVolume box_of(Geometry &geometry)
{
    BoxVolume box;
    geometry.adjustVolume(box);
    return box;
}

TEST(Geometry, AFreshOneHasNoProperties)
{
    GeometryPtr const geometry(Geometry::create());
    EXPECT_EQ(geometry->getPositions(), nullptr);
    EXPECT_EQ(geometry->getTexCoords3(), nullptr);
    EXPECT_EQ(geometry->getIndex(Geometry::PositionsSlot), nullptr);
    EXPECT_EQ(geometry->getTypes(), nullptr);
    EXPECT_EQ(geometry->getMaterial(), nullptr);
}

TEST(Geometry, SetIndicesGivesEverySlotWithAnArrayTheIndex)
{
    GeometryPtr const geometry = make_geometry({{PointsPrimitive}, {1}, {{1, 2, 3}}, {{0, 0, 1}}});
    std::vector<UInt32> const zero = {0};
    UnrecordedRefPtr<GeoUInt32Property> const index = make_property<GeoUInt32Property>(zero);
    geometry->setIndices(index);
    EXPECT_EQ(geometry->getIndex(Geometry::PositionsSlot), index);
    EXPECT_EQ(geometry->getIndex(Geometry::NormalsSlot), index);
    EXPECT_EQ(geometry->getIndex(Geometry::ColorsSlot), nullptr);
}

TEST(Geometry, ItsBoxHoldsThePositionsThatItsPrimitivesUse)
{
    GeometryPtr const geometry = make_geometry(
        {{PointsPrimitive}, {2}, {{1, 2, 3}, {9, 9, 9}, {-1, 5, 0}, {80, 80, 80}}, {}, {0, 2, 3}});
    BoxVolume const box = box_of(*geometry);
    EXPECT_EQ(box.getMin(), Pnt3f(-1, 2, 0));
    EXPECT_EQ(box.getMax(), Pnt3f(1, 5, 3));
}

TEST(Geometry, IndicesOutOfRangeDoNotExtendItsBox)
{
    GeometryPtr const geometry = make_geometry(
        {{PointsPrimitive}, {4000000000u}, {{1, 2, 3}, {4, 5, 6}}, {}, {0, 7, 4294967295u}});
    BoxVolume const box = box_of(*geometry);
    EXPECT_EQ(box.getMin(), Pnt3f(1, 2, 3));
    EXPECT_EQ(box.getMax(), Pnt3f(1, 2, 3));
}

TEST(Geometry, ItsBoxHoldsWhatIsDeliveredAlone)
{
    // A polygon of two corners, a line without its second point, a quad of three corners, a part of
    // a triangle with a corner that is not there.
    std::vector<Pnt3f> const points = {{1, 2, 3}, {4, 5, 6}, {2, 3, 4}, {90, 90, 90}, {80, 80, 80}};
    GeometryParts const rows[] = {
        {{PolygonPrimitive, TrianglesPrimitive}, {2, 3}, points, {}, {3, 4, 0, 1, 2}},
        {{TrianglesPrimitive, LinesPrimitive}, {3, 1}, points, {}, {0, 1, 2, 3}},
        {{TrianglesPrimitive, QuadsPrimitive}, {3, 3}, points, {}, {0, 1, 2, 3, 3, 4}},
        {{TrianglesPrimitive}, {6}, points, {}, {0, 1, 2, 3, 4, 5}},
        {{TrianglesPrimitive}, {5}, points, {}, {0, 1, 2, 3, 4}},
        {{TrianglesPrimitive, 77}, {3, 2}, points, {}, {0, 1, 2, 3, 4}},
        {{LineStripPrimitive, LineStripPrimitive}, {3, 3}, points, {}, {0, 1, 2, 3, 7, 4}}};
    for(GeometryParts const &row : rows)
    {
        BoxVolume const box = box_of(*make_geometry(row));
        EXPECT_EQ(box.getMin(), Pnt3f(1, 2, 3)) << (&row - rows);
        EXPECT_EQ(box.getMax(), Pnt3f(4, 5, 6)) << (&row - rows);
    }
}

TEST(Geometry, ItsBoxIsThatOfWhatTheIteratorsDeliver)
{
    RandomNumbers random(5);
    for(int round = 0; round < 3000; ++round)
    {
        GeometryParts parts;
        for(UInt32 i = 0; i < 12; ++i)
            parts.positions.emplace_back(static_cast<Real32>(random.below(100)),
                                         static_cast<Real32>(random.below(100)), 0.f);
        for(UInt32 i = random.below(5) + 1; i > 0; --i)
        {
            parts.types.push_back(random.below(11));
            parts.lengths.push_back(random.below(7));
        }
        // Often all in range, and sometimes too few of them.
        UInt32 const range = random.below(2) == 0 ? 12 : 14;
        for(UInt32 i = random.below(30); i > 0; --i)
            parts.index.push_back(random.below(range));
        GeometryPtr const geometry = make_geometry(parts);
        BoxVolume delivered;
        for(auto it = geometry->beginTriangles(); it != geometry->endTriangles(); ++it)
            for(int corner = 0; corner < 3; ++corner)
                delivered.extendBy(it.getPosition(corner));
        for(auto it = geometry->beginLines(); it != geometry->endLines(); ++it)
            for(int corner = 0; corner < 2; ++corner)
                delivered.extendBy(it.getPosition(corner));
        for(auto it = geometry->beginPrimitives(); it != geometry->endPrimitives(); ++it)
            for(UInt32 i = 0; it.getType() == PointsPrimitive && i < it.getAvailable(); ++i)
                if(it.hasPosition(static_cast<Int32>(i)))
                    delivered.extendBy(it.getPosition(static_cast<Int32>(i)));
        ASSERT_EQ(box_of(*geometry), delivered) << round;
    }
}

TEST(Geometry, SlotsThatAreNotInUseTakeNoRoom)
{
    UnrecordedRefPtr<GeoUInt32Property> const index(GeoUInt32Property::create());
    GeometryPtr geometry;
    UInt64 taken = 0;
    // The first time the thread's list of edits may grow. The commit before gives back the room
    // that the edits of other tests have taken in it.
    Thread::getCurrentChangeList()->commitChanges();
    for(int round = 0; round < 2; ++round)
    {
        geometry = GeometryPtr(Geometry::create());
        UInt64 const before = get_mem_bytes();
        for(UInt16 const slot :
            {Geometry::PositionsSlot, Geometry::NormalsSlot, Geometry::TexCoordsSlot})
            geometry->setIndex(index, slot);
        taken = get_mem_bytes() - before;
        Thread::getCurrentChangeList()->commitChanges();
    }
    EXPECT_LE(taken, 40u);
    EXPECT_EQ(geometry->getMFPropIndices()->size(), 9u);
    EXPECT_EQ(geometry->getIndex(Geometry::ColorsSlot), nullptr);
    geometry->setIndex(nullptr, Geometry::NormalsSlot);
    EXPECT_EQ(geometry->getIndex(Geometry::NormalsSlot), nullptr);
    EXPECT_EQ(index->getRefCount(), 3); // two slots and the test
}

TEST(Geometry, WithoutPrimitivesItsBoxIsEmpty)
{
    GeometryPtr const geometry = make_geometry({{}, {}, {{1, 2, 3}}});
    EXPECT_TRUE(box_of(*geometry).isEmpty());
}

TEST(Geometry, ReportsWhatIsOutOfRangeOnceUnderItsName)
{
    LogCapture log;
    GeometryPtr const geometry(Geometry::create());
    setName(geometry, "wheel");
    geometry->reportOutOfRange();
    geometry->reportOutOfRange();
    EXPECT_THAT(log.texts(LOG_WARNING),
                ElementsAre("Geometry wheel: an index is out of range, what it belongs to is "
                            "passed over\n"));
}
} // namespace
} // namespace OSG::Test
