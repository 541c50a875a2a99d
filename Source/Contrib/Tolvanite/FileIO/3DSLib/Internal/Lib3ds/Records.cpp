#include "Records.h"

#include <algorithm>
#include <cstring>

namespace OSG::Lib3ds
{
namespace
{
void set_identity(float (&matrix)[4][4])
{
    for(int c = 0; c < 4; ++c)
    {
        for(int r = 0; r < 4; ++r)
            matrix[c][r] = c == r ? 1.f : 0.f;
    }
}

/// Null for an empty list, so that nobody reads from it.
template <class Elements>
auto *first_of(Elements &elements)
{
    return elements.empty() ? nullptr : elements.data();
}
} // namespace

Mesh::Mesh()
    : Lib3dsMesh{}
{
    set_identity(matrix);
}

void Mesh::publish()
{
    vertices = nvertices != 0 ? &vertexRoom[0].at : nullptr;
    texcos = hasTexCoords && nvertices != 0 ? &texCoordRoom[0].at : nullptr;
    faces = nfaces != 0 ? faceRoom.data() : nullptr;
}

Node::Node(Lib3dsNodeType type, unsigned short number)
    : Lib3dsMeshInstanceNode{}
{
    base.type = type;
    base.node_id = number;
    set_identity(base.matrixNode);
    if(type == LIB3DS_NODE_MESH_INSTANCE)
        std::strcpy(base.name, "$$$DUMMY");
    else if(type == LIB3DS_NODE_AMBIENT_COLOR)
        std::strcpy(base.name, "$AMBIENT$");
}

Lib3dsMaterial new_material()
{
    Lib3dsMaterial material = {};
    std::fill_n(material.ambient, 3, 0.588235f);
    std::fill_n(material.diffuse, 3, 0.588235f);
    std::fill_n(material.specular, 3, 0.898039f);
    material.shininess = 0.1f;
    for(MapSlot const &slot : MapSlots)
        (material.*slot.map).flags = LIB3DS_TEXTURE_NO_TILE;
    return material;
}

File::File()
    : Lib3dsFile{}
{
}

int File::findMaterial(char const *name) const
{
    auto const found = _materialsByName.find(name);
    return found != _materialsByName.end() ? found->second : -1;
}

Lib3dsMaterial &File::addMaterial(Lib3dsMaterial const &material)
{
    int const index = static_cast<int>(materialStore.size());
    Lib3dsMaterial &added = materialStore.emplace_back(material);
    _materialsByName.emplace(added.name, index);
    return added;
}

void File::addMesh(Mesh &&mesh)
{
    Mesh &added = meshStore.emplace_back(std::move(mesh));
    added.publish();
    meshesByName.emplace(added.name, &added);
}

void File::publish()
{
    for(Lib3dsMaterial &material : materialStore)
        materialList.push_back(&material);
    for(Mesh &mesh : meshStore)
        meshList.push_back(&mesh);
    nmaterials = static_cast<int>(materialList.size());
    materials = first_of(materialList);
    nmeshes = static_cast<int>(meshList.size());
    meshes = first_of(meshList);
}
} // namespace OSG::Lib3ds
