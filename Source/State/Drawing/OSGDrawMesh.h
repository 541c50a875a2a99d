#pragma once

/// \file
/// Between the cores that have something to draw and the drawing, which knows no core.

#include <vector>

#include "OSGColor.h"
#include "OSGStateApi.h"
#include "OSGVector.h"

namespace OSG
{
/// Vertices and what stands between them, ready to be drawn: all indices are in range, all
/// positions finite.
struct DrawMesh
{
    std::vector<Pnt3f> positions;
    std::vector<Vec3f> normals; ///< empty, or as many as positions; so are the next two
    std::vector<Color4f> colors;
    std::vector<Vec4f> texCoords;
    std::vector<UInt32> triangles; ///< vertex numbers, three each
    std::vector<UInt32> lines;     ///< two each
    std::vector<UInt32> points;

    enum class Kind : UInt32
    {
        Triangles,
        Lines,
        Points
    };
    /// The next `count` indices of a kind.
    struct Run
    {
        Kind kind;
        UInt32 count;

        bool operator==(Run const &) const = default;
    };
    /// The order of the primitives, which blended ones are drawn in. Empty where all triangles come
    /// first, then all lines, then all points.
    std::vector<Run> runs;
};

/// A core that can be drawn. Where its values are unchanged, its mesh is the same.
class OSG_STATE_API DrawShape
{
  public:
    /// Replaces `mesh`.
    virtual void makeMesh(DrawMesh &mesh) const = 0;
    /// Equal as long as makeMesh() gives the same mesh; 0 where that is not known, as while values
    /// may be written without notice.
    virtual UInt64 getMeshStamp() const = 0;
    /// Meshes of one number have the same arrays; those are drawn one after the other.
    virtual UInt32 getMeshLayout() const { return 0; }

  protected:
    DrawShape() = default;
    DrawShape(DrawShape const &) = default;
    virtual ~DrawShape();
};
} // namespace OSG
