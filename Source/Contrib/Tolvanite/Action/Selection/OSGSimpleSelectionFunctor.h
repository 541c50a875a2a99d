#pragma once

/// \file
/// The exact selection.

#include "OSGSelectionHandlers.h"

namespace OSG
{
class Geometry;
namespace SelectionSearch
{
struct Way;
} // namespace SelectionSearch

/// Finds the corners that are nearest to the reference plane and farthest from it, for each
/// geometry in the frustum and each kind of primitive. A geometry has at most six hits, however
/// many primitives it has. A primitive is hit if any part of it is inside. Of several corners with
/// the extreme distance the last one counts. A far hit has a positive distance. It is left out
/// where its point equals that of the near hit.
class OSG_CONTRIBTOLVANITE_API SimpleSelectionFunctor : public SelectionHandlers
{
  public:
    /// Becomes the actor of `action` and registers its handlers there. See SelectionFunctor.
    SimpleSelectionFunctor(SelectionAction *action, UInt32 selectionType, PlaneType planeType);
    /// Fails, like the constructor of the base.
    SimpleSelectionFunctor();
    ~SimpleSelectionFunctor() override;

  private:
    void init() override;

    ResultE enterGeometry(NodeCore *core, Action *action);
    void triangles(SelectionAction const &action, Plane const &plane, Geometry const *geometry,
                   SelectionSearch::Way &way);
    void lines(SelectionAction const &action, Plane const &plane, Geometry const *geometry,
               SelectionSearch::Way &way);
    void points(SelectionAction const &action, Plane const &plane, Geometry const *geometry,
                SelectionSearch::Way &way);
};
} // namespace OSG
