#pragma once

#include "OSGMaterial.h"
#include "RandomNumbers.h"
#include "RandomScenes.h"

namespace OSG::Test
{
using MaterialPtr = UnrecordedRefPtr<Material>;

/// A material of one of the kinds. Null now and then where chunks are among them.
MaterialPtr random_material(RandomNumbers &random, RandomMaterials kinds);
Color3f random_color(RandomNumbers &random);
} // namespace OSG::Test
