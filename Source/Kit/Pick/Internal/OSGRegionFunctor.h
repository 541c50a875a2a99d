#pragma once

#include "OSGPickRegion.h"
#include "OSGSelectionHandlers.h"

namespace OSG
{
class RegionPart;
class RootPlaces;

/// The selection in a region that is no solid with six sides. It records what the functors of
/// solids record; without `isExact` it stops at a geometry's first triangle and records no place.
/// Primitives that may be inside are looked at one by one.
class RegionFunctor : public SelectionHandlers
{
  public:
    explicit RegionFunctor(SelectionAction *action);
    ~RegionFunctor() override;

    /// The region must outlive the walks in it. The action needs its solid as the frustum.
    void setRegion(PickRegion const *region, bool isExact)
    {
        _region = region;
        _isExact = isExact;
    }

  private:
    void init() override;
    ResultE enterGeometry(NodeCore *core, Action *action);
    void findTriangles(SelectionAction const &action, Geometry const &geometry, RegionPart &part,
                       RootPlaces const &places);
    bool hasTriangle(SelectionAction const &action, Geometry const &geometry, RegionPart &part,
                     RootPlaces const &places) const;
    void findLines(SelectionAction const &action, Geometry const &geometry, RegionPart &part,
                   RootPlaces const &places);
    void findPoints(SelectionAction const &action, Geometry const &geometry, RegionPart &part,
                    RootPlaces const &places);

    PickRegion const *_region = nullptr;
    bool _isExact = true;
};
} // namespace OSG
