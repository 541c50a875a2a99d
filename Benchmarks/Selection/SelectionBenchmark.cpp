// Exact and quick selection in one large geometry.

#include <benchmark/benchmark.h>

#include "OSGFastSelectionFunctor.h"
#include "OSGGeometry.h"
#include "OSGNode.h"
#include "OSGSelectionAction.h"
#include "OSGSimpleSelectionFunctor.h"
#include "OSGSystem.h"
#include "OSGTypedGeoProperties.h"
#include "Terrain.h"

namespace OSG::Bench
{
namespace
{
[[maybe_unused]] bool const up = startUp();

enum Indexing
{
    SingleIndex,
    MultiIndex
};

/// The terrain as polygons of three corners, as readers deliver it; kept for all cases.
Node *terrain_node(std::uint32_t side, Indexing indexing)
{
    static std::map<std::pair<std::uint32_t, Indexing>, UnrecordedRefPtr<Node>> nodes;
    UnrecordedRefPtr<Node> &node = nodes[{side, indexing}];
    if(node != nullptr)
        return node;
    Terrain const terrain(side);
    UInt32 const vertices = static_cast<UInt32>(terrain.positions.size() / 3);
    UInt32 const corners = static_cast<UInt32>(terrain.triangles.size());
    UnrecordedRefPtr<GeoPnt3fProperty> const positions(GeoPnt3fProperty::create());
    UnrecordedRefPtr<GeoVec3fProperty> const normals(GeoVec3fProperty::create());
    for(UInt32 i = 0; i < vertices; ++i)
        positions->editValues().emplace_back(&terrain.positions[3 * i]);
    normals->editValues().assign(indexing == SingleIndex ? vertices : 1, Vec3f(0, 0, 1));
    UnrecordedRefPtr<GeoUInt32Property> const index(GeoUInt32Property::create());
    index->editValues().assign(terrain.triangles.begin(), terrain.triangles.end());
    UnrecordedRefPtr<GeoUInt8Property> const types(GeoUInt8Property::create());
    types->editValues().assign(corners / 3, 9);
    UnrecordedRefPtr<GeoUInt32Property> const lengths(GeoUInt32Property::create());
    lengths->editValues().assign(corners / 3, 3);

    UnrecordedRefPtr<Geometry> const geometry(Geometry::create());
    geometry->setTypes(types);
    geometry->setLengths(lengths);
    geometry->setPositions(positions);
    geometry->setNormals(normals);
    geometry->setIndices(index);
    if(indexing == MultiIndex)
    {
        UnrecordedRefPtr<GeoUInt32Property> const own(GeoUInt32Property::create());
        own->editValues().assign(corners, 0);
        geometry->setIndex(own, Geometry::NormalsSlot);
    }
    node = Node::create();
    node->setCore(geometry);
    node->updateVolume();
    return node;
}

Frustum frustum_of(PickBox const &box)
{
    return Frustum({box.left(), box.bottom(), 1}, {box.right(), box.bottom(), 1},
                   {box.right(), box.top(), 1}, {box.left(), box.top(), 1},
                   {box.left(), box.bottom(), -1}, {box.right(), box.bottom(), -1},
                   {box.right(), box.top(), -1}, {box.left(), box.top(), -1});
}

void exact(benchmark::State &state, std::uint32_t side, Indexing indexing, float half)
{
    UnrecordedRefPtr<SelectionAction> const action(
        SelectionAction::create(frustum_of(PickBox{half})));
    SimpleSelectionFunctor const functor(action, SelectionFunctor::SelectTriangles,
                                         SelectionFunctor::NearPlane);
    Node *const root = terrain_node(side, indexing);
    for(auto _ : state)
        action->apply(root);
    if(functor.hits(SelectionFunctor::AllHits).empty())
        state.SkipWithError("nothing was hit");
}

BENCHMARK_CAPTURE(exact, pick_1M_single_index / ours, 707, SingleIndex, 0.004f);
BENCHMARK_CAPTURE(exact, pick_1M_multi_index / ours, 707, MultiIndex, 0.004f);
BENCHMARK_CAPTURE(exact, rectangle_1M / ours, 707, SingleIndex, 0.4f);
BENCHMARK_CAPTURE(exact, everything_1M / ours, 707, SingleIndex, 3.f);
BENCHMARK_CAPTURE(exact, pick_10k / ours, 71, SingleIndex, 0.04f);
} // namespace
} // namespace OSG::Bench
