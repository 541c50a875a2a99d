#pragma once

/// \file
/// What a render action finds in a scene, put so that tests can compare it.

#include <string>
#include <vector>

#include "GeometryBuilders.h"
#include "OSGRenderAction.h"
#include "OSGSimpleMaterial.h"
#include "SceneBuilders.h"

namespace OSG::Test
{
/// An eye at (0, 0, `distance`) that looks along -z, and sees 2 * `size` units across around the
/// origin in each direction, 1000 units deep.
struct View
{
    Real32 distance = 100;
    Real32 size = 50;
    Matrix viewing{}; ///< in place of the eye's own, where `hasViewing`
    bool hasViewing = false;

    DrawEnv env() const
    {
        Matrix projection;
        projection[0][0] = projection[1][1] = 1 / size;
        projection[2][2] = -2.f / 1000;
        projection[3][2] = -1;
        Matrix const toEye = hasViewing ? viewing : translation(0, 0, -distance);
        Matrix toWorld;
        toWorld.invertFrom(toEye);
        DrawEnv env;
        env.setView(toWorld, toEye, projection, {0, 99, 0, 99});
        return env;
    }
};

using RenderActionPtr = UnrecordedRefPtr<RenderAction>;

inline DrawList const &collect(RenderAction &action, Node *root, View const &view = {})
{
    action.editDrawEnv() = view.env();
    action.apply(root);
    return action.getDrawList();
}

/// A triangle about the origin, `size` wide, with a material of its own or none.
inline NodePtr make_shape(Material *material = nullptr, Real32 size = 1)
{
    GeometryPtr const geometry = make_geometry(
        one_primitive(TrianglesPrimitive,
                      {Pnt3f(-size / 2, 0, 0), Pnt3f(size / 2, 0, 0), Pnt3f(0, size / 2, 0)}));
    geometry->setMaterial(material);
    return make_node(geometry);
}

inline UnrecordedRefPtr<SimpleMaterial> make_colored(Real32 red, Real32 transparency = 0)
{
    UnrecordedRefPtr<SimpleMaterial> material(SimpleMaterial::create());
    material->setDiffuse(Color3f(red, 0, 0));
    material->setTransparency(transparency);
    return material;
}

inline DrawShape const *shape_of(Node const *node)
{
    return static_cast<Geometry const &>(*node->getCore()).obtainShape();
}

/// The shapes of a list in the order in which they are drawn.
inline std::vector<DrawShape const *> shapes_in(DrawList const &list)
{
    std::vector<DrawShape const *> shapes;
    for(auto const *items : {&list.opaque, &list.transparent})
    {
        for(DrawItem const &item : *items)
            shapes.push_back(list.shapes[item.shape]);
    }
    return shapes;
}

inline std::vector<DrawShape const *> shapes_of(std::vector<Node const *> const &nodes)
{
    std::vector<DrawShape const *> shapes;
    shapes.reserve(nodes.size());
    for(Node const *node : nodes)
        shapes.push_back(shape_of(node));
    return shapes;
}

/// All that drawing reads of an item.
struct Drawn
{
    DrawShape const *shape;
    Matrix toEye;
    bool isMirrored;
    DrawState state;
    LightSet lights;

    bool operator==(Drawn const &) const = default;
};

inline std::vector<Drawn> drawn_by(DrawList const &list)
{
    std::vector<Drawn> drawn;
    for(auto const *items : {&list.opaque, &list.transparent})
    {
        for(DrawItem const &item : *items)
            drawn.push_back({list.shapes[item.shape], list.spaces[item.space].toEye,
                             list.spaces[item.space].isMirrored, *list.states[item.state],
                             list.lights[item.lights]});
    }
    return drawn;
}
} // namespace OSG::Test
