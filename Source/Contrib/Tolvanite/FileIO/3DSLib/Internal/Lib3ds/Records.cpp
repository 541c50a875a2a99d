#include "Records.h"

#include <algorithm>
#include <cstring>
#include <utility>

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
        std::memcpy(base.name, UnnamedInstance, sizeof UnnamedInstance);
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
    for(Lib3dsTextureMap *map :
        {&material.texture1_map, &material.texture2_map, &material.bump_map})
        map->flags = 0x10; // does not tile
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

void File::addMaterial(Lib3dsMaterial const &material)
{
    append(materialStore.emplace_back(material));
}

void File::addEmptyMaterial()
{
    if(_emptyMaterial == nullptr)
        _emptyMaterial = &materialStore.emplace_back(new_material());
    append(*_emptyMaterial);
}

void File::append(Lib3dsMaterial &material)
{
    if(findMaterial(material.name) < 0)
        _materialsByName.emplace(material.name, static_cast<int>(materialList.size()));
    materialList.push_back(&material);
}

void File::addMesh(Mesh &&mesh)
{
    Mesh &added = meshStore.emplace_back(std::move(mesh));
    added.publish();
    meshesByName.emplace(added.name, &added);
    meshList.push_back(&added);
}

void File::addEmptyMesh(char const (&name)[64])
{
    if(_emptyMesh == nullptr || std::strcmp(_emptyMesh->name, name) != 0)
    {
        Mesh mesh;
        std::memcpy(mesh.name, name, sizeof name);
        addMesh(std::move(mesh));
        _emptyMesh = &meshStore.back();
        return;
    }
    meshList.push_back(_emptyMesh);
}

Node &File::nodeAt(std::size_t place)
{
    FileNode &node = nodeList[place];
    if(node.record == nullptr)
        node.record = &nodeStore.emplace_back(node.type, static_cast<unsigned short>(place));
    return *node.record;
}

void File::dropLastNode()
{
    nodeStore.pop_back();
    nodeList.back().record = nullptr;
}

void File::publish()
{
    nmaterials = static_cast<int>(materialList.size());
    materials = first_of(materialList);
    nmeshes = static_cast<int>(meshList.size());
    meshes = first_of(meshList);
}
} // namespace OSG::Lib3ds
