#pragma once

#include <vector>

#include "OSGDrawMesh.h"
#include "OSGRangeList.h"

namespace OSG
{
/// What the vertices of a mesh have besides a position, as bits, and how they lie in a buffer: all
/// values of a vertex are together, positions first, as 32-bit floats.
struct VertexLayout
{
    static constexpr UInt32 Normals = 1;
    static constexpr UInt32 Colors = 2;
    static constexpr UInt32 TexCoords = 4;
    static constexpr UInt32 Count = 8;

    UInt32 bits = 0;

    explicit VertexLayout(UInt32 ofBits = 0)
        : bits(ofBits)
    {
    }
    explicit VertexLayout(DrawMesh const &mesh);

    bool has(UInt32 bit) const { return (bits & bit) != 0; }
    // --- in bytes from the begin of a vertex ---
    UInt32 normalOffset() const { return 12; }
    UInt32 colorOffset() const { return has(Normals) ? 24 : 12; }
    UInt32 texCoordOffset() const { return colorOffset() + (has(Colors) ? 16 : 0); }
    UInt32 stride() const { return texCoordOffset() + (has(TexCoords) ? 16 : 0); }
};

/// Where a mesh lies in a page. Its indices count from the page's first vertex; those of triangles
/// come first, then those of lines, then those of points.
struct MeshRange
{
    UInt32 firstVertex = 0;
    UInt32 vertices = 0;
    UInt32 firstIndex = 0;
    UInt32 triangleIndices = 0;
    UInt32 lineIndices = 0;
    UInt32 pointIndices = 0;

    UInt32 indices() const { return triangleIndices + lineIndices + pointIndices; }
};

/// A buffer of vertices of one layout and a buffer of indices, which several meshes share. A page
/// that was just made collects its meshes in memory until upload(), which makes the buffers as
/// large as what is in them; a later mesh is written into the buffers.
class MeshPage
{
  public:
    /// Up to so many vertices, indices have 16 bits.
    static constexpr UInt32 SmallVertices = 65536;
    /// Meshes of more vertices or indices have a page of their own.
    static constexpr UInt32 SharedVertices = 8192;
    static constexpr UInt32 SharedIndices = 32768;

    /// Room for at most so many vertices and indices.
    MeshPage(VertexLayout layout, UInt32 vertices, UInt32 indices);
    MeshPage(MeshPage const &) = delete;
    MeshPage &operator=(MeshPage const &) = delete;

    VertexLayout layout() const { return _layout; }
    bool hasShortIndices() const { return _hasShortIndices; }
    UInt32 indexBytes() const { return _hasShortIndices ? 2 : 4; }
    UInt32 vertexBuffer() const { return _buffers[0]; }
    UInt32 indexBuffer() const { return _buffers[1]; }

    /// Puts the mesh in. False where there is no room. An empty mesh lies anywhere.
    bool add(DrawMesh const &mesh, MeshRange &range);
    void remove(MeshRange const &range);
    bool isEmpty() const { return _vertices.isAllFree() && _indices.isAllFree(); }

    /// Makes the buffers. False where the driver has no memory for them.
    bool upload();
    /// Whether there are buffers to draw from.
    bool isUsable() const { return _isUsable; }
    /// Frees the buffers. Not called where their context is gone.
    void release();

  private:
    void write(DrawMesh const &mesh, MeshRange const &range);

    VertexLayout _layout;
    bool _hasShortIndices;
    UInt32 _buffers[2] = {0, 0};
    bool _isUploaded = false;
    bool _isUsable = false;
    RangeList _vertices;
    RangeList _indices;
    UInt32 _capacity[2];              // of vertices and of indices
    std::vector<Real32> _vertexStore; // until the page is uploaded
    std::vector<UInt8> _indexStore;
};
} // namespace OSG
