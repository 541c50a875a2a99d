#pragma once

/// \file
/// The geometries that a view shows, with what the nodes above them say about them.

#include <vector>

#include "OSGGeometry.h"
#include "OSGNode.h"
#include "SlowView.h"
#include "Surface.h"
#include "VertexColors.h"

namespace OSG::Test
{
struct DrawnItem
{
    Geometry const *geometry = nullptr;
    Matrix4d toEye;
    Surface surface;
    std::vector<LightSource> lights;
    bool isDoubtful = false; ///< OpenGL leaves open what it looks like
    Real64 depth = 0;        ///< of the centre of the geometry's box, in front of the eye
};

/// In the order of the tree. Volumes are brought up to date.
std::vector<DrawnItem> drawn_items(Node *root, SlowView const &view);
} // namespace OSG::Test
