#pragma once

/// \file
/// A slow, obvious way to run a graph operation, and scenes to compare it with the quick way.

#include <map>
#include <sstream>
#include <string>
#include <unordered_map>

#include "OSGGroup.h"
#include "OSGMaterialGroup.h"
#include "OSGTypedGeoProperties.h"
#include "OperationScenes.h"
#include "RandomNumbers.h"

namespace OSG::Test
{
/// Calls the operation for each node in the order of a walk, but outside of `traverse`. The
/// operation then handles each level separately.
inline void run_level_by_level(GraphOp &operation, Node *node)
{
    if(operation.traverseEnter(node) != ActionBase::Continue)
        return;
    for(Node *child : children_of(node))
        run_level_by_level(operation, child);
    operation.traverseLeave(node, ActionBase::Continue);
}

/// Groups, material groups in material groups, transforms, leaves and geometries with children in
/// any order, with cores that several nodes show. Equal seeds make equal scenes.
class LevelScene
{
  public:
    explicit LevelScene(UInt64 seed)
        : _random(seed)
    {
        for(int i = 0; i < 3; ++i)
            _materials.push_back(make_material());
        _root = Test::make<Group>();
        number(_root);
        fill(_root, 0);
    }

    Node *root() const { return _root; }
    /// From then on the tree alone keeps its nodes.
    void letGo() { _nodes.clear(); }
    Node *anyNode() { return _nodes[_random.below(static_cast<UInt32>(_nodes.size()))]; }

    /// The tree with the numbers of its nodes, their materials and places.
    std::string text() const
    {
        std::ostringstream out;
        out << std::hexfloat;
        describe(_root, out);
        return out.str();
    }

    /// The nodes of the tree by number, with the place of the first corner of a geometry.
    std::map<std::size_t, Pnt3f> places() const
    {
        std::map<std::size_t, Pnt3f> result;
        std::vector<Node *> open{_root};
        while(!open.empty())
        {
            Node *const node = open.back();
            open.pop_back();
            auto *const geometry = core_of<Geometry>(node);
            result[_numbers.at(node)] = geometry != nullptr ? first_corner(*geometry) : Pnt3f();
            for(Node *child : children_of(node))
                open.push_back(child);
        }
        return result;
    }

  private:
    static Pnt3f first_corner(Geometry const &geometry)
    {
        return dynamic_cast<GeoPnt3fProperty const &>(*geometry.getPositions()).getValues()[0];
    }

    void number(NodePtr const &node)
    {
        _numbers[node] = _nodes.size();
        _nodes.push_back(node);
    }

    void fill(NodePtr const &node, UInt32 depth)
    {
        UInt32 const count = depth > 7 ? 0 : _random.below(4);
        for(UInt32 i = 0; i < count; ++i)
        {
            NodePtr const child = make_one();
            number(child);
            bool const isLeaf = core_of<Geometry>(child) != nullptr && _random.below(5) != 0;
            if(!isLeaf)
                fill(child, depth + 1);
            node->addChild(child);
        }
    }

    NodePtr make_one()
    {
        switch(_random.below(8))
        {
        case 0:
        case 1:
            return Test::make<Group>();
        case 2:
        case 3:
        {
            NodePtr const group = Test::make<MaterialGroup>();
            core_of<MaterialGroup>(group)->setMaterial(anyMaterial());
            return group;
        }
        case 4:
            return make_transform(translation(_random.real(-3, 3), 1, 2));
        case 5:
            return _random.below(4) == 0 ? NodePtr(Node::create()) : Test::make<Group>();
        default:
            return make_node(shape());
        }
    }

    Material *anyMaterial()
    {
        UInt32 const which = _random.below(4);
        return which < 3 ? _materials[which].get() : nullptr;
    }

    GeometryPtr shape()
    {
        if(!_shapes.empty() && _random.below(2) == 0)
            return _shapes[_random.below(static_cast<UInt32>(_shapes.size()))];
        Pnt3f const at = _random.point(-3, 3);
        GeometryPtr const made = make_geometry(one_primitive(TrianglesPrimitive, {at, at, at}));
        made->setMaterial(anyMaterial());
        _shapes.push_back(made);
        return made;
    }

    std::string nameOf(Material const *material) const
    {
        for(std::size_t i = 0; i < _materials.size(); ++i)
        {
            if(_materials[i] == material)
                return "m" + std::to_string(i);
        }
        return "-";
    }

    void describe(Node *node, std::ostringstream &out) const
    {
        out << _numbers.at(node);
        if(auto *const geometry = core_of<Geometry>(node))
        {
            Pnt3f const first = first_corner(*geometry);
            out << nameOf(geometry->getMaterial()) << first[0] << ',' << first[1] << ','
                << first[2];
        }
        out << '(';
        for(Node *child : children_of(node))
            describe(child, out);
        out << ')';
    }

    RandomNumbers _random;
    NodePtr _root;
    std::vector<NodePtr> _nodes;
    std::unordered_map<Node const *, std::size_t> _numbers;
    std::vector<UnrecordedRefPtr<SimpleMaterial>> _materials;
    std::vector<GeometryPtr> _shapes;
};
} // namespace OSG::Test
