#include "OSGReachableMaterials.h"

#include <vector>

#include "OSGChunkMaterial.h"
#include "OSGCoreKind.h"
#include "OSGGeometry.h"
#include "OSGImage.h"
#include "OSGMaterialChunkOverrideGroup.h"
#include "OSGMaterialGroup.h"
#include "OSGReachableNodes.h"
#include "OSGSimpleTexturedMaterial.h"
#include "OSGSwitchMaterial.h"
#include "OSGTextureObjChunk.h"

namespace OSG
{
void ReachableMaterials::add(Node *node)
{
    if(auto const *const geometry = core_as<Geometry>(node))
        addMaterial(geometry->getMaterial());
    else if(auto const *const group = core_as<MaterialGroup>(node))
        addMaterial(group->getMaterial());
    else if(auto const *const override = core_as<MaterialChunkOverrideGroup>(node))
        addMaterial(override->getMaterial());
}

// Switch materials may refer to each other in a circle, which the set of materials ends.
void ReachableMaterials::addMaterial(Material *first)
{
    std::vector<Material *> open{first};
    while(!open.empty())
    {
        Material *const material = open.back();
        open.pop_back();
        if(material == nullptr || !_materials.insert(material).second)
            continue;
        if(auto *const textured = dynamic_cast<SimpleTexturedMaterial *>(material))
            addImage(textured->getImage());
        else if(auto *const choice = dynamic_cast<SwitchMaterial *>(material))
            open.insert(open.end(), choice->getMFMaterials()->begin(),
                        choice->getMFMaterials()->end());
        else if(auto *const chunks = dynamic_cast<ChunkMaterial *>(material))
            addImages(*chunks);
    }
}

void ReachableMaterials::addImages(ChunkMaterial const &material)
{
    for(StateChunk *chunk : *material.getMFChunks())
    {
        if(auto *const texture = dynamic_cast<TextureObjChunk *>(chunk))
            addImage(texture->getImage());
    }
}

void ReachableMaterials::addImage(Image *image)
{
    if(image != nullptr)
        _images.insert(image);
}

ReachableMaterials materials_of(Node *root)
{
    ReachableMaterials materials;
    if(root != nullptr)
        for_each_reachable_node(root, [&materials](Node *node) { materials.add(node); });
    return materials;
}
} // namespace OSG
