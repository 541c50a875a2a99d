#include <algorithm>
#include <cmath>
#include <cstring>

#include "Chunks.h"
#include "OSGMatrix3DS.h"

namespace OSG::Lib3ds
{
namespace
{
void read_points(Chunk chunk, Mesh &mesh)
{
    std::size_t const count = chunk.word();
    chunk.require(count, sizeof(Vertex));
    mesh.vertexList.resize(count);
    chunk.reals(mesh.vertexList.empty() ? nullptr : mesh.vertexList.front().at, 3 * count);
    if(mesh.hasTexCoords)
        mesh.texCoordList.resize(count, TexCoord{});
}

void read_tex_coords(Chunk chunk, Mesh &mesh)
{
    std::size_t const count = chunk.word();
    chunk.require(count, sizeof(TexCoord));
    if(count == 0)
        return;
    if(count > mesh.vertexList.size())
        mesh.vertexList.resize(count, Vertex{});
    mesh.hasTexCoords = true;
    mesh.texCoordList.assign(mesh.vertexList.size(), TexCoord{});
    chunk.reals(mesh.texCoordList.front().at, 2 * count);
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
        if(face < mesh.faceList.size())
            mesh.faceList[face].material = material;
    }
}

void read_smoothing(Chunk chunk, Mesh &mesh)
{
    chunk.require(mesh.faceList.size(), 4);
    for(Lib3dsFace &face : mesh.faceList)
        face.smoothing_group = chunk.dword();
}

void read_faces(Chunk chunk, Mesh &mesh, File const &file)
{
    std::size_t const count = chunk.word();
    chunk.require(count, 8);
    mesh.faceList.assign(count, Lib3dsFace{{}, 0, -1, 0});
    for(Lib3dsFace &face : mesh.faceList)
    {
        for(unsigned short &index : face.index)
            index = chunk.word();
        face.flags = chunk.word();
    }
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
    std::size_t const vertices = mesh.vertexList.size();
    std::size_t const dropped = std::erase_if(
        mesh.faceList, [vertices](Lib3dsFace const &face)
        { return *std::max_element(std::begin(face.index), std::end(face.index)) >= vertices; });
    if(dropped != 0)
        messages.warn("Mesh '" + std::string(mesh.name) + "': " + std::to_string(dropped) +
                      " faces name vertices that are not there and are dropped");
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
    for(Vertex &vertex : mesh.vertexList)
    {
        auto const at = mirror * Point<Real64, 3>(vertex.at[0], vertex.at[1], vertex.at[2]);
        for(int i = 0; i < 3; ++i)
            vertex.at[i] = static_cast<float>(at[i]);
    }
}

void read_mesh(Chunk chunk, char const (&name)[Chunk::NameSize], File &file)
{
    Mesh mesh;
    std::memcpy(mesh.name, name, sizeof name);
    chunk.readChildren([&](Chunk const &part) { return read_part(part, mesh, file); });
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
