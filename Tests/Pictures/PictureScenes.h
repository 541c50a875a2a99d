#pragma once

/// \file
/// Small scenes whose pictures are known.

#include "GeometryBuilders.h"
#include "OSGSimpleMaterial.h"
#include "Oracle/SlowView.h"
#include "SceneBuilders.h"

namespace OSG::Test
{
/// A view of 100 by 100 pixels along -z onto the square from -1 to 1 at z = 0, without perspective.
inline ViewSetup square_view()
{
    ViewSetup setup;
    setup.from = Pnt3f(0, 0, 5);
    setup.fov = 0;
    setup.size = 2;
    setup.far = 10;
    setup.width = 100;
    setup.height = 100;
    return setup;
}

/// The same square as a perspective camera at a distance of 5 sees it.
inline ViewSetup square_perspective()
{
    ViewSetup setup = square_view();
    setup.fov = 22.619865f; // twice the arc tangent of 1 / 5
    return setup;
}

inline UnrecordedRefPtr<SimpleMaterial> simple_material(Color3f const &diffuse)
{
    UnrecordedRefPtr<SimpleMaterial> material(SimpleMaterial::create());
    material->setAmbient(Color3f(0, 0, 0));
    material->setDiffuse(diffuse);
    return material;
}

inline UnrecordedRefPtr<SimpleMaterial> plain_material(Color3f const &color)
{
    UnrecordedRefPtr<SimpleMaterial> material = simple_material(color);
    material->setLit(false);
    return material;
}

/// A square around the z axis at `z`, from -half to half, counter-clockwise as seen from +z.
inline GeometryPtr square(Real32 half, Real32 z, Material *material,
                          Vec3f const &normal = Vec3f(0, 0, 1))
{
    GeometryPtr geometry = make_geometry(one_primitive(
        QuadsPrimitive, {{-half, -half, z}, {half, -half, z}, {half, half, z}, {-half, half, z}},
        std::vector<Vec3f>(4, normal)));
    geometry->setMaterial(material);
    return geometry;
}
} // namespace OSG::Test
