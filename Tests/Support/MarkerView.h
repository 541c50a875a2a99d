#pragma once

/// \file
/// Views of markers that keep their size on the screen: what they measure, computed by the formula
/// of a pinhole camera in double precision, and where they are seen.

#include <cmath>
#include <numbers>
#include <vector>

#include <gtest/gtest.h>

#include "OSGMatrixUtility.h"
#include "OSGOffscreenContext.h"
#include "OSGPicture.h"
#include "SceneBuilders.h"

namespace OSG::Test
{
/// A picture of 200 by 100 pixels.
struct MarkerView
{
    static constexpr UInt32 Width = 200;
    static constexpr UInt32 Height = 100;
    static constexpr Real64 Near = 0.5;
    static constexpr Real64 Far = 2000;

    Pnt3f from{0, 0, 10};
    Pnt3f at{0, 0, 0};
    Vec3f up{0, 1, 0};
    Real32 fieldOfView = 60;       ///< degrees
    Real32 orthographicHeight = 0; ///< 0 with perspective

    bool isOrthographic() const { return orthographicHeight != 0; }
    Matrix camera() const
    {
        Matrix matrix;
        EXPECT_FALSE(MatrixLookAt(matrix, from, at, up));
        return matrix;
    }
    PictureView picture() const
    {
        PictureView view{camera(), {Near, Far}};
        view.fieldOfView = fieldOfView;
        if(isOrthographic())
            view.orthographicHeight = orthographicHeight;
        return view;
    }

    /// The normalised coordinates of a point of the world.
    Vec3d normalised(Vec3d const &point) const
    {
        Matrix const m = camera();
        Vec3d const way(point[0] - m[3][0], point[1] - m[3][1], point[2] - m[3][2]);
        Vec3d eye;
        for(UInt32 i = 0; i < 3; ++i)
            eye[i] = way.dot(Vec3d(m[i][0], m[i][1], m[i][2]));
        Real64 const depth = -eye[2];
        Real64 const aspect = Real64(Width) / Height;
        if(isOrthographic())
        {
            Real64 const half = orthographicHeight / 2;
            return {eye[0] / (half * aspect), eye[1] / half,
                    (2 * depth - Far - Near) / (Far - Near)};
        }
        Real64 const half = depth * std::tan(fieldOfView * std::numbers::pi / 360);
        return {eye[0] / (half * aspect), eye[1] / half,
                (Far + Near - 2 * Far * Near / depth) / (Far - Near)};
    }

    /// The scale of a marker at `origin` for which one unit measures `distance` pixels in the
    /// coordinates that are 1 wide.
    Real64 scale(Vec3d const &origin, Real64 distance) const
    {
        Matrix const m = camera();
        Vec3d unit(m[0][0], m[0][1], m[0][2]);
        if(!isOrthographic())
        {
            Vec3d line(m[3][0] - origin[0], m[3][1] - origin[1], m[3][2] - origin[2]);
            line = line * (1 / line.length());
            unit = unit - line * line.dot(unit); // across the line of sight
            unit = unit * (1 / unit.length());
        }
        Vec3d const end(origin[0] + unit[0], origin[1] + unit[1], origin[2] + unit[2]);
        return distance / (Width * (normalised(end) - normalised(origin)).length());
    }
};

/// A picture of a marker, and where it is covered.
class Covered
{
  public:
    Covered(OffscreenContext &context, MarkerView const &view, Node *root)
    {
        Picture const picture = draw_picture(context, root, view.picture(), Color3f(0, 0, 1));
        EXPECT_EQ(picture.missing, "");
        _pixels = picture.pixels;
    }

    bool at(UInt32 x, UInt32 y) const
    {
        std::size_t const first = 3 * (std::size_t(y) * MarkerView::Width + x);
        return _pixels[first] != 0 || _pixels[first + 2] != 255;
    }
    UInt32 inRow(UInt32 y) const
    {
        UInt32 count = 0;
        for(UInt32 x = 0; x < MarkerView::Width; ++x)
            count += at(x, y) ? 1 : 0;
        return count;
    }
    UInt32 inColumn(UInt32 x) const
    {
        UInt32 count = 0;
        for(UInt32 y = 0; y < MarkerView::Height; ++y)
            count += at(x, y) ? 1 : 0;
        return count;
    }

  private:
    std::vector<UInt8> _pixels;
};
} // namespace OSG::Test
