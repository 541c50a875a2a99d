#pragma once

#include "OSGTolvaniteKitApi.h"

namespace OSG
{
/// Makes the image file handler look for pictures where the scene file handler looks for files:
/// during a read the folder of the scene comes first. To be called while nobody reads a scene;
/// where it is so already, nothing changes.
OSG_TOLVANITEKIT_API void find_pictures_beside_scenes();
} // namespace OSG
