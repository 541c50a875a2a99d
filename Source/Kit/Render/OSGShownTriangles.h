#pragma once

#include "OSGBaseTypes.h"
#include "OSGTolvaniteKitApi.h"

namespace OSG
{
class Camera;
class Node;

/// Counts the triangles that the iterators deliver of what switches and levels of detail show
/// through `camera` in a picture of that size, whether it lies in the picture or not. A geometry
/// that is shown several times counts each time. Needs no context.
OSG_TOLVANITEKIT_API UInt64 count_shown_triangles(Node *root, Camera const &camera, UInt32 width,
                                                  UInt32 height);
} // namespace OSG
