#pragma once

/// \file
/// Scenes of all cores, primitives and materials from random numbers. The same seed gives the same
/// scene on every machine.

#include "Oracle/SlowView.h"
#include "RandomNumbers.h"
#include "SceneBuilders.h"

namespace OSG::Test
{
/// Which materials a random scene has.
enum class RandomMaterials
{
    Simple,      ///< simple materials, lit or not, opaque
    Transparent, ///< some of them transparent
    Textured,    ///< some of them with a picture
    Chunks       ///< chunk materials, choices of materials, groups of materials as well
};

struct RandomScene
{
    NodePtr root;
    ViewSetup view;
};

RandomScene random_scene(std::uint64_t seed, RandomMaterials materials);
} // namespace OSG::Test
