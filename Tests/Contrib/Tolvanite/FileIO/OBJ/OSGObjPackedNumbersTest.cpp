#include "OSGObjPackedNumbers.h"

#include <limits>
#include <numeric>
#include <vector>

#include <gtest/gtest.h>

using namespace OSG;

namespace
{
constexpr Int32 Least = std::numeric_limits<Int32>::min();
constexpr Int32 Greatest = std::numeric_limits<Int32>::max();

struct WidthCase
{
    char const *name;
    std::vector<Int32> numbers;
    UInt32 width;
};

void PrintTo(WidthCase const &row, std::ostream *out) { *out << row.name; }

WidthCase const WidthCases[] = {{"Nothing", {}, 0},
                                {"OneNumber", {-7}, 0},
                                {"EqualNumbers", {5, 5, 5, 5, 5, 5, 5}, 0},
                                {"Bytes", {1000, 1255, 1100}, 1},
                                {"JustNoBytes", {1000, 1256, 1100}, 2},
                                {"BytesAcrossZero", {-1, 0, 254, 7, 8}, 1},
                                {"TwoBytes", {-1, 65534, 3, 4, 5}, 2},
                                {"JustNotTwoBytes", {-1, 65535, 3, 4, 5}, 4},
                                {"AllNumbers", {Least, Greatest, 0, -1}, 4},
                                {"LeastBehindBlocksOfFour", {9, 9, 9, 9, 1}, 1}};

class ObjPackedWidths : public testing::TestWithParam<WidthCase>
{
};
} // namespace

TEST_P(ObjPackedWidths, AreAsSmallAsTheLargestDifferenceAllows)
{
    std::vector<Int32> const &numbers = GetParam().numbers;
    ObjByteStack room;
    ObjPackedNumbers const packed(numbers, room);
    EXPECT_EQ(packed.width(), GetParam().width);
    std::vector<Int32> unpacked(numbers.size());
    packed.unpack(0, unpacked);
    EXPECT_EQ(unpacked, numbers);
    if(numbers.empty())
        return;
    EXPECT_EQ(packed.least(), *std::min_element(numbers.begin(), numbers.end()));
    EXPECT_EQ(packed.greatest(), *std::max_element(numbers.begin(), numbers.end()));
}

INSTANTIATE_TEST_SUITE_P(Cases, ObjPackedWidths, testing::ValuesIn(WidthCases),
                         [](auto const &row) { return std::string(row.param.name); });

TEST(ObjPackedNumbers, AnyPartCanBeUnpacked)
{
    for(Int32 step : {0, 1, 100, 100000})
    {
        std::vector<Int32> numbers(100);
        for(std::size_t i = 0; i < numbers.size(); ++i)
            numbers[i] = -50 + static_cast<Int32>(i) * step;
        ObjByteStack room;
        ObjPackedNumbers const packed(numbers, room);
        for(std::size_t first = 0; first < numbers.size(); ++first)
        {
            for(std::size_t count = 0; first + count <= numbers.size(); ++count)
            {
                std::vector<Int32> part(count);
                packed.unpack(first, part);
                EXPECT_TRUE(std::equal(part.begin(), part.end(), numbers.begin() + first));
            }
        }
    }
}

TEST(ObjPackedNumbers, ReleasedNumbersKeepTheirLimits)
{
    std::vector<Int32> numbers(1000);
    std::iota(numbers.begin(), numbers.end(), 0);
    UInt64 const plain = get_mem_bytes();
    ObjByteStack room;
    ObjPackedNumbers packed(numbers, room);
    EXPECT_GE(get_mem_bytes() - plain, 2000u);
    UInt64 const largest = get_mem_bytes();
    packed.release(room);
    EXPECT_LT(get_mem_bytes(), largest - 2000);
    EXPECT_EQ(packed.greatest(), 999);
}

TEST(ObjPackedNumbers, OneNumberForAllTakesNoRoom)
{
    ObjPackedNumbers const packed(-1);
    std::vector<Int32> unpacked(5);
    packed.unpack(3, unpacked);
    EXPECT_EQ(unpacked, std::vector<Int32>(5, -1));
    EXPECT_EQ(packed.least(), -1);
    EXPECT_EQ(packed.greatest(), -1);
}
