#pragma once

#include "OSGMatrix.h"
#include "OSGTolvaniteKitApi.h"

namespace OSG
{
class Background;
class Camera;
class Node;
class Viewport;

/// What a viewport shows, for those who ask whether it has become another view. The pointers are
/// keys: what they name may have ended.
struct ShownView
{
    Matrix viewing;    ///< world to camera; the identity without a camera
    Matrix projection; ///< with the shift of the eye
    Int32 left = 0;    ///< pixels of the window, rows from its bottom
    Int32 bottom = 0;
    Int32 width = 0;
    Int32 height = 0;
    Node const *root = nullptr;
    Camera const *camera = nullptr;
    Background const *background = nullptr;

    friend bool operator==(ShownView const &, ShownView const &) = default;
};

OSG_TOLVANITEKIT_API ShownView shown_view_of(Viewport const &viewport);
} // namespace OSG
