#pragma once

#include "OSGHalfSpace.h"
#include "OSGPixelEdges.h"
#include "OSGTolvaniteKitApi.h"
#include "OSGWindowView.h"

namespace OSG
{
/// From the coordinates of the root to pixels, in double precision. pick_volume puts the corners of
/// its solids with the same matrix.
class OSG_TOLVANITEKIT_API WindowSpace
{
  public:
    /// is_view must be true for the view.
    explicit WindowSpace(WindowView const &view);

    struct Place
    {
        PixelPoint pixel;
        /// Linear in the pixels of a plane: 1 / depth, or 1 without perspective.
        Real64 weight;
    };

    /// The distance from the eye along the direction of the view.
    Real64 depthOf(Pnt3d const &point) const { return -_back.dot(point - _eye); }
    /// For a point before the eye: its depth is above 0 in a view with perspective.
    Place placeOf(Pnt3d const &point) const;

    /// What is not nearer than `depth`, and what is not farther.
    HalfSpace behind(Real64 depth) const { return {-_back, _eye - _back * depth}; }
    HalfSpace before(Real64 depth) const { return {_back, _eye - _back * depth}; }

  private:
    Pnt3d _eye;
    // The rows of the inverse of the camera's upper three by three.
    Vec3d _right;
    Vec3d _up;
    Vec3d _back;
    Real64 _pixels = 0; // in a unit, at depth 1 if there is perspective
    PixelPoint _middle; // of the window
    bool _hasPerspective = true;
};
} // namespace OSG
