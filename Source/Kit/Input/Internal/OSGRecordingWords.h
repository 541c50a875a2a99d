#pragma once

/// \file
/// The words of recordings, for those who read and write them.

#include <string_view>

#include "OSGInputRecording.h"

namespace OSG
{
inline constexpr char const *RecordingSignature = "tolvanite-events";

/// The versions of the format.
enum RecordingVersion : int
{
    PlainVersion = 1,
    DesktopVersion = 2, ///< holds what an engine asks the desktop
    HostVersion = 3     ///< holds what a host and its tools do, and may hold what an engine asks
};

struct EventWord
{
    char const *word;
    NavigatorEvent::Kind kind;
    bool hasCode;
    bool hasModifiers;
    bool hasPointer;
};
inline constexpr EventWord EventWords[] = {
    {"press", NavigatorEvent::ButtonPress, true, false, true},
    {"release", NavigatorEvent::ButtonRelease, true, false, true},
    {"key", NavigatorEvent::Key, true, true, true},
    {"move", NavigatorEvent::Move, false, false, true},
    {"hover", NavigatorEvent::Hover, false, false, true},
    {"idle", NavigatorEvent::Idle, true, false, true},
    {"blur", NavigatorEvent::KillFocus, false, false, false},
};

/// Lines that change a setting, to a number or to on or off.
struct ChangeWord
{
    char const *word;
    InputRecording::What what;
    bool isNumber;
};
inline constexpr ChangeWord ChangeWords[] = {
    {"motion-factor", InputRecording::What::MotionFactor, true},
    {"rotation-angle", InputRecording::What::RotationAngle, true},
    {"click-center", InputRecording::What::ClickCenter, false},
    {"no-intersect", InputRecording::What::NoIntersect, false},
    {"silent", InputRecording::What::Silent, false},
};

/// Whether a text can be the name of a tool: letters of ASCII, at least one.
inline bool is_tool_name(std::string_view text)
{
    for(char const c : text)
    {
        if(!((c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z')))
            return false;
    }
    return !text.empty();
}
/// Tools by these names leave the left drag to the navigator, others where this word follows.
inline bool is_shared_by_name(std::string_view tool)
{
    return tool == "none" || tool == "navigate";
}
inline constexpr char const *SharedWord = "shared";
} // namespace OSG
