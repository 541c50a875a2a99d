#pragma once

/// \file
/// Recordings of what a user did in a view, as text that people can read and change.
///
/// Docs/recordings.md describes the format with all its words. An example:
///
///     tolvanite-events 1
///     camera perspective 45
///     from 0 2 10
///     at 0 1 0
///     up 0 1 0
///     motion-factor 1
///     rotation-angle 0.05
///     click-center off
///     no-intersect off
///     0.5 press 0 320 240
///     0.516 move 324 240
///     0.533 release 0 324 240
///
/// The second version also holds what an engine asked the desktop: keys, focus, and the time of
/// each frame. The third one also holds which tool had the left button, and what the host
/// changed: settings and poses.
///
/// Numbers are written so that reading them gives the same bits again.

#include <iosfwd>
#include <optional>
#include <string>
#include <vector>

#include "OSGNavigatorEvent.h"
#include "OSGTolvaniteKitApi.h"
#include "OSGVector.h"

namespace OSG
{
/// The view and the settings at the start of a recording, and its events in their order.
struct InputRecording
{
    enum class Projection
    {
        Perspective,
        Orthographic
    };

    /// What a line of the recording holds.
    enum class What : UInt8
    {
        Event,  ///< `event`
        Key,    ///< the key `code` goes down or up, for those who poll it
        Focus,  ///< the window gets or loses the focus, for those who ask for it
        Frame,  ///< Navigator::updateCameraTransformation at the time `ticks`
        Tool,   ///< the left drags belong to `tool` from here on
        Held,   ///< `code` holds the modifiers that are down for tools, see PointerTool::Modifier
        Cancel, ///< the tool ends what is under way without a result
        Pose,   ///< the host gives the engine `pose`
        MotionFactor, ///< the navigator's settings are `number` or `isOn` from here on
        RotationAngle,
        ClickCenter,
        NoIntersect,
        Silent ///< a walk hears of nothing where `isOn`, see WASDWalkEngine::setSilent
    };

    struct Viewpoint
    {
        Pnt3f from;
        Pnt3f at;
        Vec3f up;
    };

    struct TimedEvent
    {
        Real64 seconds; ///< since the recording began; not less than that of the event before
        NavigatorEvent event{};
        What what = What::Event;
        Int16 code = 0;    ///< a virtual-key code, or modifiers
        bool isOn = false; ///< down, or focused, or shared with the navigator
        Int64 ticks = 0;   ///< of the desktop's clock, since the recording began
        Real32 number = 0;
        Viewpoint pose = {};
        std::string tool = {}; ///< a word of letters, see PointerTool::getName; "none" for none
    };

    Projection projection = Projection::Perspective;
    /// The vertical field of view in degrees; for an orthographic camera the height of the picture
    /// in units of the scene.
    Real64 opening = 45;
    Real32 near = 0.1f;
    Real32 far = 10000.f;
    Pnt3f from{0.f, 0.f, 0.f};
    Pnt3f at{0.f, 0.f, 1.f};
    Vec3f up{0.f, 1.f, 0.f};
    Real32 motionFactor = 1.f;
    Real32 rotationAngle = 0.05f; ///< radians
    bool clickCenter = false;
    bool noIntersect = false;
    /// Of the desktop's clock, see Desktop::getTicksPerSecond. Only a recording that has it may
    /// hold keys, focus and frames.
    std::optional<Int64> ticksPerSecond;
    /// Device pixels in a unit of the toolkit, for tools.
    Real32 contentScale = 1;
    std::vector<TimedEvent> events;
};

/// A recording or, if the text is not one, a complaint such as "line 3: time runs backwards".
struct RecordingResult
{
    std::optional<InputRecording> recording;
    std::string complaint;
};

/// Reads up to the end of the stream or to the first fault. Memory is bounded by the events that
/// were read and the longest line that is allowed, 4096 characters.
OSG_TOLVANITEKIT_API RecordingResult read_recording(std::istream &in);
/// Writes a text that read_recording reads back to an equal recording, in the oldest version of the
/// format that can hold it.
OSG_TOLVANITEKIT_API void write_recording(std::ostream &out, InputRecording const &recording);
} // namespace OSG
