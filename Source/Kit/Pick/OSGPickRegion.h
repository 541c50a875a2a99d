#pragma once

#include <memory>
#include <optional>
#include <vector>

#include "OSGFrustum.h"
#include "OSGPickVolume.h"
#include "OSGPixelPolygon.h"
#include "OSGSectionPlanes.h"
#include "OSGWindowSpace.h"

namespace OSG
{
class Geometry;

/// What a pick selects in: a solid with six sides, or what a lasso covers in a view, cut by the
/// planes of a section. In the coordinates of the scene's root.
///
/// A region knows its shape in double precision, and it is closed: its surface belongs to it.
class OSG_TOLVANITEKIT_API PickRegion
{
  public:
    /// Degenerate sides of the solid hold everything, as in Plane.
    explicit PickRegion(Frustum const &solid);
    /// What a rectangle covers; see pick_volume, also for when there is none.
    static std::optional<PickRegion> ofRectangle(WindowView const &view, PixelArea const &area,
                                                 SceneBounds const &bounds,
                                                 Real32 radius = DefaultPickRadius);
    /// What a lasso covers, between the depths that pick_volume takes; see PixelPolygon. There is
    /// none for a lasso without an area. A lasso in the form of a rectangle with sides along the
    /// window's gives the region of the rectangle.
    static std::optional<PickRegion> ofLasso(WindowView const &view,
                                             std::vector<Pnt2f> const &lasso,
                                             SceneBounds const &bounds,
                                             Real32 radius = DefaultPickRadius);

    /// Cuts the region by the planes of a section, in addition to those before.
    void cut(SectionPlanes const &planes);

    /// A solid that holds the region. Its near and far sides are those of the region, from which
    /// distances count. It may be wider than the region.
    Frustum const &getSolid() const { return _solid; }
    /// Whether the region is the solid. It is for a rectangle, unless the rectangle is so small
    /// that the corners of its solid would round to nearly the same point.
    bool isSolid() const { return _isSolid; }
    /// The eye of the view, for a region in a view.
    std::optional<Pnt3f> const &getEye() const { return _eye; }

    /// Whether a point is inside. False for one that is not finite.
    bool contains(Pnt3d const &point) const;

    // --- the shape, for searches: what lies in all half spaces and shows in the area of a window
    std::vector<HalfSpace> const &getHalfSpaces() const { return _halfSpaces; }
    /// Null where the half spaces say it all.
    WindowSpace const *getWindow() const { return _window ? &*_window : nullptr; }
    PixelPolygon const &getArea() const { return *_area; }

  private:
    PickRegion() = default;
    static std::optional<PickRegion> inView(WindowView const &view, PixelArea const &around,
                                            std::shared_ptr<PixelPolygon const> area,
                                            SceneBounds const &bounds, Real32 radius);

    Frustum _solid;
    bool _isSolid = true;
    std::optional<Pnt3f> _eye;
    std::vector<HalfSpace> _halfSpaces;
    std::optional<WindowSpace> _window;
    std::shared_ptr<PixelPolygon const> _area; // set if there is a window
};

/// Whether every corner of every triangle, both ends of every line, and every point that the
/// geometry's iterators deliver are inside. Only vertices count: a triangle may span a gap of a
/// lasso. `toRoot` leads from the geometry's space to that of the root. True for a geometry that
/// delivers nothing.
OSG_TOLVANITEKIT_API bool is_enclosed(PickRegion const &region, Geometry const &geometry,
                                      Matrix const &toRoot);
} // namespace OSG
