#pragma once

/// \file
/// The quick selection.

#include "OSGSelectionHandlers.h"

namespace OSG
{
class Geometry;

/// Finds which geometries have a triangle in the frustum. Each is looked at up to its first such
/// triangle and gives one hit without place: index -1, distance 0, point and normal zero. Lines and
/// points are never found; without `SelectTriangles` in the mask nothing is.
///
/// As all distances are equal, every list is in the order of discovery, the last one found first.
class OSG_CONTRIBTOLVANITE_API FastSelectionFunctor : public SelectionHandlers
{
  public:
    /// Becomes the actor of `action` and registers its handlers there, for triangles and the near
    /// plane; see SelectionFunctor.
    explicit FastSelectionFunctor(SelectionAction *action);
    /// Fails as the base's does.
    FastSelectionFunctor();
    ~FastSelectionFunctor() override;

  private:
    void init() override;

    ResultE enterGeometry(NodeCore *core, Action *action);
    /// `plane` has no say here.
    void triangles(SelectionAction const &action, Plane const &plane, Geometry const *geometry);
};
} // namespace OSG
