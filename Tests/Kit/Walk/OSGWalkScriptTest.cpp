#include "OSGWalkScript.h"

#include <gtest/gtest.h>

using namespace OSG;

namespace
{
TEST(WalkScript, ALineHoldsKeysForItsTime)
{
    struct
    {
        char const *text;
        std::vector<Int16> keys;
        UInt32 milliseconds;
    } const rows[] = {{"W 100", {'W'}, 100},
                      {"none 0", {}, 0},
                      {"W+Shift 1500", {'W', 16}, 1500},
                      {"Q+E+Ctrl+Space 7", {'Q', 'E', 17, 32}, 7},
                      {"A+S+D+X+Y+C 4294967295", {'A', 'S', 'D', 'X', 'Y', 'C'}, 4294967295u},
                      {"  W \t 5  ", {'W'}, 5},
                      {"W 0005", {'W'}, 5},
                      {"W+W 5", {'W', 'W'}, 5}};
    for(auto const &row : rows)
    {
        std::optional<WalkScriptLine> const line = parse_walk_line(row.text);
        ASSERT_TRUE(line) << row.text;
        EXPECT_EQ(line->keys, row.keys) << row.text;
        EXPECT_EQ(line->milliseconds, row.milliseconds) << row.text;
    }
}

TEST(WalkScript, EveryOtherLineIsNone)
{
    for(char const *text :
        {"W",           "100",       "W 100 200", "W -1",         "W +1",
         "W 1.5",       "W 1e3",     "W 0x10",    "W 4294967296", "W ten",
         "w 100",       "shift 100", "SPACE 1",   "None 100",     "none+W 100",
         "W+none 100",  "W+ 100",    "+W 100",    "W++S 100",     "W,S 100",
         "F2 100",      "W + S 100", "W 100ms",   "W\v100",       "W 100 # forwards",
         "\xC3\x84 100"})
        EXPECT_FALSE(parse_walk_line(text)) << text;
}

TEST(WalkScript, BlankLinesAndThoseThatBeginWithASharpSayNothing)
{
    for(char const *text : {"", "   ", "\t", "# W 100", "#"})
        EXPECT_TRUE(is_walk_comment(text)) << text;
    for(char const *text : {"W 100", " # W", "W # 1"})
        EXPECT_FALSE(is_walk_comment(text)) << text;
}
} // namespace
