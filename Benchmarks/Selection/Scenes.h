#pragma once

/// \file
/// The scenes of the selection benchmarks. Each is made when it is first asked for, is up to date
/// and committed, and stays until the program ends. The same name gives the same scene everywhere
/// but for the last bits of its sines.

#include "OSGNode.h"

namespace OSG::Bench
{
enum class SceneName
{
    S1,  ///< one indexed terrain of 1,000,000 triangles in rows
    S2,  ///< the same with 10,000,000
    S1r, ///< S1 with its triangles in random order
    S3,  ///< 100,000 boxes with a geometry and a transform each: 50 groups of 50 groups of 40
    S4   ///< a building of 200,000 triangles in 500 geometries without transforms
};

inline constexpr SceneName AllScenes[] = {SceneName::S1, SceneName::S2, SceneName::S1r,
                                          SceneName::S3, SceneName::S4};

char const *text_of(SceneName name);
Node *scene(SceneName name);
/// The geometry of S1, S2 and S1r.
NodeCore *terrain_of(SceneName name);
} // namespace OSG::Bench
