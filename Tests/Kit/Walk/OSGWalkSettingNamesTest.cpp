#include "OSGWalkSettingNames.h"

#include <cmath>

#include <gtest/gtest.h>

using namespace OSG;

namespace
{
using Engine = UnrecordedRefPtr<WASDWalkEngine>;
using enum WalkSettingResult;

TEST(WalkSettingNames, SetANumberATruthACountAndAVector)
{
    Engine const walk(WASDWalkEngine::create());
    EXPECT_EQ(set_walk_setting(*walk, "height", "1.5e0"), Set);
    EXPECT_EQ(walk->height(), 1.5f);
    EXPECT_EQ(set_walk_setting(*walk, "height_eye", "-0.25"), Set);
    EXPECT_EQ(walk->height_eye(), -0.25f);
    for(char const *yes : {"true", "1"})
    {
        walk->god_mode(false);
        EXPECT_EQ(set_walk_setting(*walk, "god_mode", yes), Set);
        EXPECT_TRUE(walk->god_mode());
    }
    for(char const *no : {"false", "0"})
    {
        walk->walk_mode(true);
        EXPECT_EQ(set_walk_setting(*walk, "walk_mode", no), Set);
        EXPECT_FALSE(walk->walk_mode());
    }
    EXPECT_EQ(set_walk_setting(*walk, "num_step_loop", "4294967295"), Set);
    EXPECT_EQ(walk->num_step_loop(), 4294967295u);
    EXPECT_EQ(set_walk_setting(*walk, "normal", "1,-2.5,3e1"), Set);
    EXPECT_EQ(walk->normal(), Vec3f(1, -2.5f, 30));
}

TEST(WalkSettingNames, ANumberMayBeNone)
{
    Engine const walk(WASDWalkEngine::create());
    EXPECT_EQ(set_walk_setting(*walk, "width", "inf"), Set);
    EXPECT_EQ(walk->width(), INFINITY);
    EXPECT_EQ(set_walk_setting(*walk, "width", "-inf"), Set);
    EXPECT_EQ(walk->width(), -INFINITY);
    EXPECT_EQ(set_walk_setting(*walk, "width", "nan"), Set);
    EXPECT_TRUE(std::isnan(walk->width()));
}

TEST(WalkSettingNames, BadValuesAreNotTaken)
{
    struct
    {
        char const *name;
        std::vector<std::string> values;
    } const rows[] = {
        {"height",
         {"", "1,5", "1.5 ", " 1", "one", "0x1", "1e50", "NaN", "infinity", "nan(1)", "+1"}},
        {"god_mode", {"", "yes", "True", "2", "on", "-1"}},
        {"num_step_loop", {"", "-1", "1.5", "4294967296", "nan"}},
        {"normal", {"", "1", "1,2", "1,2,3,4", "1, 2,3", "nan,0,0", "inf,0,0", ",,"}}};
    for(auto const &row : rows)
    {
        for(std::string const &value : row.values)
        {
            Engine const walk(WASDWalkEngine::create());
            EXPECT_EQ(set_walk_setting(*walk, row.name, value), BadValue) << row.name << value;
            EXPECT_EQ(walk->height(), 1.75f);
            EXPECT_EQ(walk->normal(), Vec3f(1, 0, 0));
        }
    }
}

TEST(WalkSettingNames, UnknownNamesAreToldApart)
{
    Engine const walk(WASDWalkEngine::create());
    for(char const *name : {"", "Height", "heigth", "world", "god_perspective_console", "height "})
        EXPECT_EQ(set_walk_setting(*walk, name, "1"), UnknownName) << name;
}

TEST(WalkSettingNames, EveryNameTakesAValueOfItsKind)
{
    std::vector<std::string> const names = walk_setting_names();
    EXPECT_EQ(names.size(), 30u);
    for(std::string const &name : names)
    {
        Engine const walk(WASDWalkEngine::create());
        EXPECT_EQ(set_walk_setting(*walk, name, name == "normal" ? "1,1,1" : "1"), Set) << name;
    }
}
} // namespace
