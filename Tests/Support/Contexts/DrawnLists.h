#pragma once

/// \file
/// Lists to draw, made by hand.

#include <memory>

#include "OSGDrawMesh.h"
#include "OSGListDrawing.h"

#include "OSGDrawEnv.h"
#include "OSGGLObjectStore.h"
#include "OSGHostState.h"

namespace OSG::Test
{
/// A shape whose mesh tests write. They change the stamp with the mesh.
class TestShape : public DrawShape
{
  public:
    explicit TestShape(DrawMesh ofMesh = {})
        : mesh(std::move(ofMesh))
    {
    }
    void makeMesh(DrawMesh &out) const override
    {
        ++made;
        out = mesh;
    }
    UInt64 getMeshStamp() const override { return stamp; }

    DrawMesh mesh;
    UInt64 stamp = 1;
    mutable int made = 0;
};

/// The rectangle from the first to the second corner, which faces the viewer.
inline DrawMesh rectangle(Pnt3f const &from, Pnt3f const &to)
{
    DrawMesh mesh;
    mesh.positions = {from, Pnt3f(to[0], from[1], from[2]), to, Pnt3f(from[0], to[1], to[2])};
    mesh.triangles = {0, 1, 2, 0, 2, 3};
    return mesh;
}

/// All of the normalised coordinates, at that height.
inline DrawMesh full_picture(Real32 z = 0) { return rectangle({-1, -1, z}, {1, 1, z}); }

inline DrawMesh with_normals(DrawMesh mesh, Vec3f const &normal = Vec3f(0, 0, 1))
{
    mesh.normals.assign(mesh.positions.size(), normal);
    return mesh;
}
inline DrawMesh with_colors(DrawMesh mesh, Color4f const &color)
{
    mesh.colors.assign(mesh.positions.size(), color);
    return mesh;
}
/// From (0, 0) to `most` over the four corners of a rectangle.
inline DrawMesh with_tex_coords(DrawMesh mesh, Real32 most = 1)
{
    mesh.texCoords = {{0, 0, 0, 1}, {most, 0, 0, 1}, {most, most, 0, 1}, {0, most, 0, 1}};
    return mesh;
}

/// A list with the shapes and states that it draws. Eye and normalised coordinates are the same but
/// for the sign of z, as under an orthographic camera.
class TestList
{
  public:
    TestList()
    {
        static UInt64 last = 0;
        list.shapesNumber = ++last << 32;
        list.spaces.push_back({Matrix(), false});
        list.lights.push_back({});
    }

    UInt32 addShape(DrawMesh mesh)
    {
        shapes.push_back(std::make_unique<TestShape>(std::move(mesh)));
        list.shapes.push_back(shapes.back().get());
        ++list.shapesNumber;
        return static_cast<UInt32>(list.shapes.size() - 1);
    }
    UInt32 addState(DrawState const &state)
    {
        states.push_back(std::make_unique<DrawState>(state));
        list.states.push_back(states.back().get());
        return static_cast<UInt32>(list.states.size() - 1);
    }
    UInt32 addSpace(Matrix const &toEye, bool isMirrored = false)
    {
        list.spaces.push_back({toEye, isMirrored});
        return static_cast<UInt32>(list.spaces.size() - 1);
    }
    UInt32 addLights(LightSet const &lights)
    {
        list.lights.push_back(lights);
        return static_cast<UInt32>(list.lights.size() - 1);
    }
    void add(UInt32 shape, UInt32 state, UInt32 space = 0, UInt32 lights = 0)
    {
        auto &items = list.states[state]->isTransparent() ? list.transparent : list.opaque;
        items.push_back({shape, space, state, lights});
    }
    void add(DrawMesh mesh, DrawState const &state, UInt32 space = 0, UInt32 lights = 0)
    {
        add(addShape(std::move(mesh)), addState(state), space, lights);
    }

    /// Draws over all of the viewport.
    void draw()
    {
        HostState const host;
        DrawEnv env;
        Matrix projection;
        projection.setScale(1, 1, -1);
        env.setView(Matrix(), Matrix(), projection, {});
        env.setObjects(&GLObjectStore::current());
        draw_list(env, list);
    }

    DrawList list;
    std::vector<std::unique_ptr<TestShape>> shapes;
    std::vector<std::unique_ptr<DrawState>> states;
};

/// A light along the view.
inline LightSet headlight() { return {LightValues()}; }
} // namespace OSG::Test
