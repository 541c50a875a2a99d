#include "OSGSceneAccount.h"

#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "OSGChunkMaterial.h"
#include "OSGGeometry.h"
#include "OSGGeometryIterators.h"
#include "OSGImage.h"
#include "OSGMaterialChunkOverrideGroup.h"
#include "OSGMaterialGroup.h"
#include "OSGReachableNodes.h"
#include "OSGSimpleTexturedMaterial.h"
#include "OSGSwitchMaterial.h"
#include "OSGTextureObjChunk.h"

namespace OSG
{
namespace
{
struct Parts
{
    UInt64 triangles = 0;
    UInt64 lines = 0;
    UInt64 points = 0;
};

template <class Iterator>
UInt64 delivered(Iterator it, Iterator const &end)
{
    UInt64 count = 0;
    for(; it != end; ++it)
        ++count;
    return count;
}

UInt64 points_of(Geometry const &geometry)
{
    UInt64 count = 0;
    PrimitiveIterator const end = geometry.endPrimitives();
    for(PrimitiveIterator it = geometry.beginPrimitives(); it != end; ++it)
    {
        UInt32 const vertices = it.getType() == PointsPrimitive ? it.getAvailable() : 0;
        for(UInt32 i = 0; i < vertices; ++i)
            count += it.hasPosition(static_cast<Int32>(i)) ? 1 : 0;
    }
    return count;
}

/// Counts what nodes refer to. It is given each node once.
class Counter
{
  public:
    void count(Node *node)
    {
        ++_account.nodes;
        countCore(node->getCore());
    }

    SceneAccount finish()
    {
        _account.geometries = _geometries.size();
        _account.materials = _materials.size();
        _account.images = _images.size();
        return std::move(_account);
    }

  private:
    void countCore(NodeCore *core)
    {
        if(core == nullptr)
            return;
        ++_account.cores[core->getType().getCName()];
        if(auto *const geometry = dynamic_cast<Geometry *>(core))
            countGeometry(*geometry);
        else if(auto *const group = dynamic_cast<MaterialGroup *>(core))
            countMaterials(group->getMaterial());
        else if(auto *const override = dynamic_cast<MaterialChunkOverrideGroup *>(core))
            countMaterials(override->getMaterial());
    }

    void countGeometry(Geometry &geometry)
    {
        auto const [entry, isNew] = _geometries.try_emplace(&geometry);
        Parts &parts = entry->second;
        if(isNew)
        {
            parts.triangles = delivered(geometry.beginTriangles(), geometry.endTriangles());
            parts.lines = delivered(geometry.beginLines(), geometry.endLines());
            parts.points = points_of(geometry);
            GeoVectorProperty *const positions = geometry.getPositions();
            if(positions != nullptr && _positions.insert(positions).second)
                _account.vertices += positions->size();
            countMaterials(geometry.getMaterial());
        }
        _account.triangles += parts.triangles;
        _account.lines += parts.lines;
        _account.points += parts.points;
    }

    // Also counts the materials that a switch material switches between. They may refer to each
    // other in a circle, which the set of counted materials ends.
    void countMaterials(Material *first)
    {
        std::vector<Material *> open{first};
        while(!open.empty())
        {
            Material *const material = open.back();
            open.pop_back();
            if(material == nullptr || !_materials.insert(material).second)
                continue;
            if(auto *const textured = dynamic_cast<SimpleTexturedMaterial *>(material))
                countImage(textured->getImage());
            else if(auto *const choice = dynamic_cast<SwitchMaterial *>(material))
                open.insert(open.end(), choice->getMFMaterials()->begin(),
                            choice->getMFMaterials()->end());
            else if(auto *const chunks = dynamic_cast<ChunkMaterial *>(material))
                countImages(*chunks);
        }
    }

    void countImages(ChunkMaterial const &material)
    {
        for(StateChunk *chunk : *material.getMFChunks())
        {
            if(auto *const texture = dynamic_cast<TextureObjChunk *>(chunk))
                countImage(texture->getImage());
        }
    }

    void countImage(Image *image)
    {
        if(image != nullptr)
            _images.insert(image);
    }

    SceneAccount _account;
    std::unordered_map<Geometry *, Parts> _geometries;
    std::unordered_set<GeoVectorProperty *> _positions;
    std::unordered_set<Material *> _materials;
    std::unordered_set<Image *> _images;
};
} // namespace

SceneAccount account_of(Node *root)
{
    Counter counter;
    for_each_reachable_node(root, [&counter](Node *node) { counter.count(node); });
    SceneAccount account = counter.finish();
    if(root != nullptr)
    {
        root->updateVolume();
        account.bounds = root->getVolume();
    }
    return account;
}
} // namespace OSG
