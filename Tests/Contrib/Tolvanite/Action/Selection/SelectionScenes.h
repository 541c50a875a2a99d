#pragma once

/// \file
/// Runs one selection, and makes the scenes of most tests. Unless a test says otherwise, the
/// frustum is the box of ClippingCases.h: x and y go from 0 to 1, z goes from 0 (the near plane)
/// down to -1.

#include "ClippingCases.h"
#include "GeometryBuilders.h"
#include "OSGSelectionAction.h"
#include "OSGSimpleSelectionFunctor.h"
#include "SceneBuilders.h"

namespace OSG::Test
{
using ActionPtr = UnrecordedRefPtr<SelectionAction>;
using HitT = SelectionFunctor::HitT;
using Hits = std::deque<HitT>;

constexpr UInt32 AllTypes = SelectionFunctor::SelectTriangles | SelectionFunctor::SelectLines |
                            SelectionFunctor::SelectPoints;

/// An action with its functor.
struct Selection
{
    explicit Selection(Frustum const &frustum = box_frustum(), UInt32 types = AllTypes,
                       SelectionFunctor::PlaneType plane = SelectionFunctor::NearPlane)
        : action(SelectionAction::create(frustum))
        , functor(action, types, plane)
    {
    }

    Hits const &of(Node *root, SelectionFunctor::HitType type = SelectionFunctor::AllHits)
    {
        action->apply(root);
        return functor.hits(type);
    }
    Hits const &of(GeometryParts const &parts)
    {
        shape = make_node(make_geometry(parts));
        return of(shape);
    }

    ActionPtr action;
    SimpleSelectionFunctor functor;
    NodePtr shape; ///< of the last geometry
};

inline GeometryParts triangle(Pnt3f const &a, Pnt3f const &b, Pnt3f const &c)
{
    return one_primitive(TrianglesPrimitive, {a, b, c});
}

/// A small triangle that lies within the box, its corners at the distances 0.2, 0.3 and 0.4.
inline GeometryParts inner_triangle()
{
    return triangle({0.4f, 0.4f, -0.2f}, {0.6f, 0.4f, -0.3f}, {0.4f, 0.6f, -0.4f});
}

inline std::vector<Real32> distances(Hits const &hits)
{
    std::vector<Real32> result;
    for(HitT const &hit : hits)
        result.push_back(hit.distance);
    return result;
}

inline std::vector<Node *> nodes(Hits const &hits)
{
    std::vector<Node *> result;
    for(HitT const &hit : hits)
        result.push_back(hit.node);
    return result;
}
} // namespace OSG::Test
