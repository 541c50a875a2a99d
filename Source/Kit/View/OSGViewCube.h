#pragma once

/// \file
/// The cube in a corner of a window that shows how a view is turned and turns it, and the three
/// axes of a scene. Plain numbers: the host draws them as it likes.

#include <array>
#include <optional>
#include <vector>

#include "OSGStandardView.h"
#include "OSGTolvaniteKitApi.h"

namespace OSG
{
/// A face, an edge or a corner of the cube, by the axes of the scene: each number is -1, 0 or 1.
struct OSG_TOLVANITEKIT_API CubePart
{
    enum class Kind : UInt8
    {
        Face,
        Edge,
        Corner
    };

    /// From the middle of the cube to that of the part: (1, 0, 0) is the face towards +x, (1, 1, 0)
    /// the edge between +x and +y.
    Vec3f direction;

    Kind kind() const;

    friend bool operator==(CubePart const &, CubePart const &) = default;
};

/// The cube as a view shows it: turned as the scene is, without perspective. Its sides have the
/// names of the standard views. Pixels count from the left top corner of the window.
class OSG_TOLVANITEKIT_API ViewCube
{
  public:
    struct Face
    {
        StandardView standard;
        /// Left bottom, right bottom, right top, left top, as a text on the face is read.
        std::array<Pnt2f, 4> corners;
        Real32 shade; ///< above 0, and 1 where the face looks at the viewer: the cosine between
    };
    using Polygon = std::array<Pnt2f, 4>;

    /// `size` is the side of a square in which the cube has room however it is turned, about
    /// `centre`, in pixels. A cube without faces where is_view is false, and where the size is not
    /// above 0 or a number is not finite.
    ViewCube(WindowView const &view, Pnt2f const &centre, Real32 size,
             SceneUp sceneUp = SceneUp::Y);

    /// Those that are seen, from the deepest to the nearest; at most three.
    std::vector<Face> const &getFaces() const { return _faces; }
    /// What lies under a pixel. Edges and corners begin at seven tenths of the way from the middle
    /// of a face to its border. No value beside the cube.
    std::optional<CubePart> partAt(Pnt2f const &pixel) const;
    /// What is seen of a part, to show it in another colour: at most three polygons.
    std::vector<Polygon> outlinesOf(CubePart const &part) const;
    /// The view to go to from `view` when the part was clicked: the standard view of a face; else
    /// against the direction of the part, with the scene upright. The point that is looked at and
    /// the distance stay.
    WindowView viewFrom(WindowView const &view, CubePart const &part) const;

  private:
    /// A face that is seen: its directions in the scene, and what they are in pixels.
    struct Side
    {
        Vec3f out, right, up;
        Vec3d outWay, rightWay, upWay; // of half a side: to the right and downwards
    };

    /// From -1 to 1 to the right and upwards on the side.
    static std::optional<Vec3d> placeOn(Side const &side, Vec3d const &fromCentre);
    Pnt2f pixelOf(Side const &side, Real64 right, Real64 up) const;

    Pnt2f _centre;
    SceneUp _sceneUp;
    std::vector<Face> _faces;
    std::vector<Side> _sides; // of the faces
};

/// An axis of the scene as a view shows it.
struct TriadAxis
{
    UInt32 axis;  ///< 0 is x, 1 is y, 2 is z
    Vec2f tip;    ///< from the middle of the triad, in pixels, y downwards
    Real32 depth; ///< how far behind the middle the tip lies, in pixels
};
/// The three axes, each `length` pixels long where it lies across the view, from the deepest tip to
/// the nearest. They have no length where is_view is false.
OSG_TOLVANITEKIT_API std::array<TriadAxis, 3> triad_of(WindowView const &view, Real32 length);
} // namespace OSG
