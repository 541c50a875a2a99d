#include "OSGGeometry.h"

#include <gmock/gmock.h>

#include "GeometryBuilders.h"
#include "LogCapture.h"
#include "MathPrinters.h"
#include "OSGBoxVolume.h"
#include "OSGName.h"

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
