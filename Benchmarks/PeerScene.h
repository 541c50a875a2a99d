#pragma once

/// \file
/// OpenSceneGraph's scene of the same nodes, triangles and volumes as one of ours.

#include <map>
#include <vector>

#include <osg/Geode>
#include <osg/Geometry>
#include <osg/KdTree>
#include <osg/MatrixTransform>
#include <osg/Polytope>

#include "OSGFrustum.h"
#include "OSGGeometry.h"
#include "OSGGeometryIterators.h"
#include "OSGNodeWalker.h"
#include "OSGTransform.h"

namespace OSG::Bench
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

inline PeerScene peer_scene_of(Node *root)
{
    PeerScene result;
    PeerBuilder builder(result);
    walk_children(root, builder);
    result.root = builder.root();
    result.root->getBound();
    return result;
}

inline void want_trees(PeerScene &scene)
{
    if(scene.hasTrees)
        return;
    osg::ref_ptr<osg::KdTreeBuilder> const builder = new osg::KdTreeBuilder;
    scene.root->accept(*builder);
    scene.hasTrees = true;
}

/// Planes near, far, left, right, top, bottom.
inline osg::Polytope polytope_of(Frustum const &frustum)
{
    osg::Polytope polytope;
    for(Plane const &plane : frustum.Volume().getPlanes())
    {
        Vec3f const normal = plane.getNormal();
        polytope.add(osg::Plane(normal[0], normal[1], normal[2], -plane.getDistanceFromOrigin()));
    }
    return polytope;
}
} // namespace OSG::Bench
