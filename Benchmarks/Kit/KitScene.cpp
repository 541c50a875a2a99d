#include "KitScene.h"

#include "OSGChangeList.h"
#include "OSGGeometry.h"
#include "OSGGeometryView.h"
#include "OSGThread.h"
#include "OSGTransform.h"
#include "OSGTypedGeoProperties.h"

namespace OSG::Bench
{
namespace
{
constexpr UInt32 Parts = 10; // geometries below a transform

/// A triangle; the geometries share its arrays.
class Triangle
{
  public:
    Triangle()
    {
        _types->push_back(TrianglesPrimitive);
        _lengths->push_back(3);
        _positions->editValues().assign({Pnt3f(0, 0, 0), Pnt3f(1, 0, 0), Pnt3f(0, 1, 0)});
    }

    NodePtr make() const
    {
        UnrecordedRefPtr<Geometry> const geometry(Geometry::create());
        geometry->setTypes(_types);
        geometry->setLengths(_lengths);
        geometry->setPositions(_positions);
        NodePtr node(Node::create());
        node->setCore(geometry);
        return node;
    }

  private:
    UnrecordedRefPtr<GeoUInt8Property> _types{GeoUInt8Property::create()};
    UnrecordedRefPtr<GeoUInt32Property> _lengths{GeoUInt32Property::create()};
    UnrecordedRefPtr<GeoPnt3fProperty> _positions{GeoPnt3fProperty::create()};
};

NodePtr make_transform()
{
    UnrecordedRefPtr<Transform> const core(Transform::create());
    NodePtr node(Node::create());
    node->setCore(core);
    return node;
}
} // namespace

KitScene make_kit_scene(UInt32 nodes)
{
    Triangle const triangle;
    KitScene scene{make_transform(), {}};
    for(UInt32 count = 1; count < nodes; count += Parts + 1)
    {
        NodePtr const part = make_transform();
        for(UInt32 i = 0; i < Parts; ++i)
        {
            NodePtr const leaf = triangle.make();
            part->addChild(leaf);
            scene.leaves.push_back(leaf);
        }
        scene.root->addChild(part);
    }
    commit();
    return scene;
}

void commit() { Thread::getCurrentChangeList()->commitChanges(); }
} // namespace OSG::Bench
