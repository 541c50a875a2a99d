#include "OSGWalkKeys.h"

#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "OSGScriptedDesktop.h"

using namespace OSG;

namespace
{
std::map<Int16, Int16> logical_keys(WalkKeys::KeyMap const &keys)
{
    std::map<Int16, Int16> result;
    for(auto const &[polled, key] : keys)
    {
        result[polled] = key.code;
        EXPECT_FALSE(key.pressed) << polled;
    }
    return result;
}

TEST(WalkKeys, MotionKeysHaveTheirLogicalKeys)
{
    std::map<Int16, Int16> const expected = {{87, 'W'}, {38, 'W'}, {1, 'W'},  {83, 'S'}, {40, 'S'},
                                             {2, 'S'},  {65, 'A'}, {37, 'A'}, {68, 'D'}, {39, 'D'},
                                             {81, 'Q'}, {46, 'Q'}, {69, 'E'}, {35, 'E'}, {89, 'Y'},
                                             {34, 'Y'}, {88, 'X'}, {33, 'X'}, {67, 'C'}};
    EXPECT_EQ(logical_keys(WalkKeys::motion_keys()), expected);
}

TEST(WalkKeys, OptionKeysAreTheirOwnLogicalKeysButForTheDigitThree)
{
    std::map<Int16, Int16> expected;
    for(Int16 const code : {27, 16, 17, 32, 113, 114, 118, 119, 49, 50, 53, 54, 42, 43, 45, 95})
        expected[code] = code;
    expected[51] = 114;
    EXPECT_EQ(logical_keys(WalkKeys::option_keys()), expected);
}

TEST(WalkKeys, APollAsksForEveryKeyOnce)
{
    struct Asked : ScriptedDesktop
    {
        bool isDown(Int16 code) override
        {
            codes.push_back(code);
            return ScriptedDesktop::isDown(code);
        }
        std::vector<Int16> codes;
    };
    Asked desktop;
    desktop.setKey(38, true);
    desktop.setKey(114, true);
    WalkKeys::KeyMap keys = WalkKeys::motion_keys();
    WalkKeys::poll(keys, desktop);
    EXPECT_EQ(desktop.codes, (std::vector<Int16>{1, 2, 33, 34, 35, 37, 38, 39, 40, 46, 65, 67, 68,
                                                 69, 81, 83, 87, 88, 89}));
    EXPECT_TRUE(WalkKeys::is_pressed(keys, 38));
    EXPECT_FALSE(WalkKeys::is_pressed(keys, 87));
    EXPECT_FALSE(WalkKeys::is_pressed(keys, 114));
    desktop.releaseAllKeys();
    WalkKeys::poll(keys, desktop);
    EXPECT_FALSE(WalkKeys::is_pressed(keys, 38));
}
} // namespace
