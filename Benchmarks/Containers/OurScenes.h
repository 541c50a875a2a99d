#pragma once

/// \file
/// Makes the scenes of the container benchmarks from our containers.

#include <string>
#include <vector>

#include "OSGChangeList.h"
#include "OSGGeometry.h"
#include "OSGGroup.h"
#include "OSGName.h"
#include "OSGNode.h"
#include "OSGThread.h"
#include "OSGTransform.h"
#include "OSGTypedGeoProperties.h"
#include "SceneGraph.h"
#include "SceneSizes.h"

namespace OSG::Bench
{
using NodePtr = UnrecordedRefPtr<Node>;
using NodeList = std::vector<Node *>;

inline void commit() { Thread::getCurrentChangeList()->commitChanges(); }

inline UnrecordedRefPtr<Geometry> our_triangle()
{
    UnrecordedRefPtr<GeoUInt8Property> const types(GeoUInt8Property::create());
    types->push_back(4);
    UnrecordedRefPtr<GeoUInt32Property> const lengths(GeoUInt32Property::create());
    lengths->push_back(3);
    UnrecordedRefPtr<GeoPnt3fProperty> const positions(GeoPnt3fProperty::create());
    positions->editValues().assign({Pnt3f(0, 0, 0), Pnt3f(1, 0, 0), Pnt3f(0, 1, 0)});
    UnrecordedRefPtr<Geometry> geometry(Geometry::create());
    geometry->setTypes(types);
    geometry->setLengths(lengths);
    geometry->setPositions(positions);
    return geometry;
}

/// A tree of `count` named groups.
inline NodePtr our_named_tree(std::size_t count)
{
    NodeList nodes;
    nodes.reserve(count);
    NodePtr root;
    for(std::size_t i = 0; i < count; ++i)
    {
        NodePtr const node(Node::create());
        node->setCore(UnrecordedRefPtr<Group>(Group::create()));
        setName(node, name_of(i));
        if(i == 0)
            root = node;
        else
            nodes[parent_of(i)]->addChild(node);
        nodes.push_back(node);
    }
    commit();
    return root;
}

/// A group with `count` boxes. A box is a transform with a child that shows one shared geometry.
inline NodePtr our_boxes(std::size_t count)
{
    NodePtr root(Node::create());
    root->setCore(UnrecordedRefPtr<Group>(Group::create()));
    UnrecordedRefPtr<Geometry> const shared = our_triangle();
    for(std::size_t i = 0; i < count; ++i)
    {
        UnrecordedRefPtr<Transform> const transform(Transform::create());
        Matrix matrix;
        matrix.setTranslate(static_cast<Real32>(i), 0.f, 0.f);
        transform->setMatrix(matrix);
        NodePtr const shape(Node::create());
        shape->setCore(shared);
        NodePtr const box(Node::create());
        box->setCore(transform);
        box->addChild(shape);
        root->addChild(box);
    }
    commit();
    return root;
}

/// A tree of `count` nodes. The inner nodes are groups; the leaves show one shared geometry.
inline NodePtr our_shown_tree(std::size_t count, NodeList &leaves)
{
    UnrecordedRefPtr<Geometry> const shared = our_triangle();
    NodeList nodes;
    NodePtr root;
    for(std::size_t i = 0; i < count; ++i)
    {
        NodePtr const node(Node::create());
        if(has_children(i, count))
            node->setCore(UnrecordedRefPtr<Group>(Group::create()));
        else
            node->setCore(shared);
        if(!has_children(i, count))
            leaves.push_back(node);
        if(i == 0)
            root = node;
        else
            nodes[parent_of(i)]->addChild(node);
        nodes.push_back(node);
    }
    commit();
    return root;
}
} // namespace OSG::Bench
