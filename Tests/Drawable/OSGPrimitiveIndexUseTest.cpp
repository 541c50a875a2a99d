#include "OSGPrimitiveIndexUse.h"

#include <thread>

#include <gmock/gmock.h>

#include "GeometryBuilders.h"
#include "OSGChangeList.h"
#include "OSGThread.h"

namespace OSG::Test
{
namespace
{
using Building = PrimitiveIndexSettings::Building;

void commit() { Thread::getCurrentChangeList()->commitChanges(); }

/// A strip of `count` triangles, committed.
GeometryPtr strip(UInt32 count)
{
    std::vector<Pnt3f> positions;
    for(UInt32 i = 0; i < count + 2; ++i)
        positions.push_back(Pnt3f(Real32(i), Real32(i % 2), 0));
    GeometryPtr geometry = make_geometry(one_primitive(TriangleStripPrimitive, positions));
    commit();
    return geometry;
}

bool has_index(Geometry const &geometry, IndexedKind kind = IndexedKind::Triangles)
{
    return PrimitiveIndexUse(geometry, kind).getIndex() != nullptr;
}

class PrimitiveIndexUseTest : public testing::Test
{
  protected:
    PrimitiveIndexUseTest() { set(Building::AtOnce); }
    ~PrimitiveIndexUseTest() override { PrimitiveIndexUse::setSettings(PrimitiveIndexSettings()); }

