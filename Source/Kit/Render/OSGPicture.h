#pragma once

#include <string>
#include <vector>

#include "OSGColor.h"
#include "OSGPictureView.h"

namespace OSG
{
class Node;
class OffscreenContext;

struct Picture
{
    /// As OffscreenContext::readPixels gives them. Empty where there is no picture.
    std::vector<UInt8> pixels = {};
    /// Triangles of what switches and levels of detail show, whether in the picture or not.
    UInt64 triangles = 0;
    /// Why there is no picture, as half a sentence; empty where there is one.
    std::string missing = {};
};

/// Draws the scene below `root` in the size of `context`, by a light at the eye. The lights of the
/// scene shine not. Nothing is current afterwards but what was before. Where the depths of the view
/// hold nothing, the picture is the background. Raises std::bad_alloc.
OSG_TOLVANITEKIT_API Picture draw_picture(OffscreenContext &context, Node *root,
                                          PictureView const &view, Color3f const &background);
} // namespace OSG
