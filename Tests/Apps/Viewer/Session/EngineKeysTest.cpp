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
        {"cad", 38, 38, Event::VirtualKey},    {"fly", 37, Event::LeftKey, 0},
        {"fly", 38, Event::ForwardKey, 0},     {"fly", 39, Event::RightKey, 0},
        {"fly", 40, Event::BackwardKey, 0},    {"fly", 33, Event::RotateLeftKey, 0},
        {"fly", 34, Event::RotateRightKey, 0}, {"fly", 'A', 'A', Event::VirtualKey},
        {"copter", 32, 32, Event::VirtualKey}, {"walk", '1', '1', Event::VirtualKey},
        {"walk", 113, 113, Event::VirtualKey}};
    for(KeyCase const &row : cases)
    {
        EngineKey const key = engine_key(row.engine, row.virtualKey);
        EXPECT_EQ(key.code, row.code) << row.engine << ' ' << row.virtualKey;
        EXPECT_EQ(key.modifiers, row.modifiers) << row.engine << ' ' << row.virtualKey;
    }
}

TEST(EngineKeys, CharactersAreForEnginesThatKnowThem)
{
    for(char character : std::string("+-*_12"))
        EXPECT_TRUE(takes_character("walk", static_cast<unsigned int>(character))) << character;
    EXPECT_TRUE(takes_character("copter", '+'));
    EXPECT_FALSE(takes_character("copter", '1'));
    EXPECT_FALSE(takes_character("walk", 'w'));
    EXPECT_FALSE(takes_character("walk", 0));
    EXPECT_FALSE(takes_character("walk", 0x12b)); // its lowest byte is that of +
    EXPECT_FALSE(takes_character("cad", '+'));
}

TEST(EngineHelp, ThereIsHelpForEachEngine)
{
    for(std::string const &name : OSG::engine_names())
        EXPECT_FALSE(help_of_engine(name).empty()) << name;
    EXPECT_TRUE(help_of_engine("submarine").empty());
}
} // namespace
