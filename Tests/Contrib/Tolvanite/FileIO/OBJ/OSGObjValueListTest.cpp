#include "OSGObjValueList.h"

#include <gtest/gtest.h>

#include "OSGBaseTypes.h"

using namespace OSG;

namespace
{
using Target = std::vector<Int32, MemAllocator<Int32>>;
}

TEST(ObjValueList, ValuesMoveInTheirOrderBehindWhatIsThere)
{
    for(Int32 count : {0, 1, 63, 64, 65, 191, 192, 193, 50000})
    {
        ObjValueList<Int32> list;
        for(Int32 i = 0; i < count; ++i)
            list.add() = i;
        EXPECT_EQ(list.size(), static_cast<std::size_t>(count));
        Target target = {-1};
        list.moveTo(target);
        ASSERT_EQ(target.size(), static_cast<std::size_t>(count) + 1);
        for(Int32 i = -1; i < count; ++i)
            ASSERT_EQ(target[static_cast<std::size_t>(i + 1)], i);
        EXPECT_EQ(list.size(), 0u);
        list.add() = 7;
        EXPECT_EQ(list.size(), 1u);
    }
}

TEST(ObjValueList, TheTargetHasRoomForExactlyTheValues)
{
    ObjValueList<Int32> list;
    for(Int32 i = 0; i < 100000; ++i)
        list.add() = i;
    Target target;
    list.moveTo(target);
    EXPECT_EQ(target.capacity(), 100000u);
}

TEST(ObjValueList, WhileItGrowsAndMovesItNeedsTheValuesTwiceAtMost)
{
    UInt64 const before = get_mem_bytes();
    reset_mem_peak();
    UInt64 const bytes = 1000000 * sizeof(Int32);
    ObjValueList<Int32> list;
    for(Int32 i = 0; i < 1000000; ++i)
        list.add() = i;
    EXPECT_LE(get_mem_peak_bytes() - before, bytes + bytes / 20);
    Target target;
    list.moveTo(target);
    EXPECT_LE(get_mem_peak_bytes() - before, 2 * bytes + bytes / 20);
    constexpr UInt64 Page = 4096; // the C library rounds large blocks up to pages
    EXPECT_LE(get_mem_bytes() - before, bytes + Page);
}
