#pragma once

#include "OSGBaseTypes.h"

namespace OSG
{
/// One event of a window, as Navigator::handle takes it.
struct NavigatorEvent
{
    enum Kind : UInt8
    {
        ButtonPress,
        ButtonRelease,
        Key,
        Move,     ///< the pointer moves while a button is down
        Hover,    ///< the pointer moves while no button is down
        Idle,     ///< the regular call between events
        KillFocus ///< the window has lost the keyboard
    };

    /// Buttons, and steps of the wheel. A step is a press without a release.
    enum Button : Int16
    {
        LeftButton = 0,
        MiddleButton = 1,
        RightButton = 2,
        WheelUp = 3,
        WheelDown = 4
    };

    /// Codes of the navigation keys. They come without the bit VirtualKey.
    enum NavigationKey : Int16
    {
        LeftKey = 0,
        RightKey = 1,
        ForwardKey = 2,
        BackwardKey = 3,
        RotateLeftKey = 4,
        RotateRightKey = 5
    };

    /// Bits of `modifiers`.
    enum Modifier : UInt16
    {
        KeyDown = 0x08,
        KeyUp = 0x10,
        VirtualKey = 0x20 ///< `code` is a Windows virtual-key code, not a character
    };

    Kind kind = Idle;
    Int16 code = 0;       ///< the button or the key; for Idle the button that is down
    UInt16 modifiers = 0; ///< used by Key only
    Int16 x = 0;          ///< place of the pointer, in pixels from the window's left top corner
    Int16 y = 0;

    friend bool operator==(NavigatorEvent const &, NavigatorEvent const &) = default;
};
} // namespace OSG
