#pragma once

/// \file
/// The scenes of the drawing benchmarks: with normals, a material for each geometry, up to date and
/// committed. Each is made when it is first asked for and stays until the program ends.

#include "OSGNode.h"
#include "OSGTransform.h"

namespace OSG::Bench
{
enum class DrawnScene
{
    Patches, ///< 1,000,000 triangles in 5,000 geometries, each with a material of its own
    Boxes,   ///< 100,000 boxes with a geometry and a transform each and one material
    Terrain  ///< 1,000,000 triangles in one geometry
};

/// Where a camera stands; it looks at `at` with +y upwards.
struct FrameView
{
    Pnt3f from;
    Pnt3f at;
    Real32 near;
    Real32 far;
    Real32 fieldOfView = 40; ///< from bottom to top, in degrees
};

Node *drawn_scene(DrawnScene scene);
/// A view that has all of the scene in sight, turned about the scene's middle by `angle` radians.
FrameView whole_view(DrawnScene scene, Real32 angle);
/// A view from within the boxes with about a hundred of them in sight.
FrameView inside_view();

/// The children that lead from the root of the boxes to a transform in their middle.
inline constexpr UInt32 WayToMovingBox[] = {25, 25, 20};
} // namespace OSG::Bench
