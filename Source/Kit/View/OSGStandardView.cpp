#include "OSGStandardView.h"

#include <array>
#include <cmath>

#include "OSGViewFrame.h"

namespace OSG
{
namespace
{
/// In a scene whose y axis points upwards, in the order of StandardView.
struct Directions
{
    Vec3f back;
    Vec3f up;
};
std::array<Directions, 7> const &upright_directions()
{
    static std::array<Directions, 7> const directions = {{{{0, 0, 1}, {0, 1, 0}},
                                                          {{0, 0, -1}, {0, 1, 0}},
                                                          {{-1, 0, 0}, {0, 1, 0}},
                                                          {{1, 0, 0}, {0, 1, 0}},
                                                          {{0, 1, 0}, {0, 0, -1}},
                                                          {{0, -1, 0}, {0, 0, 1}},
                                                          {{1, 1, 1}, {0, 1, 0}}}};
    return directions;
}

/// A quarter turn about x carries y to z, and z to -y.
Vec3f in_scene(Vec3f const &upright, SceneUp sceneUp)
{
    if(sceneUp == SceneUp::Y)
        return upright;
    return Vec3f(upright[0], 0 - upright[2], upright[1]);
}

Directions const &directions_of(StandardView standard)
{
    return upright_directions()[static_cast<std::size_t>(standard)];
}
} // namespace

Vec3f standard_direction(StandardView standard, SceneUp sceneUp)
{
    Vec3f direction = in_scene(directions_of(standard).back, sceneUp);
    direction.normalize();
    return direction;
}

Vec3f standard_up(StandardView standard, SceneUp sceneUp)
{
    return in_scene(directions_of(standard).up, sceneUp);
}

WindowView turned_view(WindowView const &view, Vec3f const &back, Vec3f const &up)
{
    std::optional<ViewFrame> const frame = frame_of(view);
    Real64 const length = wide(back).length();
    if(!frame || !(length > 0))
        return view;
    Real64 const distance = frame->offset.length();
    return anchored_view(view, wide(back) * (distance / length), up,
                         middle_anchor(view, wide(view.at), distance))
        .value_or(view);
}

// The numbers of the table, so that the isometric view has three equal ones after rounding too.
WindowView standard_view(WindowView const &view, StandardView standard, SceneUp sceneUp)
{
    return turned_view(view, in_scene(directions_of(standard).back, sceneUp),
                       standard_up(standard, sceneUp));
}
} // namespace OSG
