#pragma once

/// \file
/// The quick selection.

#include "OSGSelectionHandlers.h"

namespace OSG
{
class Geometry;

/// Finds the geometries that have a triangle in the frustum. It stops at the first such triangle of
/// a geometry and records one hit without a place: index -1, distance 0, point and normal zero. It
/// never finds lines or points, and it finds nothing if the mask lacks `SelectTriangles`.
///
/// All distances are equal, so each list begins with the geometry that was found last.
class OSG_CONTRIBTOLVANITE_API FastSelectionFunctor : public SelectionHandlers
{
  public:
    /// Becomes the actor of `action` and registers its handlers there, for triangles and the near
    /// plane. See SelectionFunctor.
    explicit FastSelectionFunctor(SelectionAction *action);
    /// Fails, like the constructor of the base.
    FastSelectionFunctor();
    ~FastSelectionFunctor() override;

  private:
    void init() override;

    ResultE enterGeometry(NodeCore *core, Action *action);
    /// `plane` is ignored.
    void triangles(SelectionAction &action, Plane const &plane, Geometry const *geometry);
};
} // namespace OSG