    static void set(Building building) { PrimitiveIndexUse::setSettings({1, 1, building}); }
};

GeoPnt3fProperty *positions_of(Geometry const &geometry)
{
    return dynamic_cast<GeoPnt3fProperty *>(geometry.getPositions());
}

// --- when it is built ---

TEST_F(PrimitiveIndexUseTest, ItIsBuiltForTheSecondQueryAfterAFullLoop)
{
    set(Building::Automatic);
    GeometryPtr const geometry = strip(50);
    {
        PrimitiveIndexUse first(*geometry, IndexedKind::Triangles);
        EXPECT_EQ(first.getIndex(), nullptr);
        first.addFullLoop();
    }
    EXPECT_TRUE(has_index(*geometry));
}

TEST_F(PrimitiveIndexUseTest, LoopsThatEndEarlyPutItOff)
{
    set(Building::Automatic);
    GeometryPtr const geometry = strip(50);
    for(int i = 0; i < 6; ++i)
    {
        PrimitiveIndexUse use(*geometry, IndexedKind::Triangles);
        EXPECT_EQ(use.getIndex(), nullptr) << i;
        use.addWork(10);
    }
    EXPECT_TRUE(has_index(*geometry));
}

TEST_F(PrimitiveIndexUseTest, SmallGeometriesHaveNone)
{
    PrimitiveIndexUse::setSettings({101, 52, Building::AtOnce});
    EXPECT_FALSE(has_index(*strip(98)));
    EXPECT_TRUE(has_index(*strip(99)));
}

TEST_F(PrimitiveIndexUseTest, ThereIsNoneWithoutPrimitivesOfTheKind)
{
    GeometryPtr const geometry = strip(50);
    EXPECT_FALSE(has_index(*geometry, IndexedKind::Lines));
    EXPECT_FALSE(has_index(*geometry, IndexedKind::Points));
    EXPECT_FALSE(has_index(*make_geometry({{}, {}, {}})));
}

TEST_F(PrimitiveIndexUseTest, WithoutMemoryThePlainLoopServesAndTheIndexIsTriedLater)
{
    GeometryPtr const geometry = strip(50);
    UInt64 const before = get_mem_bytes();
    for(UInt64 blocks = 0; blocks < 3; ++blocks)
    {
        set_mem_block_limit(blocks);
        EXPECT_FALSE(has_index(*geometry));
        set_mem_limit(0);
    }
    EXPECT_LT(get_mem_bytes(), before + 1024);
    EXPECT_TRUE(has_index(*geometry));
}

// --- when it is dropped ---

TEST_F(PrimitiveIndexUseTest, ItRestsWhileAnArrayHasOpenEditsAndGoesWithTheCommit)
{
    GeometryPtr const geometry = strip(50);
    ASSERT_TRUE(has_index(*geometry));
    set(Building::Automatic);
    ASSERT_TRUE(has_index(*geometry));
    positions_of(*geometry)->editValues()[3] = Pnt3f(7, 7, 7);
    EXPECT_FALSE(has_index(*geometry));
    commit();
    EXPECT_FALSE(has_index(*geometry));
}

TEST_F(PrimitiveIndexUseTest, EachOfItsInputsDropsIt)
{
    using Edit = void (*)(Geometry &);
    Edit const edits[] = {
        [](Geometry &g) { g.getTypes()->setValue(TriangleStripPrimitive, 0); },
        [](Geometry &g) { g.getLengths()->setValue(20, 0); },
        [](Geometry &g) { g.getPositions()->editArray()[4] = 3.f; },
        [](Geometry &g) { g.getPositions()->resize(40); },
        [](Geometry &g) { g.getIndex(Geometry::PositionsSlot)->setValue(2, 4); },
        [](Geometry &g) { g.setIndex(nullptr, Geometry::PositionsSlot); },
        [](Geometry &g)
        { g.setTypes(make_property<GeoUInt8Property>(std::vector<UInt32>{TriangleFanPrimitive})); },
        [](Geometry &g)
        {
            auto const same = make_property<GeoPnt3fProperty>(positions_of(g)->getValues());
            g.setPositions(same);
        },
    };
    int number = 0;
    for(Edit edit : edits)
    {
        SCOPED_TRACE(number++);
        set(Building::AtOnce);
        GeometryPtr const geometry = strip(50);
        std::vector<UInt32> indices(52);
        for(UInt32 i = 0; i < 52; ++i)
            indices[i] = i;
        geometry->setIndex(make_property<GeoUInt32Property>(indices), Geometry::PositionsSlot);
        commit();
        ASSERT_TRUE(has_index(*geometry));
        set(Building::Automatic);
        UInt64 const dropped = PrimitiveIndexUse::getStatistics().dropped;
        edit(*geometry);
        EXPECT_FALSE(has_index(*geometry));
        commit();
        EXPECT_FALSE(has_index(*geometry));
        EXPECT_EQ(PrimitiveIndexUse::getStatistics().dropped, dropped + 1);
    }
}

TEST_F(PrimitiveIndexUseTest, OtherEditsLeaveIt)
{
    GeometryPtr const geometry = strip(50);
    ASSERT_TRUE(has_index(*geometry));
    set(Building::Automatic);
    geometry->setNormals(make_property<GeoVec3fProperty>(std::vector<Vec3f>(52)));
    geometry->setMaterial(nullptr);
    EXPECT_TRUE(has_index(*geometry));
}

TEST_F(PrimitiveIndexUseTest, AnArrayThatTakesTheAddressOfAnotherDoesNotPassForIt)
{
    GeometryPtr const geometry = strip(50);
    for(int i = 0; i < 20; ++i)
    {
        set(Building::AtOnce);
        ASSERT_TRUE(has_index(*geometry));
        set(Building::Automatic);
        geometry->setPositions(nullptr); // the end of the old array
        UnrecordedRefPtr<GeoPnt3fProperty> const next(GeoPnt3fProperty::create());
        next->editValues().resize(52);
        geometry->takeChangeMask(); // no commit of the geometry tells
        commit();
        geometry->setPositions(next);
        EXPECT_FALSE(has_index(*geometry)) << i;
    }
}

TEST_F(PrimitiveIndexUseTest, EditsThatAThreadNeverCommittedDropIt)
{
    GeometryPtr const geometry = strip(50);
    ASSERT_TRUE(has_index(*geometry));
    set(Building::Automatic);
    std::thread([&] { positions_of(*geometry)->editValues()[3] = Pnt3f(7, 7, 7); }).join();
    ASSERT_EQ(geometry->getPositions()->getChangeMask(), 0u);
    EXPECT_FALSE(has_index(*geometry));
}

TEST_F(PrimitiveIndexUseTest, CopiesHaveTheirOwn)
{
    GeometryPtr const geometry = strip(50);
    ASSERT_TRUE(has_index(*geometry));
    set(Building::Automatic);
    GeometryPtr const copy(dynamic_transit_cast<Geometry>(geometry->shallowCopy()));
    EXPECT_FALSE(has_index(*copy));
    EXPECT_TRUE(has_index(*geometry));
}

TEST_F(PrimitiveIndexUseTest, ItEndsWithTheGeometry)
{
    PrimitiveIndexStatistics const before = PrimitiveIndexUse::getStatistics();
    {
        GeometryPtr const geometry = strip(50);
        ASSERT_TRUE(has_index(*geometry));
        PrimitiveIndexStatistics const now = PrimitiveIndexUse::getStatistics();
        EXPECT_EQ(now.built, before.built + 1);
        EXPECT_EQ(now.served, before.served + 1);
        EXPECT_GT(now.bytes, before.bytes);
    }
    PrimitiveIndexStatistics const after = PrimitiveIndexUse::getStatistics();
    EXPECT_EQ(after.dropped, before.dropped + 1);
    EXPECT_EQ(after.bytes, before.bytes);
}

// --- stamps ---

TEST(GeoPropertyStamp, ChangesWithEachCommit)
{
    auto const property = make_property<GeoUInt32Property>(std::vector<UInt32>{1, 2});
    commit();
    UInt32 const first = property->getStamp();
    EXPECT_NE(first, 0u);
    property->setValue(5, 0);
    EXPECT_EQ(property->getStamp(), first);
    commit();
    EXPECT_NE(property->getStamp(), first);
}

TEST(GeoPropertyStamp, IsThatOfTheSourceForACopyOfCommittedValuesOnly)
{
    auto const property = make_property<GeoUInt32Property>(std::vector<UInt32>{1, 2});
    commit();
    auto const copied = [&]
    {
        return UnrecordedRefPtr<GeoUInt32Property>(
            dynamic_transit_cast<GeoUInt32Property>(property->shallowCopy()));
    };
    EXPECT_EQ(copied()->getStamp(), property->getStamp());
    property->setValue(5, 0);
    EXPECT_NE(copied()->getStamp(), property->getStamp());
    commit();
}
} // namespace
} // namespace OSG::Test
