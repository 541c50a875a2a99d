// OpenSceneGraph's intersectors over scenes of the same nodes, triangles, volumes and rays. The
// polytope intersector keeps a place for each triangle in the volume; it has no mode that keeps
// fewer and still looks for places. One visitor serves all queries of a contender.

#ifdef BENCHMARK_WITH_OPENSCENEGRAPH
#include <algorithm>
#include <map>

#include <osgUtil/IntersectionVisitor>
#include <osgUtil/LineSegmentIntersector>
#include <osgUtil/PolytopeIntersector>

#include "Contenders.h"
#include "PeerScene.h"

namespace OSG::Bench
{
namespace
{
PeerScene &peer_scene(SceneName name)
{
    static std::map<SceneName, PeerScene> scenes;
    PeerScene &result = scenes[name];
    if(result.root == nullptr)
        result = peer_scene_of(scene(name));
    return result;
}

class PeerVolumes final : public VolumeContender
{
  public:
    PeerVolumes(SceneName name, VolumeQuery query, Mode mode, bool useKdTree)
        : _scene(peer_scene(name))
        , _limit(mode == Mode::Exact ? osgUtil::Intersector::NO_LIMIT
                                     : osgUtil::Intersector::LIMIT_ONE_PER_DRAWABLE)
    {
        if(useKdTree)
            want_trees(_scene);
        _visitor.setUseKdTreeWhenAvailable(useKdTree);
        for(Frustum const &frustum : volumes(name, query))
            _queries.push_back(polytope_of(frustum));
    }

    Real64 ask(std::size_t query) override
    {
        osg::Polytope const &polytope = _queries[query];
        _intersector = new osgUtil::PolytopeIntersector(osgUtil::Intersector::MODEL, polytope);
        _intersector->setIntersectionLimit(_limit);
        _intersector->setPrimitiveMask(osgUtil::PolytopeIntersector::TRIANGLE_PRIMITIVES);
        _intersector->setReferencePlane(polytope.getPlaneList().front());
        _visitor.reset();
        _visitor.setIntersector(_intersector);
        _scene.root->accept(_visitor);
        Real64 sum = 0;
        for(auto const &hit : _intersector->getIntersections())
            sum += hit.distance + hit.localIntersectionPoint[0] + hit.primitiveIndex;
        return sum;
    }

    std::vector<UInt32> shapes() override
    {
        std::vector<UInt32> result;
        for(auto const &hit : _intersector->getIntersections())
            result.push_back(_scene.numbers.at(hit.drawable));
        std::sort(result.begin(), result.end());
        result.erase(std::unique(result.begin(), result.end()), result.end());
        return result;
    }

  private:
    PeerScene &_scene;
    osgUtil::Intersector::IntersectionLimit _limit;
    std::vector<osg::Polytope> _queries;
    osgUtil::IntersectionVisitor _visitor;
    osg::ref_ptr<osgUtil::PolytopeIntersector> _intersector;
};

class PeerRays final : public RayContender
{
  public:
    PeerRays(SceneName name, RayQuery query)
        : _scene(peer_scene(name))
        , _length(ray_length(name))
    {
        want_trees(_scene);
        for(Line const &line : rays(name, query))
        {
            Pnt3f const from = line.getPosition();
            Pnt3f const to = line.getPoint(_length);
            _queries.emplace_back(osg::Vec3d(from[0], from[1], from[2]),
                                  osg::Vec3d(to[0], to[1], to[2]));
        }
    }

    Real64 ask(std::size_t query) override
    {
        auto const &[from, to] = _queries[query];
        osg::ref_ptr<osgUtil::LineSegmentIntersector> const intersector =
            new osgUtil::LineSegmentIntersector(osgUtil::Intersector::MODEL, from, to);
        intersector->setIntersectionLimit(osgUtil::Intersector::LIMIT_NEAREST);
        _visitor.reset();
        _visitor.setIntersector(intersector);
        _scene.root->accept(_visitor);
        auto const &hits = intersector->getIntersections();
        return hits.empty() ? -1 : hits.begin()->ratio * (to - from).length();
    }

  private:
    PeerScene &_scene;
    Real32 _length;
    std::vector<std::pair<osg::Vec3d, osg::Vec3d>> _queries;
    osgUtil::IntersectionVisitor _visitor;
};
} // namespace

VolumeContenderPtr peer_volumes(SceneName name, VolumeQuery query, Mode mode, bool useKdTree)
{
    return std::make_unique<PeerVolumes>(name, query, mode, useKdTree);
}

RayContenderPtr peer_rays(SceneName name, RayQuery query)
{
    return std::make_unique<PeerRays>(name, query);
}

std::size_t build_peer_tree(SceneName name)
{
    osg::Node *const root = peer_scene(name).root.get();
    osg::ref_ptr<osg::KdTree> const tree = new osg::KdTree;
    osg::KdTree::BuildOptions options;
    tree->build(options, root->asDrawable()->asGeometry());
    return tree->getNodes().capacity() * sizeof(osg::KdTree::KdNode) +
           (tree->getPrimitiveIndices().capacity() + tree->getVertexIndices().capacity()) *
               sizeof(unsigned int);
}
} // namespace OSG::Bench
#endif
