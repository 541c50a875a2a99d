#include "PersonSettings.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "OSGWalkSettingNames.h"

using namespace OSG;
using testing::Contains;

namespace
{
using WalkPtr = UnrecordedRefPtr<WASDWalkEngine>;

TEST(PersonSettings, EachLengthIsTheSettingOfItsName)
{
    WalkPtr const walk(WASDWalkEngine::create());
    for(auto const &length : Viewer::person_lengths())
    {
        EXPECT_THAT(walk_setting_names(), Contains(length.name));
        EXPECT_EQ(set_walk_setting(*walk, length.name, "7.5"), WalkSettingResult::Set);
        EXPECT_EQ((walk->*length.get)(), 7.5f) << length.name;
        (walk->*length.set)(8);
        EXPECT_EQ((walk->*length.get)(), 8) << length.name;
    }
}

TEST(PersonSettings, EachModeIsTheSettingOfItsName)
{
    WalkPtr const walk(WASDWalkEngine::create());
    for(auto const &mode : Viewer::person_modes())
    {
        bool const before = (walk->*mode.get)();
        EXPECT_EQ(set_walk_setting(*walk, mode.name, before ? "false" : "true"),
                  WalkSettingResult::Set);
        EXPECT_EQ((walk->*mode.get)(), !before) << mode.name;
        (walk->*mode.set)(before);
        EXPECT_EQ((walk->*mode.get)(), before) << mode.name;
    }
}
} // namespace
