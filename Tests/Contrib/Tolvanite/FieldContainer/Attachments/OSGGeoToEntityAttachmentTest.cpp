#include "OSGGeoToEntityAttachment.h"

#include <gtest/gtest.h>

namespace OSG
{
namespace
{
using TablePtr = UnrecordedRefPtr<GeoToEntityAttachment>;

TablePtr make_table(MField<UInt64> const &limits, MField<UInt64> const &entities)
{
    TablePtr table(GeoToEntityAttachment::create());
    table->editGeo() = limits;
    table->editEnt() = entities;
    return table;
}

TEST(GeoToEntityAttachment, AnEntryCoversTheIndicesBelowItsLimit)
{
    TablePtr const table = make_table({3, 7}, {100, 200});
    UInt64 const expected[] = {100, 100, 100, 200, 200, 200, 200, 0, 0};
    for(UInt32 index = 0; index < 9; ++index)
        EXPECT_EQ(table->getEntFromIndex(index), expected[index]) << index;
}

TEST(GeoToEntityAttachment, WithoutLimitsThereIsNoEntityWhateverEntHolds)
{
    EXPECT_EQ(make_table({}, {100})->getEntFromIndex(0), 0u);
    EXPECT_EQ(make_table({}, {})->getEntFromIndex(4), 0u);
}

TEST(GeoToEntityAttachment, ALimitOfZeroIsMetByNoIndex)
{
    EXPECT_EQ(make_table({0}, {100})->getEntFromIndex(0), 0u);
}

TEST(GeoToEntityAttachment, LimitsAreComparedInSixtyFourBits)
{
    UInt64 const far = UInt64(1) << 32;
    EXPECT_EQ(make_table({far}, {5})->getEntFromIndex(~UInt32(0)), 5u);
}

TEST(GeoToEntityAttachment, AnUnsortedTableGivesTheFirstGreaterLimit)
{
    EXPECT_EQ(make_table({2, 9, 4}, {1, 2, 3})->getEntFromIndex(3), 2u);
}

TEST(GeoToEntityAttachment, ALimitWithoutAnEntityGivesZero)
{
    TablePtr const table = make_table({3, 7}, {100});
    EXPECT_EQ(table->getEntFromIndex(2), 100u);
    EXPECT_EQ(table->getEntFromIndex(3), 0u);
}
} // namespace
} // namespace OSG
