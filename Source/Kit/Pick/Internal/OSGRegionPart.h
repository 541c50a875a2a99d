#pragma once

/// \file
/// The part of a triangle, line or point that lies in a region.

#include <vector>

#include "OSGPickRegion.h"

namespace OSG
{
/// Cuts one primitive after the other. What is left of one may have several pieces and gaps; it is
/// given by its corners, between which it lies.
class RegionPart
{
  public:
    /// The region must outlive this.
    explicit RegionPart(PickRegion const &region)
        : _region(region)
    {
    }

    enum Grade
    {
        Outside,
        Crossing, ///< some of it is inside; corners() are those of that part
        Contained ///< all of it is inside
    };

    /// `count` is 3, 2 or 1. `local` are the corners in the geometry's space and `root` those in
    /// the root's.
    Grade cut(Pnt3f const *local, Pnt3d const *root, int count);
    /// In the geometry's space. Good until the next cut.
    std::vector<Pnt3f> const &corners() const { return _corners; }

  private:
    struct Corner
    {
        Pnt3d local;
        Pnt3d root;
    };
    struct Shown
    {
        WindowSpace::Place place;
        bool isInArea;
    };

    bool start(Pnt3f const *local, Pnt3d const *root, int count);
    void clip(HalfSpace const &half);
    Grade cutAtArea();
    bool showCorners();
    bool entersInside(PixelEdge const &edge) const;
    void offerMeetings(PixelEdge const &edge);
    void offerCorner(PixelPoint const &corner);
    void offerOnEdge(std::size_t edge, Real64 place);
    void offerInside(PixelPoint const &point);
    std::size_t following(std::size_t i) const { return i + 1 < _left.size() ? i + 1 : 0; }
    PixelEdge edgeAt(std::size_t i) const
    {
        return {_shown[i].place.pixel, _shown[following(i)].place.pixel};
    }

    PickRegion const &_region;
    std::vector<Corner> _left; // of the primitive by the half spaces, in order around it
    std::vector<Corner> _next;
    std::vector<Shown> _shown; // one for each of _left
    PixelBox _box;             // around _shown
    Real64 _turn = 0;          // 1 where _shown is clockwise, -1 counter-clockwise, 0 without area
    bool _isWhole = false;     // nothing was cut off by the half spaces
    std::vector<Pnt3f> _corners;
};
} // namespace OSG
