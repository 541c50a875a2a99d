#pragma once

/// \file
/// The exact selection.

#include "OSGSelectionHandlers.h"

namespace OSG
{
class Geometry;
namespace SelectionSearch
{
struct Extreme;
struct Extremes;
} // namespace SelectionSearch

/// Finds, for each kind of primitive of each geometry in the frustum, the corner nearest to the
/// reference plane and the farthest one: at most six hits a geometry, however many primitives it
/// has. A primitive is hit as soon as a part of it is inside. Wherever several corners have the
/// extreme distance, the last one counts. A far hit lies before the reference plane, not on it, and
/// is left out where it falls together with the near one.
class OSG_CONTRIBTOLVANITE_API SimpleSelectionFunctor : public SelectionHandlers
{
  public:
    /// Becomes the actor of `action` and registers its handlers there; see SelectionFunctor.
    SimpleSelectionFunctor(SelectionAction *action, UInt32 selectionType, PlaneType planeType);
    /// Fails as the base's does.
    SimpleSelectionFunctor();
    ~SimpleSelectionFunctor() override;

  private:
    void init() override;

    ResultE enterGeometry(NodeCore *core, Action *action);
    void triangles(SelectionAction const &action, Plane const &plane, Geometry const *geometry);
    void lines(SelectionAction const &action, Plane const &plane, Geometry const *geometry);
    void points(SelectionAction const &action, Plane const &plane, Geometry const *geometry);
    /// Records what was found, the points carried to the root's space.
    void record(SelectionAction const &action, SelectionSearch::Extremes const &extremes);
    HitT hit_at(SelectionAction const &action, SelectionSearch::Extreme const &extreme) const;
};
} // namespace OSG
