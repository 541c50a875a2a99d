#pragma once

/// \file
/// What the tests of graph operations share.

#include <vector>

#include "GeometryBuilders.h"
#include "OSGGeometryIterators.h"
#include "OSGGraphOp.h"
#include "OSGSimpleMaterial.h"
#include "SceneBuilders.h"

namespace OSG::Test
{
inline std::vector<Node *> children_of(Node const *node)
{
    return std::vector<Node *>(node->getMFChildren()->begin(), node->getMFChildren()->end());
}

template <class Core>
NodePtr make(Children const &children = {})
{
    UnrecordedRefPtr<Core> const core(Core::create());
    return make_node(core, children);
}

template <class Core>
Core *core_of(Node const *node)
{
    return dynamic_cast<Core *>(node->getCore());
}

/// A node with one triangle of its own.
inline NodePtr make_triangle(Pnt3f const &first = Pnt3f(0, 0, 0))
{
    Vec3f const right(1, 0, 0);
    Vec3f const up(0, 1, 0);
    return make_node(
        make_geometry(one_primitive(TrianglesPrimitive, {first, first + right, first + up},
                                    {{0, 0, 1}, {0, 0, 1}, {0, 0, 1}})));
}

inline UnrecordedRefPtr<SimpleMaterial> make_material()
{
    return UnrecordedRefPtr<SimpleMaterial>(SimpleMaterial::create());
}

/// Runs a fresh operation of the class and says whether it went through.
template <class Operation>
bool run(Node *root)
{
    UnrecordedRefPtr<Operation> const operation(Operation::create());
    return operation->traverse(root);
}
} // namespace OSG::Test
