#pragma once

/// \file
/// Scenes read from 3DS files, in forms that tests can compare.

#include <sstream>
#include <string>
#include <vector>

#include "LogCapture.h"
#include "OSGChunkMaterial.h"
#include "OSGGeometryIterators.h"
#include "OSGGroup.h"
#include "OSGMaterialChunk.h"
#include "OSGName.h"
#include "OSGNode.h"
#include "OSGSceneFileHandler.h"

namespace OSG::Test
{
struct Scene3DS
{
    UnrecordedRefPtr<Node> root;
    std::vector<std::string> log; ///< with levels: "2: text\n"
    bool isComplete = false;

    /// All geometries in the order of the tree.
    std::vector<Geometry *> geometries() const
    {
        std::vector<Geometry *> found;
        collect(root, found);
        return found;
    }
    /// The nodes of geometries(), with their names.
    std::string describe() const { return root != nullptr ? describe(root) : "null"; }

  private:
    static void collect(Node *node, std::vector<Geometry *> &found)
    {
        if(node == nullptr)
            return;
        if(auto *const geometry = dynamic_cast<Geometry *>(node->getCore()))
            found.push_back(geometry);
        for(UInt32 i = 0; i < node->getNChildren(); ++i)
            collect(node->getChild(i), found);
    }
    // A group as [...] with its name before it, a geometry as its name and its number of triangles.
    static std::string describe(Node *node)
    {
        char const *const name = getName(node);
        std::string text = name != nullptr ? name : "";
        if(auto *const geometry = dynamic_cast<Geometry *>(node->getCore()))
            return text + std::to_string(geometry->getLengths()->size());
        text += "[";
        for(UInt32 i = 0; i < node->getNChildren(); ++i)
            text += (i != 0 ? " " : "") + describe(node->getChild(i));
        return text + "]";
    }
};

inline Scene3DS read_3ds(std::string const &bytes)
{
    LogCapture const log;
    std::istringstream in(bytes);
    Scene3DS scene;
    scene.root = UnrecordedRefPtr<Node>(SceneFileHandlerBase::the()->read(in, "3ds"));
    scene.isComplete = SceneFileHandlerBase::the()->wasLastReadComplete();
    for(auto const &message : log.messages())
        scene.log.push_back(std::to_string(message.level) + ": " + message.text);
    return scene;
}

inline std::vector<Pnt3f> positions_of(Geometry const &geometry)
{
    std::vector<Pnt3f> points;
    for(UInt32 i = 0; i < geometry.getPositions()->size(); ++i)
    {
        Real32 numbers[3];
        geometry.getPositions()->getValue(numbers, i);
        points.emplace_back(numbers[0], numbers[1], numbers[2]);
    }
    return points;
}

inline Vec3f normal_of(Geometry const &geometry, UInt32 vertex)
{
    Real32 numbers[3];
    geometry.getNormals()->getValue(numbers, vertex);
    return Vec3f(numbers[0], numbers[1], numbers[2]);
}

inline ChunkMaterial *chunks_of(Geometry const &geometry)
{
    return dynamic_cast<ChunkMaterial *>(geometry.getMaterial());
}

template <class Chunk>
Chunk *chunk_of(ChunkMaterial const &material)
{
    return dynamic_cast<Chunk *>(material.find(Chunk::getClassType()));
}

std::string const CannotRead = "2: Couldn't read from stream!\n";
} // namespace OSG::Test
