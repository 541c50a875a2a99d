// The same picks with OpenSceneGraph's polytope intersector over triangles of one index.

#ifdef BENCHMARK_WITH_OPENSCENEGRAPH
#include <map>

#include <benchmark/benchmark.h>
#include <osg/Geode>
#include <osg/Geometry>
#include <osgUtil/IntersectionVisitor>
#include <osgUtil/PolytopeIntersector>

#include "Terrain.h"

namespace OSG::Bench
{
namespace
{
osg::Node *terrain_node(std::uint32_t side)
{
    static std::map<std::uint32_t, osg::ref_ptr<osg::Geode>> nodes;
    osg::ref_ptr<osg::Geode> &node = nodes[side];
    if(node.valid())
        return node;
    Terrain const terrain(side);
    osg::ref_ptr<osg::Vec3Array> const positions = new osg::Vec3Array;
    for(std::size_t i = 0; i < terrain.positions.size(); i += 3)
        positions->push_back(
            osg::Vec3(terrain.positions[i], terrain.positions[i + 1], terrain.positions[i + 2]));
    osg::ref_ptr<osg::Geometry> const geometry = new osg::Geometry;
    geometry->setVertexArray(positions);
    geometry->addPrimitiveSet(new osg::DrawElementsUInt(GL_TRIANGLES, terrain.triangles.begin(),
                                                        terrain.triangles.end()));
    node = new osg::Geode;
    node->addDrawable(geometry);
    node->getBound();
    return node;
}

void exact(benchmark::State &state, std::uint32_t side, float half)
{
    PickBox const box{half};
    osg::Polytope polytope;
    polytope.add(osg::Plane(0, 0, -1, 1));
    polytope.add(osg::Plane(0, 0, 1, 1));
    polytope.add(osg::Plane(1, 0, 0, -box.left()));
    polytope.add(osg::Plane(-1, 0, 0, box.right()));
    polytope.add(osg::Plane(0, -1, 0, box.top()));
    polytope.add(osg::Plane(0, 1, 0, -box.bottom()));
    osg::Node *const root = terrain_node(side);
    bool hit = false;
    for(auto _ : state)
    {
        osg::ref_ptr<osgUtil::PolytopeIntersector> const intersector =
            new osgUtil::PolytopeIntersector(polytope);
        intersector->setReferencePlane(osg::Plane(0, 0, -1, 1));
        osgUtil::IntersectionVisitor visitor(intersector);
        root->accept(visitor);
        hit = intersector->containsIntersections();
    }
    if(!hit)
        state.SkipWithError("nothing was hit");
}

BENCHMARK_CAPTURE(exact, pick_1M_single_index / OpenSceneGraph, 707, 0.004f);
BENCHMARK_CAPTURE(exact, pick_1M_multi_index / OpenSceneGraph, 707, 0.004f);
BENCHMARK_CAPTURE(exact, rectangle_1M / OpenSceneGraph, 707, 0.4f);
BENCHMARK_CAPTURE(exact, everything_1M / OpenSceneGraph, 707, 3.f);
BENCHMARK_CAPTURE(exact, pick_10k / OpenSceneGraph, 71, 0.04f);
} // namespace
} // namespace OSG::Bench
#endif
