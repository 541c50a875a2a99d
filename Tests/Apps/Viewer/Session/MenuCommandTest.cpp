#include "MenuCommand.h"

#include <gtest/gtest.h>

#include "OSGPointerTool.h"

using namespace Viewer;

namespace
{
constexpr OSG::UInt16 Control = OSG::PointerTool::Control;
constexpr OSG::UInt16 Alt = OSG::PointerTool::Alt;
constexpr OSG::UInt16 Shift = OSG::PointerTool::Shift;
constexpr OSG::Int16 Home = 36;
constexpr OSG::Int16 Left = 37;
constexpr OSG::Int16 F5 = 116;

struct RunKeyTest : testing::Test
{
    bool runs(Chord const &chord, KeyOwner owner)
    {
        int runs = 0;
        Commands const commands{{.menu = "", .name = "", .key = chord, .run = [&runs] { ++runs; }}};
        bool const isTaken = run_key(commands, chord, owner);
        EXPECT_EQ(isTaken, runs == 1);
        return runs == 1;
    }
};

TEST(MenuCommand, KeysHaveTheirNames)
{
    EXPECT_EQ(text_of({}), "");
    EXPECT_EQ(text_of({'O', Control}), "Ctrl+O");
    EXPECT_EQ(text_of({F5, 0}), "F5");
    EXPECT_EQ(text_of({Home, Shift}), "Shift+Home");
    EXPECT_EQ(text_of({Left, Alt}), "Alt+Left");
}

TEST_F(RunKeyTest, AnEngineTakesLettersAndDigitsWithoutControl)
{
    EXPECT_TRUE(runs({'F', 0}, KeyOwner::Nobody));
    EXPECT_FALSE(runs({'F', 0}, KeyOwner::Engine));
    EXPECT_FALSE(runs({'1', Shift}, KeyOwner::Engine));
    EXPECT_TRUE(runs({'O', Control}, KeyOwner::Engine));
    EXPECT_TRUE(runs({Home, 0}, KeyOwner::Engine));
    EXPECT_TRUE(runs({F5, 0}, KeyOwner::Engine));
}

TEST_F(RunKeyTest, ATextTakesEachKeyThatEditsItAndLeavesTheOthers)
{
    EXPECT_FALSE(runs({'F', 0}, KeyOwner::Text));
    EXPECT_FALSE(runs({Home, 0}, KeyOwner::Text));
    EXPECT_FALSE(runs({Left, Control}, KeyOwner::Text));
    EXPECT_FALSE(runs({'V', Control}, KeyOwner::Text));
    EXPECT_TRUE(runs({'O', Control}, KeyOwner::Text));
    EXPECT_TRUE(runs({Left, Alt}, KeyOwner::Text));
    EXPECT_TRUE(runs({F5, 0}, KeyOwner::Text));
}

TEST_F(RunKeyTest, ACommandThatCannotRunKeepsItsKey)
{
    Commands const commands{{.menu = "",
                             .name = "",
                             .key = {'F', 0},
                             .run = [] { FAIL(); },
                             .canRun = [] { return false; }}};
    EXPECT_TRUE(run_key(commands, {'F', 0}, KeyOwner::Nobody));
    EXPECT_FALSE(run_key(commands, {'G', 0}, KeyOwner::Nobody));
}
} // namespace
