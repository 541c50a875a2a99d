#include "OSGSceneAccount.h"

#include <unordered_map>
#include <unordered_set>

#include "OSGGeometry.h"
#include "OSGGeometryIterators.h"
#include "OSGReachableMaterials.h"
#include "OSGReachableNodes.h"

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
        _materials.add(node);
    }

    SceneAccount finish()
    {
        _account.geometries = _geometries.size();
        _account.materials = _materials.getMaterials().size();
        _account.images = _materials.getImages().size();
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
        }
        _account.triangles += parts.triangles;
        _account.lines += parts.lines;
        _account.points += parts.points;
    }

    SceneAccount _account;
    std::unordered_map<Geometry *, Parts> _geometries;
    std::unordered_set<GeoVectorProperty *> _positions;
    ReachableMaterials _materials;
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
