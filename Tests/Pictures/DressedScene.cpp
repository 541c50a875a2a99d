#include "DressedScene.h"

#include "OSGGeometry.h"
#include "OSGMaterialGroup.h"

namespace OSG::Test
{
namespace
{
Node *other_tree(Node const *node)
{
    return node->getCore() != nullptr ? node->getCore()->getOtherTree() : nullptr;
}

void add_places(Node *node, std::vector<Node *> const &visiting, std::vector<NodePath> &places)
{
    places.emplace_back(node, visiting);
    if(Node *const other = other_tree(node))
    {
        std::vector<Node *> inner = visiting;
        inner.push_back(node);
        add_places(other, inner, places);
        return;
    }
    for(UInt32 i = 0; i < node->getNChildren(); ++i)
        add_places(node->getChild(i), visiting, places);
}

class Dresser
{
  public:
    explicit Dresser(AppearanceTable const &table)
        : _table(table)
    {
    }

    NodePtr copy(Node *node, std::vector<Node *> const &visiting, Appearance const &around) const
    {
        NodePath const path(node, visiting);
        Appearance here = around;
        if(Material const *const material = _table.getMaterial(path))
            here.material = material;
        here.isIsolated = here.isIsolated || _table.isIsolated(path);
        NodePtr const result(Node::create());
        result->setTravMask(_table.isHidden(path) ? 0 : node->getTravMask());
        if(Node *const other = other_tree(node))
        {
            result->setCore(UnrecordedRefPtr<Group>(Group::create()));
            std::vector<Node *> inner = visiting;
            inner.push_back(node);
            result->addChild(copy(other, inner, here));
            return result;
        }
        if(dynamic_cast<Geometry *>(node->getCore()) != nullptr)
        {
            result->setCore(UnrecordedRefPtr<Group>(Group::create()));
            result->addChild(shape(node->getCore(), here));
        }
        else
            result->setCore(node->getCore());
        for(UInt32 i = 0; i < node->getNChildren(); ++i)
            result->addChild(copy(node->getChild(i), visiting, here));
        return result;
    }

  private:
    NodePtr shape(NodeCore *geometry, Appearance const &here) const
    {
        NodePtr const leaf = make_node(geometry);
        if(_table.isIsolating() && !here.isIsolated)
            leaf->setTravMask(0);
        if(here.material == nullptr)
            return leaf;
        UnrecordedRefPtr<MaterialGroup> const group(MaterialGroup::create());
        group->setMaterial(const_cast<Material *>(here.material));
        return make_node(group, {leaf});
    }

    AppearanceTable const &_table;
};
} // namespace

std::vector<NodePath> places_in(Node *root)
{
    std::vector<NodePath> places;
    add_places(root, {}, places);
    return places;
}

NodePtr dressed_copy(Node *root, AppearanceTable const &table)
{
    return Dresser(table).copy(root, {}, {});
}
} // namespace OSG::Test
