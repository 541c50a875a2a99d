#include "PeerQueries.h"

#ifdef BENCHMARK_WITH_OPENSCENEGRAPH

#include <osgUtil/IntersectionVisitor>
#include <osgUtil/PolytopeIntersector>

#include "PeerScene.h"

namespace OSG::Bench
{
struct PeerQueries::Parts
{
    struct Query
    {
        osg::Polytope polytope;
        int plane;
        bool hasHit;
    };

    bool ask(Query const &query)
    {
        osg::ref_ptr<osgUtil::PolytopeIntersector> const intersector =
            new osgUtil::PolytopeIntersector(osgUtil::Intersector::MODEL, query.polytope);
        intersector->setPrimitiveMask(osgUtil::PolytopeIntersector::TRIANGLE_PRIMITIVES);
        intersector->setReferencePlane(query.polytope.getPlaneList()[query.plane]);
        visitor.reset();
        visitor.setIntersector(intersector);
        scene.root->accept(visitor);
        return intersector->containsIntersections();
    }

    PeerScene scene;
    std::vector<Query> queries;
    osgUtil::IntersectionVisitor visitor;
};

PeerQueries::PeerQueries(UInt32 triangles, bool useKdTree)
    : _parts(std::make_unique<Parts>())
{
    _parts->scene = peer_scene_of(building_of(triangles));
    if(useKdTree)
        want_trees(_parts->scene);
    _parts->visitor.setUseKdTreeWhenAvailable(useKdTree);
    for(BoxQuery const &query : queries_of_frame(triangles))
        _parts->queries.push_back(
            {polytope_of(query.box), static_cast<int>(query.plane), query.hasHit});
}

PeerQueries::~PeerQueries() = default;

UInt32 PeerQueries::frame()
{
    UInt32 hits = 0;
    for(Parts::Query const &query : _parts->queries)
        hits += _parts->ask(query) ? 1 : 0;
    return hits;
}

bool PeerQueries::agrees()
{
    bool result = true;
    for(Parts::Query const &query : _parts->queries)
        result = result && _parts->ask(query) == query.hasHit;
    return result;
}
} // namespace OSG::Bench

#endif
