#pragma once

/// \file
/// What happens to a walking person, in words.

#include <optional>
#include <vector>

#include "OSGTolvaniteKitApi.h"
#include "OSGWalkObserver.h"

namespace OSG
{
struct WalkEvent
{
    enum class Kind : UInt8
    {
        Jumped,  ///< the step after Space has succeeded raised
        Climbed, ///< another step has succeeded raised, and the person is higher after it
        Dropped, ///< the person is lower by more than its distance from the ground
        Blocked  ///< every try of the step was refused
    };

    Kind kind = Kind::Blocked;
    Int64 milliseconds = 0; ///< at the end of the frame
    Pnt3f position;         ///< the eye at the end of the frame
    Real32 height = 0;      ///< how far it climbed or dropped, above 0; 0 for the other kinds
    std::optional<WalkObstacle> obstacle; ///< of Blocked: what refused the last level try, if any
};

OSG_TOLVANITEKIT_API char const *name_of(WalkEvent::Kind kind);

/// Appends the events of a step, without time and position. `groundDistance` is that of the
/// engine.
OSG_TOLVANITEKIT_API void append_walk_events(WalkStep const &step, Real32 groundDistance,
                                             std::vector<WalkEvent> &events);
} // namespace OSG
