#pragma once

/// \file
/// Trees of nodes for tests.

#include <initializer_list>
#include <vector>

#include "OSGGroup.h"
#include "OSGMatrix.h"
#include "OSGMultiSwitch.h"
#include "OSGNode.h"
#include "OSGQuaternion.h"
#include "OSGTransform.h"
#include "OSGVisitSubTree.h"

namespace OSG::Test
{
using NodePtr = UnrecordedRefPtr<Node>;
using Children = std::vector<NodePtr>;

inline NodePtr make_node(NodeCore *core, Children const &children = {})
{
    NodePtr node(Node::create());
    node->setCore(core);
    for(NodePtr const &child : children)
        node->addChild(child);
    return node;
}

inline NodePtr make_group(Children const &children = {})
{
    UnrecordedRefPtr<Group> const group(Group::create());
    return make_node(group, children);
}

inline NodePtr make_transform(Matrix const &matrix, Children const &children = {})
{
    UnrecordedRefPtr<Transform> const transform(Transform::create());
    transform->setMatrix(matrix);
    return make_node(transform, children);
}

inline NodePtr make_multi_switch(Int32 mode, std::vector<UInt32> const &choices,
                                 Children const &children = {})
{
    UnrecordedRefPtr<MultiSwitch> const core(MultiSwitch::create());
    core->setSwitchMode(mode);
    core->editChoices().assign(choices.begin(), choices.end());
    return make_node(core, children);
}

/// `root` may be null.
inline NodePtr make_visit(Node *root)
{
    UnrecordedRefPtr<VisitSubTree> const core(VisitSubTree::create());
    core->setSubTreeRoot(root);
    return make_node(core);
}

inline Matrix translation(Real32 x, Real32 y, Real32 z)
{
    Matrix matrix;
    matrix.setTranslate(x, y, z);
    return matrix;
}

inline Matrix scaling(Real32 x, Real32 y, Real32 z)
{
    Matrix matrix;
    matrix.setScale(x, y, z);
    return matrix;
}

/// About `axis`, in radians.
inline Matrix rotation(Vec3f const &axis, Real32 angle)
{
    Matrix matrix;
    matrix.setRotate(Quaternion(axis, angle));
    return matrix;
}

/// A node in each of `depth` levels below one another, the innermost one carrying `last`.
template <class MakeNode>
NodePtr make_chain(UInt32 depth, NodePtr const &last, MakeNode makeNode)
{
    NodePtr top = last;
    for(UInt32 i = 0; i < depth; ++i)
    {
        NodePtr const above = makeNode();
        above->addChild(top);
        top = above;
    }
    return top;
}
} // namespace OSG::Test
