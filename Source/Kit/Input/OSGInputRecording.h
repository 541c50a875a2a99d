#pragma once

/// \file
/// What a user did in a view, as text that people can read and change.
///
/// The format, with all its words, is described in Docs/recordings.md. In short:
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
/// Numbers are written so that they read back to the same bits.

#include <iosfwd>
#include <optional>
#include <string>
#include <vector>

#include "OSGNavigatorEvent.h"
#include "OSGTolvaniteKitApi.h"
#include "OSGVector.h"

namespace OSG
{
/// The view that a recording begins in, and the events in their order.
struct InputRecording
{
    enum class Projection
    {
        Perspective,
        Orthographic
    };

    struct TimedEvent
    {
        Real64 seconds; ///< since the recording began; never before the event before it
        NavigatorEvent event;
    };

    Projection projection = Projection::Perspective;
    /// Vertical field of view in degrees, or what an orthographic camera sees vertically.
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
    std::vector<TimedEvent> events;
};

/// Either a recording, or what is wrong with the text: "line 3: ...".
struct RecordingResult
{
    std::optional<InputRecording> recording;
    std::string complaint;
};

OSG_TOLVANITEKIT_API RecordingResult read_recording(std::istream &in);
OSG_TOLVANITEKIT_API void write_recording(std::ostream &out, InputRecording const &recording);
} // namespace OSG
