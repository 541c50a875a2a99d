#include "OSGWalkKeys.h"

namespace OSG
{
namespace WalkKeys
{
namespace
{
/// Virtual-key codes of keys that have a logical key of another code.
enum PolledCode : Int16
{
    LeftButtonCode = 1,
    RightButtonCode = 2,
    PageUpCode = 33,
    PageDownCode = 34,
    EndCode = 35,
    LeftArrowCode = 37,
    UpArrowCode = 38,
    RightArrowCode = 39,
    DownArrowCode = 40,
    DeleteCode = 46,
    Digit3Code = 51
};

struct KeyRow
{
    Int16 polled;
    Int16 logical;
};

constexpr KeyRow MotionRows[] = {{Forward, Forward},
                                 {UpArrowCode, Forward},
                                 {LeftButtonCode, Forward},
                                 {Backward, Backward},
                                 {DownArrowCode, Backward},
                                 {RightButtonCode, Backward},
                                 {StepLeft, StepLeft},
                                 {LeftArrowCode, StepLeft},
                                 {StepRight, StepRight},
                                 {RightArrowCode, StepRight},
                                 {TurnLeft, TurnLeft},
                                 {DeleteCode, TurnLeft},
                                 {TurnRight, TurnRight},
                                 {EndCode, TurnRight},
                                 {Down, Down},
                                 {PageDownCode, Down},
                                 {Up, Up},
                                 {PageUpCode, Up},
                                 {Level, Level}};

// The digit 3 is a second F3.
constexpr KeyRow OptionRows[] = {{Escape, Escape},
                                 {Shift, Shift},
                                 {Ctrl, Ctrl},
                                 {Space, Space},
                                 {F2, F2},
                                 {F3, F3},
                                 {F7, F7},
                                 {F8, F8},
                                 {Digit1, Digit1},
                                 {Digit2, Digit2},
                                 {Digit3Code, F3},
                                 {Digit5, Digit5},
                                 {Digit6, Digit6},
                                 {Star, Star},
                                 {Plus, Plus},
                                 {Minus, Minus},
                                 {Underscore, Underscore}};

template <std::size_t N>
KeyMap map_of(KeyRow const (&rows)[N])
{
    KeyMap keys;
    for(KeyRow const &row : rows)
        keys.insert({row.polled, {row.logical, false}});
    return keys;
}
} // namespace

KeyMap motion_keys() { return map_of(MotionRows); }
KeyMap option_keys() { return map_of(OptionRows); }

void poll(KeyMap &keys, Desktop &desktop)
{
    for(auto &[polled, key] : keys)
        key.pressed = desktop.isDown(polled);
}

bool is_pressed(KeyMap const &keys, Int16 polledCode)
{
    auto const key = keys.find(polledCode);
    return key != keys.end() && key->second.pressed;
}
} // namespace WalkKeys
} // namespace OSG
