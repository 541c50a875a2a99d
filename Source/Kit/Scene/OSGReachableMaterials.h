#pragma once

#include <unordered_set>

#include "OSGTolvaniteKitApi.h"

namespace OSG
{
class ChunkMaterial;
class Image;
class Material;
class Node;

/// The materials of a scene and their images, each once. Materials are those of geometries and of
/// material groups, and those that a switch material switches between. Images are those of the
/// materials.
class OSG_TOLVANITEKIT_API ReachableMaterials
{
  public:
    /// Adds what the core of one node refers to.
    void add(Node *node);

    std::unordered_set<Material *> const &getMaterials() const { return _materials; }
    std::unordered_set<Image *> const &getImages() const { return _images; }

  private:
    void addMaterial(Material *first);
    void addImages(ChunkMaterial const &material);
    void addImage(Image *image);

    std::unordered_set<Material *> _materials;
    std::unordered_set<Image *> _images;
};

/// What `root`, the nodes below it and the trees that they show refer to.
OSG_TOLVANITEKIT_API ReachableMaterials materials_of(Node *root);
} // namespace OSG
