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
    unsigned short texCoordsSet = 0; ///< those behind are zero
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

/// A node chunk in the order of the file.
struct FileNode
{
    Node *record; ///< null where the chunk says nothing of the node and nobody needs it so far
    Lib3dsNodeType type;
};

/// The name of a node that shows a mesh and has none in the file.
inline constexpr char UnnamedInstance[] = "$$$DUMMY";

Lib3dsMaterial new_material();

struct File : Lib3dsFile, MemObject
{
    Store<Lib3dsMaterial> materialStore;
    Store<Mesh> meshStore;
    Store<Node> nodeStore;
    List<Lib3dsMaterial *> materialList;
    List<Lib3dsMesh *> meshList;
    List<FileNode> nodeList;
    List<Node *> nodesByLevel; ///< parents before their children
    Map<std::string_view, Mesh *> meshesByName;

    File();
    /// Index of the first material of that name; -1 where there is none.
    int findMaterial(char const *name) const;
    void addMaterial(Lib3dsMaterial const &material);
    /// A material of which the file says nothing.
    void addEmptyMaterial();
    void addMesh(Mesh &&mesh);
    /// A mesh of which the file says nothing but its name.
    void addEmptyMesh(char const (&name)[64]);
    /// The record of a node chunk, made where there is none.
    Node &nodeAt(std::size_t place);
    /// Drops the record of the last node chunk, which was made last.
    void dropLastNode();
    /// Lets the public record point to the lists.
    void publish();

  private:
    void append(Lib3dsMaterial &material);

    Map<std::string_view, int> _materialsByName;
    Lib3dsMaterial *_emptyMaterial = nullptr;
    Mesh *_emptyMesh = nullptr; // the last one
};
} // namespace OSG::Lib3ds
