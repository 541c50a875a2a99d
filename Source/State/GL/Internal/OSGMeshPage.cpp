#include "OSGMeshPage.h"

#include <algorithm>
#include <cstring>

#include <epoxy/gl.h>

namespace OSG
{
namespace
{
// The vertices of a mesh as they lie in a buffer.
void gather_vertices(DrawMesh const &mesh, VertexLayout layout, Real32 *out)
{
    for(std::size_t i = 0; i < mesh.positions.size(); ++i)
    {
        out = std::copy_n(mesh.positions[i].values(), 3, out);
        if(layout.has(VertexLayout::Normals))
            out = std::copy_n(mesh.normals[i].values(), 3, out);
        if(layout.has(VertexLayout::Colors))
            out = std::copy_n(mesh.colors[i].values(), 4, out);
        if(layout.has(VertexLayout::TexCoords))
            out = std::copy_n(mesh.texCoords[i].values(), 4, out);
    }
}

template <class Index>
void gather_indices(DrawMesh const &mesh, UInt32 firstVertex, UInt8 *out)
{
    for(std::vector<UInt32> const *part : {&mesh.triangles, &mesh.lines, &mesh.points})
    {
        for(UInt32 const vertex : *part)
        {
            Index const index = static_cast<Index>(firstVertex + vertex);
            std::memcpy(out, &index, sizeof(index));
            out += sizeof(index);
        }
    }
}

// Whether the buffer that is bound has room for so many bytes after it was asked for them.
bool make_room(GLenum target, std::size_t bytes, void const *content)
{
    glBufferData(target, static_cast<GLsizeiptr>(bytes), content, GL_STATIC_DRAW);
    GLint size = static_cast<GLint>(bytes);
    glGetBufferParameteriv(target, GL_BUFFER_SIZE, &size);
    return size == static_cast<GLint>(bytes);
}

// Scenes grow by small steps, so a page keeps some room for meshes to come.
UInt32 size_with_room(RangeList const &ranges, UInt32 capacity)
{
    constexpr UInt32 LeastRoom = 1024;
    UInt32 const used = ranges.takenEnd();
    return std::min(capacity, used + used / 8 + LeastRoom);
}
} // namespace

VertexLayout::VertexLayout(DrawMesh const &mesh)
    : bits((mesh.normals.empty() ? 0 : Normals) | (mesh.colors.empty() ? 0 : Colors) |
           (mesh.texCoords.empty() ? 0 : TexCoords))
{
}

MeshPage::MeshPage(VertexLayout layout, UInt32 vertices, UInt32 indices)
    : _layout(layout)
    , _hasShortIndices(vertices <= SmallVertices)
    , _vertices(vertices)
    , _indices(indices)
    , _capacity{vertices, indices}
{
}

bool MeshPage::add(DrawMesh const &mesh, MeshRange &range)
{
    MeshRange place;
    place.vertices = static_cast<UInt32>(mesh.positions.size());
    place.triangleIndices = static_cast<UInt32>(mesh.triangles.size());
    place.lineIndices = static_cast<UInt32>(mesh.lines.size());
    place.pointIndices = static_cast<UInt32>(mesh.points.size());
    place.firstVertex = _vertices.take(place.vertices);
    if(place.firstVertex == RangeList::None)
        return false;
    place.firstIndex = RangeList::None;
    try
    {
        place.firstIndex = _indices.take(place.indices());
        if(place.firstIndex != RangeList::None)
            write(mesh, place);
    }
    catch(...)
    {
        remove(place);
        throw;
    }
    if(place.firstIndex == RangeList::None)
    {
        remove(place);
        return false;
    }
    range = place;
    return true;
}

// A range that has no indices yet gives back its vertices alone.
void MeshPage::remove(MeshRange const &range)
{
    _vertices.giveBack(range.firstVertex, range.vertices);
    if(range.firstIndex != RangeList::None)
        _indices.giveBack(range.firstIndex, range.indices());
}

void MeshPage::write(DrawMesh const &mesh, MeshRange const &range)
{
    std::size_t const floats = _layout.stride() / sizeof(Real32);
    std::size_t const firstFloat = range.firstVertex * floats;
    std::size_t const firstByte = std::size_t(range.firstIndex) * indexBytes();
    std::size_t const bytes = std::size_t(range.indices()) * indexBytes();
    auto const gatherIndices = _hasShortIndices ? &gather_indices<UInt16> : &gather_indices<UInt32>;
    if(!_isUploaded)
    {
        _vertexStore.resize(std::max(_vertexStore.size(), firstFloat + range.vertices * floats));
        _indexStore.resize(std::max(_indexStore.size(), firstByte + bytes));
        gather_vertices(mesh, _layout, _vertexStore.data() + firstFloat);
        gatherIndices(mesh, range.firstVertex, _indexStore.data() + firstByte);
        return;
    }
    std::vector<Real32> vertices(range.vertices * floats);
    std::vector<UInt8> indices(bytes);
    gather_vertices(mesh, _layout, vertices.data());
    gatherIndices(mesh, range.firstVertex, indices.data());
    glBindBuffer(GL_ARRAY_BUFFER, _buffers[0]);
    glBufferSubData(GL_ARRAY_BUFFER, static_cast<GLintptr>(firstFloat * sizeof(Real32)),
                    static_cast<GLsizeiptr>(vertices.size() * sizeof(Real32)), vertices.data());
    glBindBuffer(GL_ELEMENT_ARRAY_BUFFER, _buffers[1]);
    glBufferSubData(GL_ELEMENT_ARRAY_BUFFER, static_cast<GLintptr>(firstByte),
                    static_cast<GLsizeiptr>(bytes), indices.data());
}

bool MeshPage::upload()
{
    UInt32 const vertices = size_with_room(_vertices, _capacity[0]);
    UInt32 const indices = size_with_room(_indices, _capacity[1]);
    _vertexStore.resize(std::size_t(vertices) * _layout.stride() / sizeof(Real32));
    _indexStore.resize(std::size_t(indices) * indexBytes());
    _vertices.cut(vertices);
    _indices.cut(indices);
    glGenBuffers(2, _buffers);
    _isUploaded = true;
    glBindBuffer(GL_ARRAY_BUFFER, _buffers[0]);
    bool const hasVertices =
        make_room(GL_ARRAY_BUFFER, _vertexStore.size() * sizeof(Real32), _vertexStore.data());
    glBindBuffer(GL_ELEMENT_ARRAY_BUFFER, _buffers[1]);
    bool const hasIndices =
        make_room(GL_ELEMENT_ARRAY_BUFFER, _indexStore.size(), _indexStore.data());
    _vertexStore = {};
    _indexStore = {};
    _isUsable = hasVertices && hasIndices;
    return _isUsable;
}

void MeshPage::release()
{
    if(_isUploaded)
        glDeleteBuffers(2, _buffers);
    _isUploaded = false;
}
} // namespace OSG
