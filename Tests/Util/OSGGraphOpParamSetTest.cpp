#include "OSGGraphOpParamSet.h"

#include <gtest/gtest.h>

namespace OSG::Test
{
namespace
{
struct Case
{
    char const *name;
    std::string params;
    bool occurs;
    bool value; // of "key", which is false before where it shall become true, and true otherwise
    char const *unused;
};

void PrintTo(Case const &row, std::ostream *out) { *out << row.name; }

class ParamSetCases : public testing::TestWithParam<Case>
{
};

TEST_P(ParamSetCases, GivesTheValueOfAKeyAndKeepsTheRest)
{
    GraphOpParamSet params(GetParam().params);
    bool value = GetParam().occurs ? !GetParam().value : GetParam().value;
    EXPECT_EQ(params("key", value), GetParam().occurs);
    EXPECT_EQ(value, GetParam().value);
    EXPECT_EQ(params.getUnusedParams(), GetParam().unused);
}

INSTANTIATE_TEST_SUITE_P(
    Strings, ParamSetCases,
    testing::Values(
        Case{"Empty", "", false, false, ""}, Case{"BlanksAlone", " , \t,", false, true, ""},
        Case{"True", "key=true", true, true, ""}, Case{"False", "key=false", true, false, ""},
        Case{"One", "key=1", true, true, ""}, Case{"Zero", "key=0", true, false, ""},
        Case{"KeyAlone", "key", true, true, ""}, Case{"Commas", "a,key=1,b", true, true, "a b"},
        Case{"BlanksAndCommas", "  a  , key=1 ,\tb=2 ", true, true, "a b=2"},
        Case{"LastOfAKeyWins", "key=1 key=0", true, false, ""},
        Case{"LastOfAKeyWinsAlone", "key=0,key", true, true, ""},
        Case{"OtherWord", "key=maybe", false, true, "key=maybe"},
        Case{"NoValue", "key=", false, false, "key="},
        Case{"TwoSigns", "key==1", false, false, "key==1"},
        Case{"UpperCase", "Key=1 key=True", false, false, "Key=1 key=True"},
        Case{"LongerKey", "key2=1 keys", false, false, "key2=1 keys"},
        Case{"ShorterKey", "ke", false, false, "ke"}, Case{"SignAlone", "=", false, false, "="},
        Case{"GoodAmongBad", "key=1 key=x", true, true, "key=x"}),
    [](auto const &row) { return std::string(row.param.name); });

TEST(GraphOpParamSet, OneKeyMayBeAskedForTwice)
{
    GraphOpParamSet params("key=1");
    bool first = false;
    bool second = false;
    EXPECT_TRUE(params("key", first));
    EXPECT_TRUE(params("key", second));
    EXPECT_TRUE(first && second);
}

TEST(GraphOpParamSet, AMillionBytesOfAnythingAreWords)
{
    std::string text;
    for(unsigned i = 0; i < 1000000; ++i)
        text += static_cast<char>(i * 7919u >> 8);
    GraphOpParamSet params(text + " key=1");
    bool value = false;
    EXPECT_TRUE(params("key", value));
    EXPECT_TRUE(value);
    EXPECT_GT(params.getUnusedParams().size(), 900000u);
}
} // namespace
} // namespace OSG::Test
