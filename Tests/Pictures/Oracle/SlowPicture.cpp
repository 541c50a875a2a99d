#include "SlowPicture.h"

#include <algorithm>
#include <cmath>

#include "DrawnItems.h"
#include "FragmentColors.h"
#include "ItemVertices.h"
#include "SectionCut.h"
#include "TriangleRaster.h"

namespace OSG::Test
{
namespace
{
// In pixels. Renderers place corners on a grid of at least 1/16 of a pixel.
constexpr Real64 EdgeDoubt = 0.1;
constexpr Real64 StrokeDoubt = 2;
// Depths have at least 24 bits, and are interpolated in single precision.
constexpr Real64 DepthDoubt = 1e-5;

// What is known of a pixel while the picture is made.
struct OpenPixel
{
    SlowPixel result;
    Vec4d color;
    std::vector<Real64> depths; // of all triangles that cover it
    Real64 doubtfulDepth = 2;   // nearest edge or other doubt
};

Real64 rounded_to_step(Real64 value) { return std::round(std::clamp(value, 0.0, 1.0) * 255) / 255; }

Vec4d rounded_to_steps(Vec4d const &color)
{
    return Vec4d(rounded_to_step(color[0]), rounded_to_step(color[1]), rounded_to_step(color[2]),
                 color[3]);
}

bool is_within(Real64 depth) { return depth >= 0 && depth <= 1; }

class Painter
{
  public:
    explicit Painter(SlowView const &view)
        : _view(view)
        , _cut(view)
        , _pixels(std::size_t(view.width) * view.height)
    {
        Vec4d const background(view.background[0], view.background[1], view.background[2], 1.0);
        for(OpenPixel &pixel : _pixels)
            pixel.color = rounded_to_steps(background);
    }

    void paint(DrawnItem const &item)
    {
        _levels = stage_levels(item.surface);
        for(DrawnTriangle const &triangle : drawn_triangles(item, _view))
            paint(item, triangle, _triangleCount++);
        for(auto const &stroke : drawn_strokes(item, _view))
            doubtStroke(stroke);
    }

    SlowPicture finish()
    {
        SlowPicture picture{_view.width, _view.height, {}};
        for(OpenPixel &pixel : _pixels)
        {
            pixel.result.color = direction_of(pixel.color);
            pixel.result.isDoubtful =
                pixel.doubtfulDepth <= pixel.result.depth + DepthDoubt || hasRival(pixel);
            picture.pixels.push_back(std::move(pixel.result));
        }
        return picture;
    }

  private:
    void paint(DrawnItem const &item, DrawnTriangle const &triangle, UInt32 number)
    {
        TriangleRaster const raster(triangle.corners(), _view.width, _view.height);
        if(raster.isEmpty())
            return;
        TriangleRaster::Range const range = raster.range();
        for(UInt32 y = range.top; y < range.bottom; ++y)
        {
            for(UInt32 x = range.left; x < range.right; ++x)
            {
                Int32 const column = static_cast<Int32>(x);
                Int32 const row = static_cast<Int32>(y);
                TriangleRaster::Sample const sample = raster.at(column, row);
                if(sample.edgeDistance > -EdgeDoubt)
                    paintPixel(_pixels[y * _view.width + x], item, triangle, raster, sample,
                               {column, row, number});
            }
        }
    }

    struct Place
    {
        Int32 column;
        Int32 row;
        UInt32 triangle;
    };

    void paintPixel(OpenPixel &pixel, DrawnItem const &item, DrawnTriangle const &triangle,
                    TriangleRaster const &raster, TriangleRaster::Sample const &sample,
                    Place const &place) const
    {
        Real64 const cut = _cut.distance(triangle, raster, place.column, place.row);
        if(cut < EdgeDoubt && cut > -EdgeDoubt)
            doubt(pixel, sample.depth);
        if(cut < 0)
            return;
        bool const nearEdge = sample.edgeDistance < EdgeDoubt && is_within(sample.depth);
        bool const nearPlane =
            std::abs(sample.depth) < DepthDoubt || std::abs(sample.depth - 1) < DepthDoubt;
        if(nearEdge || nearPlane)
            doubt(pixel, sample.depth);
        if(!sample.inside || !is_within(sample.depth))
            return;
        Surface const &surface = item.surface;
        Fragment const fragment =
            fragment_of(surface, _levels, triangle, raster, sample, place.column, place.row);
        if(fragment.doubtful || item.isDoubtful)
            doubt(pixel, sample.depth);
        if(surface.alphaTest && fragment.color[3] < 0.5)
            return;
        pixel.depths.push_back(sample.depth);
        if(sample.depth >= pixel.result.depth)
            return;
        if(surface.transparent)
        {
            pixel.result.layers.push_back(place.triangle);
            pixel.color = rounded_to_steps(blended(surface.blending, fragment.color, pixel.color));
            return;
        }
        pixel.result.nearest = place.triangle;
        pixel.result.depth = sample.depth;
        pixel.color = rounded_to_steps(fragment.color);
    }

