#include "OSGScreenSize.h"

namespace OSG
{
namespace
{
Real32 unit_without_perspective(Matrix const &worldToScreen)
{
    Matrix screenToWorld;
    screenToWorld.invertFrom(worldToScreen);
    Vec3f unit;
    screenToWorld.multFull(Vec3f(1, 0, 0), unit);
    unit.normalize();
    Vec3f onScreen;
    worldToScreen.multFull(unit, onScreen);
    return onScreen.length();
}

Real32 unit_with_perspective(DrawEnv const &env, Pnt3f const &origin)
{
    Matrix const &camera = env.getCameraToWorld();
    Vec3f view = camera * Pnt3f(0, 0, 0) - origin;
    Vec3f across = view.cross(Vec3f(camera[0][0], camera[0][1], camera[0][2]));
    across.normalize();
    view.normalize();
    Vec3f unit = across.cross(view);
    unit.normalize();
    Pnt3f begin;
    Pnt3f end;
    env.getWorldToScreen().multFull(origin, begin);
    env.getWorldToScreen().multFull(origin + unit, end);
    return (end - begin).length();
}
} // namespace

Real32 unit_on_screen(DrawEnv const &env, Pnt3f const &origin)
{
    Real32 const length = env.isOrthographic() ? unit_without_perspective(env.getWorldToScreen())
                                               : unit_with_perspective(env, origin);
    DrawEnv::PixelBounds const &bounds = env.getPixels();
    Real32 const size = static_cast<Real32>(bounds.right - bounds.left + 1) * length;
    return size > ScreenSizeEpsilon ? size : ScreenSizeEpsilon; // NaN counts as none too
}
} // namespace OSG
