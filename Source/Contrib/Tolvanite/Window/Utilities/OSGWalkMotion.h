#pragma once

#include <utility>

#include <boost/optional.hpp>

#include "OSGEyePose.h"
#include "OSGWalkBody.h"
#include "OSGWalkScene.h"

namespace OSG
{
/// The moves of a person, from its pose through a space. It changes nothing: the result of a move
/// is where the person would be. It is made anew for each move.
///
/// A move is computed at the head, so that every box hangs from there, and is brought back to the
/// eye at the end. A move whose result is not finite counts as refused.
class OSG_CONTRIBTOLVANITE_API WalkMotion
{
  public:
    /// The new eye and the new point that is looked at. Nothing for a move that is refused.
    using Move = boost::optional<std::pair<Pnt3f, Pnt3f>>;
    using Direction = WalkStep::Direction;
    using Refusal = std::optional<WalkObstacle>;

    /// Keeps references to all three.
    WalkMotion(WalkSettings const &settings, EyePose const &pose, WalkSpace &space);

    WalkFrame frame() const;

    // --- single tries ---
    /// A step along the view (positive backwards) or sideways (positive to the left), with the head
    /// raised by as much as there is room, at most `jump`. With `walkMode` the person is set down
    /// onto the floor; it is never lifted onto one.
    Move tryStep(Direction direction, Real32 step, Real32 jump, WalkFrame const &frame);
    /// A step up, or down for a negative one. What refuses it goes to `refusal`.
    Move tryVertical(Real32 step, WalkFrame const &frame, Refusal *refusal = nullptr);
    /// Down to the floor below the eye. Eye and box take the head's part: the eye then stands
    /// higher than after a step.
    Move tryFall(WalkFrame const &frame);
    /// How far the head can rise, at most `jump`; by bisection. A `jump` below 1e-6 is returned as
    /// it is. Nothing where the head cannot rise.
    boost::optional<Real32> findRaise(Real32 jump);

    // --- whole steps: tries, each half as long as the one before, at most `numStepLoop` ---
    struct Result
    {
        Move move;
        WalkStep step; ///< without the place after it
    };
    /// Each length is tried on the person's own height, then raised by up to `jump`.
    Result step(Direction direction, Real32 step, Real32 jump);
    Result stepVertically(Real32 step);

  private:
    /// A step with the head raised by exactly `raise`.
    Move tryRaised(Direction direction, Real32 step, Real32 raise, WalkFrame const &frame,
                   Refusal *refusal = nullptr);
    bool isFree(WalkBody::FrustumType type, SelectionFunctor::PlaneType plane, Pnt3f const &top,
                WalkFrame const &frame, Real32 margin, Real32 length, Refusal *refusal);
    void setDown(Pnt3f &top, Pnt3f &at, WalkFrame const &frame);
    Move atEye(Pnt3f const &top, Pnt3f const &at, WalkFrame const &frame) const;
    Result begin(Direction direction, Real32 step) const;
    Real32 floorLimit() const { return _settings.groundDistance + _settings.height; }
    std::optional<WalkObstacle> askBox(WalkBody::FrustumType type,
                                       SelectionFunctor::PlaneType plane, Pnt3f const &top,
                                       WalkFrame const &frame, Real32 depth);
    std::optional<WalkObstacle> askDown(Pnt3f const &position, WalkFrame const &frame);

    WalkSettings const &_settings;
    EyePose const &_pose;
    WalkSpace &_space;
    UInt32 _queries = 0;
};
} // namespace OSG
