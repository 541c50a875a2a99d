#pragma once

#include <optional>
#include <vector>

#include "OSGContribTolvaniteApi.h"
#include "OSGVector.h"

namespace OSG
{
class Node;

/// A triangle that is in the way of a step.
struct WalkObstacle
{
    Node *node = nullptr;                  ///< the node that shows the geometry; not counted
    std::vector<Node *> visitSubTreeNodes; ///< `VisitSubTree` nodes on the path; not counted
    Real32 distance = 0;                   ///< from the person, in the geometry's space
    Vec3f normal;                          ///< in the geometry's space
};

/// One step of a walk, with all its tries.
struct WalkStep
{
    enum class Direction : UInt8
    {
        AlongView,
        Sideways,
        Vertical
    };
    enum class Outcome : UInt8
    {
        Refused, ///< no try has succeeded: the person stays
        Level,   ///< a try on the height of the person has succeeded
        Raised   ///< a try with the head raised has succeeded
    };

    Direction direction = Direction::AlongView;
    Outcome outcome = Outcome::Refused;
    bool isAfterSpace = false; ///< `staircase_mode` was false
    Real32 step = 0;           ///< the length of the try that has succeeded, or of the last one
    Real32 raise = 0;          ///< how far the head was raised; 0 for another outcome than Raised
    Pnt3f before;              ///< the eye before the step
    Pnt3f after;               ///< and after it
    Vec3f up;                  ///< the direction up, of length 1
    /// What refused the last try on the person's own height. Nothing where that try succeeded, or
    /// where no query refused it.
    std::optional<WalkObstacle> obstacle;
    UInt32 queries = 0; ///< box and line queries of all tries
};

/// Sees every step of a walk; see WASDWalkEngine::setWalkObserver.
class OSG_CONTRIBTOLVANITE_API WalkObserver
{
  public:
    virtual ~WalkObserver();
    /// Called when the step has been taken or refused. `step` is valid during the call.
    virtual void observe(WalkStep const &step) = 0;
};
} // namespace OSG
