#pragma once

/// \file
/// The queries of the selection benchmarks, which all contenders answer. Views have 1000 by 1000
/// pixels.

#include <vector>

#include "OSGFrustum.h"
#include "OSGLine.h"
#include "Scenes.h"

namespace OSG::Bench
{
enum class VolumeQuery
{
    Q1, ///< 5 by 5 pixels at 40 places
    Q2, ///< a square of a tenth of the view's area at 5 places
    Q3, ///< around everything
    Q4  ///< 1,000 boxes of 0.5 by 1.75 by 0.3, as a walking person has one
};

enum class RayQuery
{
    Down,  ///< 1,000 vertical rays from above
    Random ///< 1,000 rays between places in twice the scene's box
};

/// In the coordinates of the root.
std::vector<Frustum> const &volumes(SceneName name, VolumeQuery query);
std::vector<Line> const &rays(SceneName name, RayQuery query);
/// Longer than any way through a scene and its rays' places.
Real32 ray_length(SceneName name);
} // namespace OSG::Bench
