#pragma once

#include "OSGDrawMesh.h"
#include "OSGMemManager.h"

namespace OSG
{
class Geometry;

/// A geometry as those who draw see it. Few of a scene's geometries may ever be drawn, so that this
/// is kept beside them.
class GeometryShape : public DrawShape, public MemObject
{
  public:
    explicit GeometryShape(Geometry const &geometry)
        : _geometry(geometry)
    {
    }

    /// Any thread may ask; made where there is none.
    static GeometryShape const *obtain(Geometry const &geometry);
    static void forget(Geometry const &geometry);

    /// Each vertex once, however many primitives share it. A primitive with a corner that is not
    /// finite is left out.
    void makeMesh(DrawMesh &mesh) const override;
    /// Of the stamps of all arrays; 0 where one of them has open edits or was never committed.
    UInt64 getMeshStamp() const override;
    UInt32 getMeshLayout() const override;

  private:
    Geometry const &_geometry;
};
} // namespace OSG
