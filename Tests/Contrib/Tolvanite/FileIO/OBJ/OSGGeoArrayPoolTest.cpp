#include "OSGGeoArrayPool.h"

#include <gtest/gtest.h>

namespace OSG::Test
{
namespace
{
TEST(GeoArrayPool, GivesEqualArraysAsOne)
{
    GeoArrayPool<GeoUInt32Property> pool;
    GeoUInt32Ptr const first = pool.get({0, 1, 2});
    EXPECT_EQ(pool.get({0, 1, 2}), first);
    EXPECT_NE(pool.get({0, 1, 3}), first);
    EXPECT_NE(pool.get({0, 1}), first);
    EXPECT_EQ(first->getValues(), (MField<UInt32>{0, 1, 2}));
}

TEST(GeoArrayPool, EveryArrayHasItsValuesHoweverManyThereAre)
{
    GeoArrayPool<GeoUInt32Property> pool;
    for(UInt32 i = 0; i < 20000; ++i)
    {
        UInt32 const value = i % 5000 * 4096;
        ASSERT_EQ(pool.get({value, 7})->getValues(), (MField<UInt32>{value, 7}));
    }
}

TEST(GeoArrayPool, KeepsNoLongArrays)
{
    GeoArrayPool<GeoUInt8Property> pool;
    MField<UInt8> const values(GeoArrayPool<GeoUInt8Property>::LongestKept + 1, UInt8(9));
    EXPECT_NE(pool.get(MField<UInt8>(values)), pool.get(MField<UInt8>(values)));
}

TEST(GeoArrayPool, AnEmptyArrayIsOneToo)
{
    GeoArrayPool<GeoUInt8Property> pool;
    EXPECT_EQ(pool.get({})->size(), 0u);
}
} // namespace
} // namespace OSG::Test
