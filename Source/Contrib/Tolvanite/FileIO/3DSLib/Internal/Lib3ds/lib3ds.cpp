#include "lib3ds.h"

#include "Chunks.h"
#include "FaceNormals.h"
#include "OSGMatrix3DS.h"

using namespace OSG::Lib3ds;

namespace
{
File &file_of(Lib3dsFile *file) { return static_cast<File &>(*file); }

OSG::Matrix rotation_matrix(Quaternion4 const &q)
{
    float const square = q.x * q.x + q.y * q.y + q.z * q.z + q.w * q.w;
    float const s = square != 0.f ? 2.f / square : 1.f;
    OSG::Matrix m;
    m[0] = {1.f - s * (q.y * q.y + q.z * q.z), s * (q.x * q.y + q.w * q.z),
            s * (q.x * q.z - q.w * q.y), 0.f};
    m[1] = {s * (q.x * q.y - q.w * q.z), 1.f - s * (q.x * q.x + q.z * q.z),
            s * (q.y * q.z + q.w * q.x), 0.f};
    m[2] = {s * (q.x * q.z + q.w * q.y), s * (q.y * q.z - q.w * q.x),
            1.f - s * (q.x * q.x + q.y * q.y), 0.f};
    return m;
}

/// The node's matrix in the space of its parent.
OSG::Matrix own_matrix(Node const &node, float t)
{
    OSG::Matrix matrix;
    float position[3] = {0, 0, 0};
    node.position.evaluate(t, position);
    matrix.setTranslate(position[0], position[1], position[2]);
    if(node.base.type != LIB3DS_NODE_MESH_INSTANCE)
        return matrix;
    float scale[3] = {1, 1, 1};
    node.scale.evaluate(t, scale);
    OSG::Matrix scaling;
    scaling.setScale(scale[0], scale[1], scale[2]);
    return matrix * rotation_matrix(node.rotation.rotation(t)) * scaling;
}
} // namespace

Lib3dsFile *lib3ds_file_new() { return new File; }

void lib3ds_file_free(Lib3dsFile *file)
{
    if(file != nullptr)
        delete &file_of(file);
}

int lib3ds_file_read(Lib3dsFile *file, Lib3dsIo *io)
{
    try
    {
        Messages const messages(*io);
        OutermostChunk outermost(*io, messages);
        read_file(outermost, messages, file_of(file));
        return 1;
    }
    catch(DamagedFile const &)
    {
        return 0;
    }
}

void lib3ds_file_eval(Lib3dsFile *file, float t)
{
    for(Node *node : file_of(file).nodesByLevel)
    {
        OSG::Matrix world;
        if(node->base.parent != nullptr)
            world = OSG::as_matrix(node->base.parent->matrixNode);
        if(node->base.type != LIB3DS_NODE_AMBIENT_COLOR)
            world.mult(own_matrix(*node, t));
        for(int c = 0; c < 4; ++c)
        {
            for(int r = 0; r < 4; ++r)
                node->base.matrixNode[c][r] = world[c][r];
        }
    }
}

Lib3dsMesh *lib3ds_file_mesh_for_node(Lib3dsFile *file, Lib3dsNode *node)
{
    if(node->type != LIB3DS_NODE_MESH_INSTANCE)
        return nullptr;
    auto const &meshes = file_of(file).meshesByName;
    auto const found = meshes.find(node->name);
    return found != meshes.end() ? found->second : nullptr;
}

void lib3ds_mesh_calculate_face_normals(Lib3dsMesh *mesh, float (*faceNormals)[3])
{
    face_normals(*mesh, faceNormals);
}
