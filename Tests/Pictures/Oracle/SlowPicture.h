#pragma once

/// \file
/// The picture of a scene, made slowly and obviously: each pixel is held against each triangle, in
/// double precision and without OpenGL.

#include <limits>
#include <vector>

#include "OSGNode.h"
#include "SlowView.h"

namespace OSG::Test
{
struct SlowPixel
{
    static constexpr UInt32 NoTriangle = std::numeric_limits<UInt32>::max();

    Vec3d color; ///< 0 to 1, rounded to the 256 steps of a picture
    /// Running number of the nearest opaque triangle over the whole picture.
    UInt32 nearest = NoTriangle;
    Real64 depth = 1; ///< of that triangle, from near to far
    /// The transparent triangles before it, in the order in which they are drawn.
    std::vector<UInt32> layers;
    /// A renderer may give another colour and be right: the centre is near to an edge, to a line
    /// or a point, to another triangle's depth or to the border of two texels.
    bool isDoubtful = false;

    bool isCovered() const { return nearest != NoTriangle || !layers.empty(); }
    bool showsTheSame(SlowPixel const &other) const
    {
        return nearest == other.nearest && layers == other.layers;
    }
};

struct SlowPicture
{
    UInt32 width = 0;
    UInt32 height = 0;
    std::vector<SlowPixel> pixels; ///< row by row from the left top corner

    SlowPixel const &at(UInt32 x, UInt32 y) const { return pixels[y * width + x]; }
    /// The pixel is not doubtful, and its eight neighbours show the same triangles. At the
    /// picture's edge the neighbours that exist count.
    bool isAwayFromEdges(UInt32 x, UInt32 y) const;
};

/// Lines and points are not drawn: pixels near to them are doubtful.
SlowPicture slow_picture(Node *root, SlowView const &view);
} // namespace OSG::Test
