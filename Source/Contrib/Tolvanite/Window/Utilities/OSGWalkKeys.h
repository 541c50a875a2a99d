#pragma once

/// \file
/// The keys that a walk polls.

#include <map>

#include "OSGContribTolvaniteApi.h"
#include "OSGDesktop.h"

namespace OSG
{
namespace WalkKeys
{
/// The state of a polled key.
struct KeyState
{
    Int16 code;   ///< the logical key, which several polled keys may share
    bool pressed; ///< at the last poll
};
/// By the virtual-key code that is polled.
using KeyMap = std::map<Int16, KeyState>;

/// Logical keys of the map of motion keys.
enum MotionKey : Int16
{
    StepLeft = 'A',
    Level = 'C', ///< looks towards the horizon
    StepRight = 'D',
    TurnRight = 'E',
    TurnLeft = 'Q',
    Backward = 'S',
    Forward = 'W',
    Up = 'X',
    Down = 'Y'
};

/// Logical keys of the map of option keys. Where they are no characters they are virtual-key codes.
enum OptionKey : Int16
{
    Shift = 16,
    Ctrl = 17,
    Escape = 27,
    Space = 32,
    Star = '*',
    Plus = '+',
    Minus = '-',
    Underscore = '_',
    Digit1 = '1',
    Digit2 = '2',
    Digit5 = '5',
    Digit6 = '6',
    F2 = 113,
    F3 = 114,
    F7 = 118,
    F8 = 119
};

/// Keys and mouse buttons that move the person.
OSG_CONTRIBTOLVANITE_API KeyMap motion_keys();
/// Keys of the settings, Shift and Ctrl.
OSG_CONTRIBTOLVANITE_API KeyMap option_keys();
/// Polls every key of the map, in the order of their codes.
OSG_CONTRIBTOLVANITE_API void poll(KeyMap &keys, Desktop &desktop);
/// False for a key that the map does not have.
OSG_CONTRIBTOLVANITE_API bool is_pressed(KeyMap const &keys, Int16 polledCode);
} // namespace WalkKeys
} // namespace OSG
