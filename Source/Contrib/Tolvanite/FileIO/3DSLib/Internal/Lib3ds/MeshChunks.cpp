#include <algorithm>
#include <cmath>
#include <cstring>

#include "Chunks.h"
#include "OSGFaces3DS.h"
#include "OSGMatrix3DS.h"

namespace OSG::Lib3ds
{
namespace
{
constexpr std::size_t FaceBytes = 8; // three indices and flags

/// Makes room for `count` values; the first `kept` stay, the others are not set.
template <class T>
void make_room(MemArray<T> &values, std::size_t count, std::size_t kept)
{
    if(count <= values.size())
        return;
    MemArray<T> longer(count);
    std::copy_n(values.data(), kept, longer.data());
    values = std::move(longer);
}

/// Has `count` values instead of `old`. New ones are zero.
template <class T>
void resize(MemArray<T> &values, std::size_t old, std::size_t count)
{
    make_room(values, count, old);
    if(old < count)
        std::fill(values.data() + old, values.data() + count, T{});
}

void read_points(Chunk chunk, Mesh &mesh)
{
    unsigned short const count = chunk.word();
    chunk.require(count, sizeof(Vertex));
    make_room(mesh.vertexRoom, count, 0);
    chunk.reals(reinterpret_cast<float *>(mesh.vertexRoom.data()), 3 * std::size_t(count));
    if(mesh.hasTexCoords)
        resize(mesh.texCoordRoom, mesh.nvertices, count);
    mesh.texCoordsSet = std::min(mesh.texCoordsSet, count);
    mesh.nvertices = count;
}

void read_tex_coords(Chunk chunk, Mesh &mesh)
{
    unsigned short const count = chunk.word();
    chunk.require(count, sizeof(TexCoord));
    if(count == 0)
        return;
    std::size_t const old = mesh.hasTexCoords ? mesh.nvertices : 0;
    if(count > mesh.nvertices)
    {
        resize(mesh.vertexRoom, mesh.nvertices, count);
        mesh.nvertices = count;
    }
    resize(mesh.texCoordRoom, old, mesh.nvertices);
    // Only what an earlier list has set is cleared. There may be very many lists.
    TexCoord *const texCoords = mesh.texCoordRoom.data();
    if(count < mesh.texCoordsSet)
        std::fill(texCoords + count, texCoords + mesh.texCoordsSet, TexCoord{});
    chunk.reals(reinterpret_cast<float *>(texCoords), 2 * std::size_t(count));
    mesh.hasTexCoords = true;
    mesh.texCoordsSet = count;
}

// Only materials that stand before the mesh in the file are known.
void read_face_materials(Chunk chunk, Mesh &mesh, File const &file)
{
    char name[Chunk::NameSize];
    chunk.name(name);
    int const material = file.findMaterial(name);
    std::size_t const count = chunk.word();
    chunk.require(count, 2);
    for(std::size_t i = 0; i < count; ++i)
    {
        std::size_t const face = chunk.word();
        if(face < mesh.nfaces)
            mesh.faceRoom[face].material = material;
    }
}

void read_smoothing(Chunk chunk, Mesh &mesh)
{
    unsigned char const *bytes = chunk.parts(mesh.nfaces, 4);
    for(std::size_t i = 0; i < mesh.nfaces; ++i, bytes += 4)
        mesh.faceRoom[i].smoothing_group = dword_at(bytes);
}

void read_face_list(unsigned char const *bytes, Mesh &mesh)
{
    unsigned short largest = 0;
    for(std::size_t i = 0; i < mesh.nfaces; ++i, bytes += FaceBytes)
    {
        Lib3dsFace const face = {
            {word_at(bytes), word_at(bytes + 2), word_at(bytes + 4)}, word_at(bytes + 6), -1, 0};
        largest = std::max({largest, face.index[0], face.index[1], face.index[2]});
        mesh.faceRoom[i] = face;
    }
    mesh.largestIndex = largest;
}

void read_faces(Chunk chunk, Mesh &mesh, File const &file)
{
    unsigned short const count = chunk.word();
    unsigned char const *const bytes = chunk.parts(count, FaceBytes);
    make_room(mesh.faceRoom, count, 0);
    mesh.nfaces = count;
    read_face_list(bytes, mesh);
    if(count == 0)
        return;
    chunk.readChildren(
        [&](Chunk const &part)
        {
            if(part.kind() == FaceMaterialChunk)
                read_face_materials(part, mesh, file);
            else if(part.kind() == SmoothingChunk)
                read_smoothing(part, mesh);
            else
                return false;
            return true;
        });
}

void read_matrix(Chunk chunk, Mesh &mesh)
{
    for(float(&column)[4] : mesh.matrix)
        chunk.reals(column, 3);
}

bool read_part(Chunk const &part, Mesh &mesh, File const &file)
{
    switch(part.kind())
    {
    case PointsChunk:
        read_points(part, mesh);
        return true;
    case TexCoordsChunk:
        read_tex_coords(part, mesh);
        return true;
    case FacesChunk:
        read_faces(part, mesh, file);
        return true;
    case MeshMatrixChunk:
        read_matrix(part, mesh);
        return true;
    default:
        return false;
    }
}

void drop_bad_faces(Mesh &mesh, Messages const &messages)
{
    if(mesh.nfaces == 0 || mesh.largestIndex < mesh.nvertices)
        return;
    mesh.faces = mesh.faceRoom.data();
    unsigned const dropped = drop_faces_without_vertices(mesh);
    messages.warn(dropped_faces_text(mesh.name, dropped));
}

// A matrix that mirrors stands for a mesh that the author has mirrored along its own first axis.
// The vertices are brought to the other side, and the matrix stays.
void mirror_vertices(Mesh &mesh)
{
    TransformationMatrix<Real64> const matrix = as_matrix<Real64>(mesh.matrix);
    constexpr Real64 Singular = 1e-30;
    if(!(matrix.determinant() <= -Singular))
        return;
    TransformationMatrix<Real64> inverse;
    inverse.invertFrom(matrix);
    TransformationMatrix<Real64> flip;
    flip[0][0] = -1;
    TransformationMatrix<Real64> const mirror = matrix * flip * inverse;
    for(std::size_t v = 0; v < mesh.nvertices; ++v)
    {
        Vertex &vertex = mesh.vertexRoom[v];
        auto const at = mirror * Point<Real64, 3>(vertex.at[0], vertex.at[1], vertex.at[2]);
        for(int i = 0; i < 3; ++i)
            vertex.at[i] = static_cast<float>(at[i]);
    }
}

void read_mesh(Chunk chunk, char const (&name)[Chunk::NameSize], File &file)
{
    Mesh mesh;
    std::memcpy(mesh.name, name, sizeof name);
    if(!chunk.readChildren([&](Chunk const &part) { return read_part(part, mesh, file); }))
    {
        file.addEmptyMesh(name);
        return;
    }
    drop_bad_faces(mesh, chunk.messages());
    mirror_vertices(mesh);
    file.addMesh(std::move(mesh));
}
} // namespace

void read_object(Chunk chunk, File &file)
{
    char name[Chunk::NameSize];
    chunk.name(name);
    chunk.readChildren(
        [&](Chunk const &part)
        {
            if(part.kind() != MeshChunk)
                return false;
            read_mesh(part, name, file);
            return true;
        });
}
} // namespace OSG::Lib3ds
