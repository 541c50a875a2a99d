#include "EngineKeys.h"

#include <gtest/gtest.h>

#include "EngineHelp.h"
#include "OSGNamedEngine.h"
#include "OSGNavigatorEvent.h"

using namespace Viewer;

namespace
{
using Event = OSG::NavigatorEvent;

struct KeyCase
{
    char const *engine;
    OSG::Int16 virtualKey;
    OSG::Int16 code;
    OSG::UInt16 modifiers;
};

TEST(EngineKeys, EachEngineGetsWhatItUnderstands)
{
    KeyCase const cases[] = {
        {"cad", 38, 38, Event::VirtualKey},       {"fly", 37, Event::LeftKey, 0},
        {"fly", 38, Event::ForwardKey, 0},        {"fly", 39, Event::RightKey, 0},
        {"fly", 40, Event::BackwardKey, 0},       {"fly", 33, Event::RotateLeftKey, 0},
        {"fly", 34, Event::RotateRightKey, 0},    {"fly", 'A', 'A', Event::VirtualKey},
        {"copter", 32, 32, Event::VirtualKey},    {"copter", 107, '+', 0},
        {"copter", 109, '-', 0},                  {"copter", '1', '1', Event::VirtualKey},
        {"walk", '1', '1', 0},                    {"walk", '3', '3', Event::VirtualKey},
        {"walk", 106, '*', 0},                    {"walk", 113, 113, Event::VirtualKey}};
    for(KeyCase const &row : cases)
    {
        EngineKey const key = engine_key(row.engine, row.virtualKey);
        EXPECT_EQ(key.code, row.code) << row.engine << ' ' << row.virtualKey;
        EXPECT_EQ(key.modifiers, row.modifiers) << row.engine << ' ' << row.virtualKey;
    }
}

TEST(EngineHelp, ThereIsHelpForEachEngine)
{
    for(std::string const &name : OSG::engine_names())
        EXPECT_FALSE(help_of_engine(name).empty()) << name;
    EXPECT_TRUE(help_of_engine("submarine").empty());
}
} // namespace
