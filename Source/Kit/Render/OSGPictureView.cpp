#include "OSGPictureView.h"

#include <array>
#include <cmath>
#include <numbers>

#include "OSGSceneBounds.h"

namespace OSG
{
namespace
{
struct Ball
{
    std::array<Real64, 3> center{};
    Real64 radius = 1;
};

Ball ball_around(BoxVolume const &box)
{
    Ball ball;
    if(box.isEmpty())
        return ball;
    Real64 square = 0;
    for(int axis = 0; axis < 3; ++axis)
    {
        Real64 const min = box.getMin()[axis];
        Real64 const max = box.getMax()[axis];
        ball.center[static_cast<std::size_t>(axis)] = (min + max) / 2;
        square += (max - min) * (max - min);
    }
    Real64 const radius = std::sqrt(square) / 2;
    ball.radius = radius > 0 ? radius : 1;
    return ball;
}

// Half of the angle under which the picture shows its shorter side.
Real64 half_angle(UInt32 width, UInt32 height)
{
    Real64 const vertical = DefaultFieldOfView / 2 * std::numbers::pi / 180;
    if(width >= height)
        return vertical;
    return std::atan(std::tan(vertical) * width / height);
}

// Columns of the camera that looks along (-1, -1, -1), +y upwards.
void put_direction(Matrix &camera)
{
    Real64 const third = 1 / std::sqrt(3.);
    Real64 const half = 1 / std::sqrt(2.);
    Real64 const sixth = 1 / std::sqrt(6.);
    std::array<std::array<Real64, 3>, 3> const axes = {
        {{half, 0, -half}, {-sixth, 2 * sixth, -sixth}, {third, third, third}}};
    for(UInt32 column = 0; column < 3; ++column)
        for(UInt32 row = 0; row < 3; ++row)
            camera[column][row] = static_cast<Real32>(axes[column][row]);
}
} // namespace

Matrix fitted_camera(SceneBounds const &bounds, UInt32 width, UInt32 height)
{
    Ball const ball = ball_around(bounds.box);
    Real64 const distance = ball.radius / std::sin(half_angle(width, height));
    Matrix camera;
    put_direction(camera);
    for(UInt32 axis = 0; axis < 3; ++axis)
        camera[3][axis] = static_cast<Real32>(ball.center[axis] + distance / std::sqrt(3.));
    return camera;
}

ViewDepths picture_depths(SceneBounds const &bounds, Matrix const &camera)
{
    constexpr Real64 BeyondFarSide = 1.1;
    ViewDepths depths = depths_in_view(bounds, camera);
    if(!bounds.box.isEmpty())
        depths.farSide *= BeyondFarSide;
    return depths;
}

PictureView fitted_view(SceneBounds const &bounds, UInt32 width, UInt32 height)
{
    PictureView view;
    view.camera = fitted_camera(bounds, width, height);
    view.depths = picture_depths(bounds, view.camera);
    return view;
}
} // namespace OSG
