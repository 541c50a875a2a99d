// OpenSceneGraph's intersectors over scenes of the same nodes, triangles, volumes and rays. The
// polytope intersector keeps a place for each triangle in the volume; it has no mode that keeps
// fewer and still looks for places. One visitor serves all queries of a contender.

#ifdef BENCHMARK_WITH_OPENSCENEGRAPH
#include <algorithm>
#include <map>

#include <osg/Geode>
#include <osg/Geometry>
#include <osg/KdTree>
#include <osg/MatrixTransform>
#include <osgUtil/IntersectionVisitor>
#include <osgUtil/LineSegmentIntersector>
#include <osgUtil/PolytopeIntersector>

#include "Contenders.h"
#include "OSGGeometry.h"
#include "OSGGeometryIterators.h"
#include "OSGNodeWalker.h"
#include "OSGTransform.h"

namespace OSG::Bench
{
namespace
{
struct PeerScene
{
    osg::ref_ptr<osg::Node> root;
    std::map<osg::Drawable const *, UInt32> numbers; // in the order of the walk
    bool hasTrees = false;
};

/// Makes the peer's tree while ours is walked.
class PeerBuilder
{
  public:
    explicit PeerBuilder(PeerScene &scene)
        : _scene(scene)
        , _open{new osg::Group}
    {
    }

    bool enter(Node *node)
    {
        osg::ref_ptr<osg::Group> made;
        if(auto *const transform = dynamic_cast<Transform *>(node->getCore()))
            made = new osg::MatrixTransform(matrix_of(transform->getMatrix()));
        else
            made = new osg::Group;
        if(auto const *const geometry = dynamic_cast<Geometry *>(node->getCore()))
        {
            osg::ref_ptr<osg::Geometry> const shape = geometry_of(*geometry);
            _scene.numbers.emplace(shape, static_cast<UInt32>(_scene.numbers.size()));
            _open.back()->addChild(shape);
        }
        else
            _open.back()->addChild(made);
        _open.push_back(made);
        return true;
    }
    void leave(Node *) { _open.pop_back(); }

    osg::Node *root() { return _open.front()->getChild(0); }

  private:
    static osg::Matrix matrix_of(Matrix const &matrix)
    {
        osg::Matrix result;
        for(int c = 0; c < 4; ++c)
        {
            for(int r = 0; r < 4; ++r)
                result(c, r) = matrix[c][r]; // the peer's rows are columns
        }
        return result;
    }

    static osg::ref_ptr<osg::Geometry> geometry_of(Geometry const &source)
    {
        osg::ref_ptr<osg::Vec3Array> const positions = new osg::Vec3Array;
        VectorArray const array = source.getPositions()->getArray();
        for(UInt32 i = 0; i < array.size(); ++i)
            positions->push_back(osg::Vec3(array[i][0], array[i][1], array[i][2]));
        osg::ref_ptr<osg::DrawElementsUInt> const index = new osg::DrawElementsUInt(GL_TRIANGLES);
        auto const end = source.endTriangles();
        for(auto it = source.beginTriangles(); it != end; ++it)
        {
            for(int corner = 0; corner < 3; ++corner)
                index->push_back(it.getPositionIndex(corner));
        }
        osg::ref_ptr<osg::Geometry> result = new osg::Geometry;
        result->setUseDisplayList(false);
        result->setVertexArray(positions);
        result->addPrimitiveSet(index);
        return result;
    }

    PeerScene &_scene;
    std::vector<osg::ref_ptr<osg::Group>> _open;
};

PeerScene &peer_scene(SceneName name)
{
    static std::map<SceneName, PeerScene> scenes;
    PeerScene &result = scenes[name];
    if(result.root == nullptr)
    {
        PeerBuilder builder(result);
        walk_children(scene(name), builder);
        result.root = builder.root();
        result.root->getBound();
    }
    return result;
}

void want_trees(PeerScene &scene)
{
    if(scene.hasTrees)
        return;
    osg::ref_ptr<osg::KdTreeBuilder> const builder = new osg::KdTreeBuilder;
    scene.root->accept(*builder);
    scene.hasTrees = true;
}

osg::Polytope polytope_of(Frustum const &frustum)
{
    osg::Polytope polytope;
    for(Plane const &plane : frustum.Volume().getPlanes())
    {
        Vec3f const normal = plane.getNormal();
        polytope.add(osg::Plane(normal[0], normal[1], normal[2], -plane.getDistanceFromOrigin()));
    }
    return polytope;
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
