#pragma once

#include <memory>

#include "OSGGeometry.h"
#include "OSGRenderAction.h"
#include "OSGTolvaniteKitApi.h"

namespace OSG
{
/// The sharp edges of the geometries of scenes (SharpEdgeFinder), for drawing them as lines.
///
/// A RenderAction that draws edges walks the scene as one that draws faces: switches, levels,
/// spaces, sections, hidden and isolated places count alike, and so do edits. SceneView has one.
/// Edges are found within a geometry, in its own space, once for all of its nodes. They are kept
/// until one of its types, lengths, positions or their index is committed anew, or it ends.
///
/// A geometry has no edges at first. build() finds them step by step, so that a large model does
/// not stop the host: it is drawn meanwhile, and its edges appear one geometry after the other.
/// Each edge takes 24 bytes, the search in a geometry about 100 bytes a triangle until it ends.
class OSG_TOLVANITEKIT_API SharpEdges
{
  public:
    /// The largest angle between faces that go on smoothly, in degrees.
    static constexpr Real32 DefaultAngle = 30;
    /// Triangles that build() looks at, if nobody says otherwise.
    static constexpr UInt64 DefaultStep = 100000;

    explicit SharpEdges(Real32 angle = DefaultAngle);
    ~SharpEdges();
    SharpEdges(SharpEdges const &) = delete;
    SharpEdges &operator=(SharpEdges const &) = delete;

    /// From now on the action draws the edges of geometries in place of the geometries, also after
    /// the end of this object. What is found later is drawn by the next frame.
    void drawBy(RenderAction &action);

    /// Looks at about `triangles` triangles of the geometries that such actions have walked. True
    /// where the edges of all of them were known already, and drawn so: then no further frame is
    /// needed for them. A geometry with open edits keeps the edges that it has.
    bool build(UInt64 triangles = DefaultStep);

    /// The lines of a geometry that was walked; null for another one.
    Geometry const *getLines(Geometry const &geometry) const;

  private:
    class Table;

    std::shared_ptr<Table> _table;
};
} // namespace OSG
