#pragma once

/// \file
/// The records of lib3ds.h with the memory that they point to.

#include <deque>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "OSGMemArray.h"
#include "OSGMemManager.h"
#include "Track.h"
#include "lib3ds.h"

namespace OSG::Lib3ds
{
template <class T>
using List = std::vector<T, MemAllocator<T>>;
template <class Key, class Value>
using Map = std::unordered_map<Key, Value, std::hash<Key>, std::equal_to<>,
                               MemAllocator<std::pair<Key const, Value>>>;
template <class T>
using Store = std::deque<T, MemAllocator<T>>; ///< elements keep their places

struct Vertex
{
    float at[3];
};
struct TexCoord
{
    float at[2];
};

struct Mesh : Lib3dsMesh
{
    MemArray<Vertex> vertexRoom;     ///< for `nvertices` or more
    MemArray<TexCoord> texCoordRoom; ///< the same, where the mesh has any
    MemArray<Lib3dsFace> faceRoom;   ///< for `nfaces` or more
    bool hasTexCoords = false;
    unsigned short largestIndex = 0; ///< of the faces

    Mesh();
    /// Lets the public record point to the arrays.
    void publish();
};

struct Node : Lib3dsMeshInstanceNode
{
    bool hasHeader = false;
    unsigned short parentId = 0;
    Track position;
    Track rotation;
    Track scale;

    /// `number` is the running number of the node in the file.
    Node(Lib3dsNodeType type, unsigned short number);
};

/// The node that a public record is a part of.
inline Node &node_of(Lib3dsNode *record)
{
    return static_cast<Node &>(*reinterpret_cast<Lib3dsMeshInstanceNode *>(record));
}

/// A chunk of a material that describes a map, and the map.
struct MapSlot
{
    unsigned kind;
    Lib3dsTextureMap Lib3dsMaterial::*map;
};
inline constexpr MapSlot MapSlots[] = {
    {0xA200, &Lib3dsMaterial::texture1_map},   {0xA33E, &Lib3dsMaterial::texture1_mask},
    {0xA33A, &Lib3dsMaterial::texture2_map},   {0xA340, &Lib3dsMaterial::texture2_mask},
    {0xA210, &Lib3dsMaterial::opacity_map},    {0xA342, &Lib3dsMaterial::opacity_mask},
    {0xA230, &Lib3dsMaterial::bump_map},       {0xA344, &Lib3dsMaterial::bump_mask},
    {0xA204, &Lib3dsMaterial::specular_map},   {0xA348, &Lib3dsMaterial::specular_mask},
    {0xA33C, &Lib3dsMaterial::shininess_map},  {0xA346, &Lib3dsMaterial::shininess_mask},
    {0xA33D, &Lib3dsMaterial::self_illum_map}, {0xA34A, &Lib3dsMaterial::self_illum_mask},
    {0xA220, &Lib3dsMaterial::reflection_map}, {0xA34C, &Lib3dsMaterial::reflection_mask},
};

Lib3dsMaterial new_material();

struct File : Lib3dsFile, MemObject
{
    Store<Lib3dsMaterial> materialStore;
    Store<Mesh> meshStore;
    Store<Node> nodeStore; ///< in the order of the file
    List<Lib3dsMaterial *> materialList;
    List<Lib3dsMesh *> meshList;
    List<Node *> nodesByLevel; ///< parents before their children
    Map<std::string_view, Mesh *> meshesByName;

    File();
    /// Index of the first material of that name; -1 where there is none.
    int findMaterial(char const *name) const;
    Lib3dsMaterial &addMaterial(Lib3dsMaterial const &material);
    void addMesh(Mesh &&mesh);
    /// Lets the public record point to the lists.
    void publish();

  private:
    Map<std::string_view, int> _materialsByName;
};
} // namespace OSG::Lib3ds