    static void doubt(OpenPixel &pixel, Real64 depth)
    {
        pixel.doubtfulDepth = std::min(pixel.doubtfulDepth, depth);
    }

    // Another triangle lies in the depth of the nearest opaque one.
    static bool hasRival(OpenPixel const &pixel)
    {
        auto const count = std::count_if(
            pixel.depths.begin(), pixel.depths.end(),
            [&](Real64 depth) { return std::abs(depth - pixel.result.depth) < DepthDoubt; });
        return pixel.result.nearest != SlowPixel::NoTriangle && count > 1;
    }

    // The part of a line before the eye, in pixels.
    void doubtStroke(std::array<Vec4d, 2> stroke)
    {
        auto const before = [](Vec4d const &end) { return end[2] + end[3]; }; // of the near plane
        Real64 const first = before(stroke[0]);
        Real64 const last = before(stroke[1]);
        if(first < 0 && last < 0)
            return;
        if(first < 0)
            stroke[0] += (stroke[1] - stroke[0]) * (first / (first - last));
        if(last < 0)
            stroke[1] += (stroke[0] - stroke[1]) * (last / (last - first));
        Vec2d const a = inPixels(stroke[0]);
        Vec2d const b = inPixels(stroke[1]);
        for(UInt32 y = 0; y < _view.height; ++y)
        {
            for(UInt32 x = 0; x < _view.width; ++x)
            {
                if(distance(Vec2d(x + 0.5, y + 0.5), a, b) < StrokeDoubt)
                    doubt(_pixels[y * _view.width + x], -1);
            }
        }
    }

    Vec2d inPixels(Vec4d const &clip) const
    {
        return Vec2d((clip[0] / clip[3] + 1) * _view.width / 2,
                     (1 - clip[1] / clip[3]) * _view.height / 2);
    }

    static Real64 distance(Vec2d const &point, Vec2d const &a, Vec2d const &b)
    {
        Vec2d const along = b - a;
        Real64 const size = along.squareLength();
        Real64 const t = size > 0 ? std::clamp((point - a).dot(along) / size, 0.0, 1.0) : 0;
        return (point - a - along * t).length();
    }

    SlowView const &_view;
    SectionCut _cut;
    std::vector<OpenPixel> _pixels;
    UInt32 _triangleCount = 0;
    StageLevels _levels; // of the item that is painted
};
} // namespace

bool SlowPicture::isAwayFromEdges(UInt32 x, UInt32 y) const
{
    for(UInt32 row = y == 0 ? 0 : y - 1; row <= std::min(y + 1, height - 1); ++row)
    {
        for(UInt32 column = x == 0 ? 0 : x - 1; column <= std::min(x + 1, width - 1); ++column)
        {
            if(!at(column, row).showsTheSame(at(x, y)))
                return false;
        }
    }
    return !at(x, y).isDoubtful;
}

SlowPicture slow_picture(Node *root, SlowView const &view)
{
    std::vector<DrawnItem> items = drawn_items(root, view);
    auto const firstTransparent =
        std::stable_partition(items.begin(), items.end(),
                              [](DrawnItem const &item) { return !item.surface.transparent; });
    std::stable_sort(firstTransparent, items.end(),
                     [](DrawnItem const &a, DrawnItem const &b) { return a.depth > b.depth; });
    Painter painter(view);
    for(DrawnItem const &item : items)
        painter.paint(item);
    return painter.finish();
}
} // namespace OSG::Test
