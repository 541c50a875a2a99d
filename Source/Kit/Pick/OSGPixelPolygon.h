#pragma once

#include <vector>

#include "OSGPixelEdges.h"
#include "OSGTolvaniteKitApi.h"
#include "OSGVector.h"

namespace OSG
{
/// The area of a lasso in a window. Pixels are counted as in WindowView, may be fractions, and may
/// lie outside the window.
///
/// The points are joined in their order, the last one with the first. Inside is, by even-odd, what
/// a line to infinity leaves after an odd number of crossings. The area is closed: its edge belongs
/// to it. Strokes that bound no area count for nothing, so a line drawn twice over holds nothing.
/// What is narrower than a millionth of a pixel is such a stroke.
///
/// Two points, points that are not finite, or more than MostCrossings crossings of the line with
/// itself give an empty area; the crossings also give a warning.
class OSG_TOLVANITEKIT_API PixelPolygon
{
  public:
    static constexpr UInt32 MostCrossings = 1000000;
    /// A point counts as on the edge if it is no farther from it. In pixels.
    static constexpr Real64 EdgeWidth = 1e-6;

    /// Empty.
    PixelPolygon() = default;
    explicit PixelPolygon(std::vector<Pnt2f> const &points);

    bool isEmpty() const { return _boundary.isEmpty(); }
    /// The rectangle around the area.
    PixelBox const &getBox() const { return _boundary.getBox(); }
    bool contains(PixelPoint const &point) const;

    /// The edges between inside and outside, each from one corner or crossing to the next. In no
    /// particular order.
    PixelEdges const &getBoundary() const { return _boundary; }

  private:
    bool isOdd(PixelPoint const &point) const;
    bool isOddBetween(PixelEdge const &way) const;
    void keepBoundary(std::vector<PixelEdge> const &pieces);

    PixelEdges _strokes;  // as drawn
    PixelEdges _boundary; // between inside and outside
};
} // namespace OSG
