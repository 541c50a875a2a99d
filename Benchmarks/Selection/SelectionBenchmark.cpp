// Selects by a box in the middle of a terrain. Both sides have the same triangles in one geometry
// and the same six planes. Neither has an index over the triangles.
//
// "nearest": both test every triangle. We keep the nearest and the farthest place in the box. The
// peer keeps a place for each triangle in the box, nearest first; it has no mode that keeps fewer.
// "whether": both stop at the first triangle inside.

#include <sstream>

#include <benchmark/benchmark.h>

#include "OSGFastSelectionFunctor.h"
#include "OSGGeometry.h"
#include "OSGGeometryIterators.h"
#include "OSGNode.h"
#include "OSGNodeWalker.h"
#include "OSGSceneFileHandler.h"
#include "OSGSelectionAction.h"
#include "OSGSimpleSelectionFunctor.h"
#include "SceneGraph.h"
#include "TerrainObj.h"

#ifdef BENCHMARK_WITH_OPENSCENEGRAPH
#include <osg/Geode>
#include <osg/Geometry>
#include <osgUtil/IntersectionVisitor>
#include <osgUtil/PolytopeIntersector>
#endif

namespace OSG::Bench
{
namespace
{
// A box in the middle of the 177 by 177 units, seven units wide, from below the ground to above the
// hills.
Frustum middle()
{
    Pnt3f const corners[8] = {{85, -1, -85}, {92, -1, -85}, {92, 12, -85}, {85, 12, -85},
                              {85, -1, -92}, {92, -1, -92}, {92, 12, -92}, {85, 12, -92}};
    return Frustum(corners);
}

// 28 by 28 cells of a quarter unit, two triangles each.
constexpr std::size_t TrianglesWhollyInside = 28 * 28 * 2;

Node *terrain()
{
    static UnrecordedRefPtr<Node> const scene = []
    {
        bring_up();
        std::istringstream in(terrain_obj(1000000, TerrainCorners::Positions));
        UnrecordedRefPtr<Node> read(SceneFileHandlerBase::the()->read(in, "obj"));
        read->updateVolume();
        return read;
    }();
    return scene;
}

template <class Functor, class... Settings>
void select_by_us(benchmark::State &state, Settings... settings)
{
    Node *const root = terrain();
    UnrecordedRefPtr<SelectionAction> const action(SelectionAction::create());
    Functor functor(action, settings...);
    for([[maybe_unused]] auto _ : state)
    {
        action->reinitialize();
        action->pushFrustum(middle());
        action->apply(root);
        benchmark::DoNotOptimize(functor.hits(SelectionFunctor::FrontHits).size());
    }
    if(functor.hits(SelectionFunctor::FrontHits).size() != 1)
        state.SkipWithError("the geometry is hit");
}

void nearest_by_us(benchmark::State &state)
{
    select_by_us<SimpleSelectionFunctor>(state, SelectionFunctor::SelectTriangles,
                                         SelectionFunctor::NearPlane);
}

void whether_by_us(benchmark::State &state) { select_by_us<FastSelectionFunctor>(state); }

#ifdef BENCHMARK_WITH_OPENSCENEGRAPH
/// Appends the triangles of our geometries to a geometry of the peer.
class PeerBuilder
{
  public:
    PeerBuilder()
        : _geometry(new osg::Geometry)
        , _positions(new osg::Vec3Array)
        , _index(new osg::DrawElementsUInt(GL_TRIANGLES))
    {
    }

    bool enter(Node *node)
    {
        auto const *const source = dynamic_cast<Geometry *>(node->getCore());
        if(source == nullptr)
            return true;
        VectorArray const positions = source->getPositions()->getArray();
        unsigned const first = static_cast<unsigned>(_positions->size());
        for(UInt32 i = 0; i < positions.size(); ++i)
            _positions->push_back(osg::Vec3(positions[i][0], positions[i][1], positions[i][2]));
        auto const end = source->endTriangles();
        for(auto it = source->beginTriangles(); it != end; ++it)
        {
            for(int corner = 0; corner < 3; ++corner)
                _index->push_back(first + it.getPositionIndex(corner));
        }
        return true;
    }
    void leave(Node *) {}

    osg::ref_ptr<osg::Node> finish()
    {
        _geometry->setVertexArray(_positions);
        _geometry->addPrimitiveSet(_index);
        osg::ref_ptr<osg::Geode> const geode = new osg::Geode;
        geode->addDrawable(_geometry);
        geode->getBound();
        return geode;
    }

  private:
    osg::ref_ptr<osg::Geometry> _geometry;
    osg::ref_ptr<osg::Vec3Array> _positions;
    osg::ref_ptr<osg::DrawElementsUInt> _index;
};

osg::Node *peer_terrain()
{
    static osg::ref_ptr<osg::Node> const scene = []
    {
        PeerBuilder builder;
        walk_children(terrain(), builder);
        return builder.finish();
    }();
    return scene.get();
}

osg::Polytope same_planes()
{
    osg::Polytope polytope;
    FrustumVolume const volume = middle().Volume();
    for(Plane const &plane : volume.getPlanes())
    {
        Vec3f const normal = plane.getNormal();
        polytope.add(osg::Plane(normal[0], normal[1], normal[2], -plane.getDistanceFromOrigin()));
    }
    return polytope;
}

void select_by_peer(benchmark::State &state, osgUtil::Intersector::IntersectionLimit limit,
                    std::size_t atLeast)
{
    osg::Node *const root = peer_terrain();
    osg::Polytope const polytope = same_planes();
    std::size_t found = 0;
    for([[maybe_unused]] auto _ : state)
    {
        osg::ref_ptr<osgUtil::PolytopeIntersector> const intersector =
            new osgUtil::PolytopeIntersector(osgUtil::Intersector::MODEL, polytope);
        intersector->setIntersectionLimit(limit);
        intersector->setPrimitiveMask(osgUtil::PolytopeIntersector::TRIANGLE_PRIMITIVES);
        intersector->setReferencePlane(polytope.getPlaneList().front());
        osgUtil::IntersectionVisitor visitor(intersector.get());
        visitor.setUseKdTreeWhenAvailable(false);
        root->accept(visitor);
        benchmark::DoNotOptimize(intersector->getIntersections().size());
        found = intersector->getIntersections().size();
    }
    if(found < atLeast)
        state.SkipWithError("the triangles in the box are found");
}

void nearest_by_peer(benchmark::State &state)
{
    select_by_peer(state, osgUtil::Intersector::NO_LIMIT, TrianglesWhollyInside);
}

void whether_by_peer(benchmark::State &state)
{
    select_by_peer(state, osgUtil::Intersector::LIMIT_ONE_PER_DRAWABLE, 1);
}

BENCHMARK(nearest_by_peer)
    ->Name("select nearest of 1,000,000 triangles/openscenegraph")
    ->Unit(benchmark::kMillisecond);
BENCHMARK(whether_by_peer)
    ->Name("select whether any of 1,000,000 triangles/openscenegraph")
    ->Unit(benchmark::kMillisecond);
#endif

BENCHMARK(nearest_by_us)
    ->Name("select nearest of 1,000,000 triangles/ours")
    ->Unit(benchmark::kMillisecond);
BENCHMARK(whether_by_us)
    ->Name("select whether any of 1,000,000 triangles/ours")
    ->Unit(benchmark::kMillisecond);
} // namespace
} // namespace OSG::Bench
