#pragma once

/// \file
/// Views that come from other views by a move of the user: zoom, pan, orbit.
///
/// Each function returns the new view. It returns `view` itself where is_view is false for it,
/// where an argument is not finite, or where the move would lead to no view.
///
/// A view has its numbers in single precision. The moves therefore keep a point that the caller
/// names, and keep it where the caller says: what they compute follows from this point, so that
/// nothing adds up over a thousand steps. The place of the point in the window is true to a
/// thousandth of a pixel as long as a pixel there measures 1,000 units in the last place of the
/// largest coordinate of `from` and `at`. Far from the origin, or very near to the point, the
/// place is as true as these units allow.
///
///     // A step of the wheel. `picked` is what lies under the pointer.
///     view = zoom_at(view, picked, pointer, 1.2f);
///     // A drag. What is said of the whole drag counts from the view in which it began.
///     view = orbit_upright(viewAtPress, picked, {0, 1, 0}, -wayX * 0.01f, wayY * 0.01f);

#include <optional>

#include "OSGTolvaniteKitApi.h"
#include "OSGWindowView.h"

namespace OSG
{
/// Where a view shows a point, in pixels from the left top corner of the window. No value for a
/// point at or behind the eye of a view with perspective.
OSG_TOLVANITEKIT_API std::optional<Pnt2f> pixel_of(WindowView const &view, Pnt3f const &point);
/// The point that is shown at `pixel` and lies as deep in the view as `asDeepAs`: for a pointer
/// under which there is nothing. No value where `asDeepAs` is at or behind the eye of a view with
/// perspective.
OSG_TOLVANITEKIT_API std::optional<Pnt3f> point_under(WindowView const &view, Pnt2f const &pixel,
                                                      Pnt3f const &asDeepAs);

/// Shows what is at the depth of `point` `magnification` times as large, and `point` at `pixel`.
///
/// In perspective the eye goes towards the point or away from it, and `at` keeps its place in the
/// window. `at` stays as far from the eye as an eighth of the largest coordinate; nearer, the
/// direction of the view would be rounded away. Without perspective the height of the view changes.
///
/// `view` itself where the magnification is not above 0, where the point is at or behind the eye of
/// a view with perspective, and where a pixel at the depth of the point would be smaller than 16
/// units in the last place of the eye: the picture would tremble there.
OSG_TOLVANITEKIT_API WindowView zoom_at(WindowView const &view, Pnt3f const &point,
                                        Pnt2f const &pixel, Real32 magnification);
/// Shows a rectangle of the window, between two opposite corners, in the whole window. It touches
/// two of its edges at least, at the depth of `asDeepAs`. `view` itself where a side is 0.
OSG_TOLVANITEKIT_API WindowView zoom_window(WindowView const &view, Pnt2f const &corner,
                                            Pnt2f const &opposite, Pnt3f const &asDeepAs);
/// Moves the view sideways, so that `point` appears at `pixel`. `view` itself for a point at or
/// behind the eye of a view with perspective.
OSG_TOLVANITEKIT_API WindowView pan_to(WindowView const &view, Pnt3f const &point,
                                       Pnt2f const &pixel);
/// Turns the camera about an axis through `point`, right-handed, by `angle` radians. The point
/// stays where it is in the window.
OSG_TOLVANITEKIT_API WindowView orbit_about(WindowView const &view, Pnt3f const &point,
                                            Vec3f const &axis, Real32 angle);
/// Turns the camera about `point` as on a turntable: to the right by `around`, about `worldUp`, and
/// upwards by `over`, in radians. The eye does not go over the top: it stops where the view is
/// parallel to `worldUp`. The point stays where it is in the window.
OSG_TOLVANITEKIT_API WindowView orbit_upright(WindowView const &view, Pnt3f const &point,
                                              Vec3f const &worldUp, Real32 around, Real32 over);

/// Moves the camera as a 3D mouse does: turns it about the axis `turn`, right-handed, by as many
/// radians as `turn` is long, then shifts it by `shift` in units of the scene. Both are in the
/// camera's axes, the shift in those after the turn: x to the right, y upwards, z backwards,
/// towards the user. A host multiplies what the device tells by its speeds and by the seconds of
/// the frame.
///
/// Without `pivot` the camera turns about its eye. With it the camera goes around the pivot, which
/// stays where it is in the window but for the shift.
///
/// Without perspective nothing comes nearer: a shift forwards zooms in instead, by e where it is as
/// long as the way to `at`. The pivot, or else the middle of the window, keeps its place. It does
/// not zoom in where a pixel would be smaller than zoom_at() allows.
OSG_TOLVANITEKIT_API WindowView move_by(WindowView const &view, Vec3f const &shift,
                                        Vec3f const &turn,
                                        std::optional<Pnt3f> const &pivot = std::nullopt);
} // namespace OSG
