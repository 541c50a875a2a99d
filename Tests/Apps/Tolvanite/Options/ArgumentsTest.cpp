#include "Arguments.h"

#include <gtest/gtest.h>

namespace
{
TEST(Arguments, ThreeNumbersWithCommasAreATriple)
{
    Tool::Triple read;
    ASSERT_TRUE(Tool::parse_triple("-1.5,2e1,.25", read));
    EXPECT_EQ(read.x, -1.5f);
    EXPECT_EQ(read.y, 20.0f);
    EXPECT_EQ(read.z, 0.25f);
}

struct RefusedText
{
    char const *name;
    char const *text;
};

class RefusedTriple : public testing::TestWithParam<RefusedText>
{
};

TEST_P(RefusedTriple, LeavesTheResultAlone)
{
    Tool::Triple read{7, 8, 9};
    EXPECT_FALSE(Tool::parse_triple(GetParam().text, read));
    EXPECT_EQ(read.x, 7);
    EXPECT_EQ(read.z, 9);
}

INSTANTIATE_TEST_SUITE_P(
    Arguments, RefusedTriple,
    testing::Values(RefusedText{"Empty", ""}, RefusedText{"TwoNumbers", "1,2"},
                    RefusedText{"FourNumbers", "1,2,3,4"}, RefusedText{"Blank", "1, 2,3"},
                    RefusedText{"Word", "1,two,3"}, RefusedText{"UnitBehind", "1,2,3m"},
                    RefusedText{"NoNumber", "nan,0,0"}, RefusedText{"Infinite", "0,inf,0"},
                    RefusedText{"BeyondFloat", "1e50,0,0"}, RefusedText{"LastCommaOnly", "1,2,"}),
    [](auto const &row) { return std::string(row.param.name); });

TEST(Arguments, ASizeIsTwoWholeNumbersWithItsOwnSign)
{
    Tool::Pair read;
    ASSERT_TRUE(Tool::parse_pair("1280x720", 'x', read));
    EXPECT_EQ(read.first, 1280);
    EXPECT_EQ(read.second, 720);
    EXPECT_FALSE(Tool::parse_pair("1280,720", 'x', read));
    EXPECT_FALSE(Tool::parse_pair("1280x720.5", 'x', read));
    EXPECT_FALSE(Tool::parse_pair("99999999999x1", 'x', read));
}

TEST(Arguments, ARowOfNumbersHasNoneTooFewAndNoneTooMany)
{
    float read[4] = {7, 7, 7, 7};
    EXPECT_FALSE(Tool::parse_numbers("1,2,3", read));
    EXPECT_FALSE(Tool::parse_numbers("1,2,3,4,5", read));
    EXPECT_FALSE(Tool::parse_numbers("1,2,3,inf", read));
    EXPECT_EQ(read[0], 7);
    ASSERT_TRUE(Tool::parse_numbers("1.5,-2,30,40", read));
    EXPECT_EQ(read[0], 1.5f);
    EXPECT_EQ(read[1], -2);
    EXPECT_EQ(read[3], 40);
}
} // namespace
