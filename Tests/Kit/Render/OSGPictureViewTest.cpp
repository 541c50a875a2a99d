#include "OSGPictureView.h"

#include <cmath>
#include <limits>

#include <gtest/gtest.h>

#include "MathPrinters.h"
#include "OSGMatrixUtility.h"
#include "OSGSceneBounds.h"

namespace OSG
{
namespace
{
SceneBounds box_bounds(Pnt3f const &min, Pnt3f const &max) { return {BoxVolume(min, max)}; }

Matrix camera_at(Pnt3f const &from, Pnt3f const &at)
{
    Matrix camera;
    MatrixLookAt(camera, from, at, Vec3f(0, 1, 0));
    return camera;
}

TEST(PictureView, AFittedPictureLooksFromTheDiagonalAtTheMiddleOfTheBox)
{
    Matrix const camera = fitted_camera(box_bounds({1, 2, 3}, {3, 6, 7}), 1280, 720);
    // Half of the diagonal is 3; 3 / sin(22.5 degrees) / sqrt(3) = 4.52607...
    Real32 const step = static_cast<Real32>(3 / std::sin(M_PI / 8) / std::sqrt(3.));
    EXPECT_NEAR(step, 4.52607f, 1e-5f);
    Pnt3f const from(2 + step, 4 + step, 5 + step);
    EXPECT_TRUE(camera.equals(camera_at(from, {2, 4, 5}), 1e-6f));
}

TEST(PictureView, APictureThatIsHigherThanWideFitsTheBallIntoItsWidth)
{
    Matrix const camera = fitted_camera(box_bounds({-1, -1, -1}, {1, 1, 1}), 100, 200);
    Real64 const half = std::atan(std::tan(M_PI / 8) / 2);
    EXPECT_FLOAT_EQ(camera[3][0], static_cast<Real32>(1 / std::sin(half)));
    EXPECT_FLOAT_EQ(camera[3][1], camera[3][0]);
    EXPECT_FLOAT_EQ(camera[3][2], camera[3][0]);
}

TEST(PictureView, ABoxWithoutExtentAndASceneWithoutABoxCountAsABallOfRadiusOne)
{
    Real32 const step = static_cast<Real32>(1 / std::sin(M_PI / 8) / std::sqrt(3.));
    EXPECT_FLOAT_EQ(fitted_camera(box_bounds({5, 5, 5}, {5, 5, 5}), 9, 9)[3][1], 5 + step);
    EXPECT_FLOAT_EQ(fitted_camera(SceneBounds{}, 9, 9)[3][1], step);
}

TEST(PictureView, AFittedCameraStaysOneWhereItsNumbersRunOut)
{
    // The eye rounds to the middle of the box; the directions are still those of a camera.
    Matrix const camera = fitted_camera(box_bounds({1e10f, 0, 0}, {1e10f, 0, 0}), 9, 9);
    EXPECT_FLOAT_EQ(camera[2][0], 1 / std::sqrt(3.f));
    Real32 const huge = std::numeric_limits<Real32>::max() / 4;
    EXPECT_TRUE(
        std::isfinite(fitted_camera(box_bounds({-huge / 4, 0, 0}, {huge / 4, 0, 0}), 9, 9)[3][0]));
}

TEST(PictureView, NearAndFarFollowTheBoxInTheView)
{
    SceneBounds const bounds = box_bounds({-1, -1, -1}, {1, 1, 1});
    ViewDepths const outside = picture_depths(bounds, camera_at({0, 0, 10}, {0, 0, 0}));
    EXPECT_DOUBLE_EQ(outside.nearSide, 9 * 0.999);
    EXPECT_DOUBLE_EQ(outside.farSide, 11 * 1.001 * 1.1);
    ViewDepths const inside = picture_depths(bounds, camera_at({0, 0, 0.5f}, {0, 0, 0}));
    EXPECT_DOUBLE_EQ(inside.nearSide, 1.5 * 1.001 / 10000);
    EXPECT_DOUBLE_EQ(inside.farSide, 1.5 * 1.001 * 1.1);
}

TEST(PictureView, ABoxBehindTheEyeIsNotVisible)
{
    SceneBounds const bounds = box_bounds({-1, -1, -1}, {1, 1, 1});
    EXPECT_FALSE(picture_depths(bounds, camera_at({0, 0, 10}, {0, 0, 20})).isVisible());
    EXPECT_FALSE(picture_depths(bounds, camera_at({0, 0, 1}, {0, 0, 2})).isVisible());
    EXPECT_TRUE(picture_depths(bounds, camera_at({0, 0, 0.5f}, {0, 0, 2})).isVisible());
}

TEST(PictureView, InfiniteVolumesReachFromNearToTheirOrigins)
{
    SceneBounds bounds = box_bounds({-1, -1, -1}, {1, 1, 1});
    bounds.holdsInfinite = true;
    Matrix const camera = camera_at({0, 0, 10}, {0, 0, 0});
    EXPECT_DOUBLE_EQ(picture_depths(bounds, camera).nearSide, 11 * 1.001 / 10000);
    EXPECT_DOUBLE_EQ(picture_depths(bounds, camera).farSide, 11 * 1.001 * 1.1);
    bounds.infiniteOrigins = {Pnt3f(0, 0, 4), Pnt3f(0, 0, -90)};
    EXPECT_DOUBLE_EQ(picture_depths(bounds, camera).nearSide, 100 * 1.001 / 10000);
    EXPECT_DOUBLE_EQ(picture_depths(bounds, camera).farSide, 100 * 1.001 * 1.1);
}

TEST(PictureView, WithoutABoxTheDepthsAreFixed)
{
    SceneBounds bounds;
    bounds.holdsInfinite = true;
    ViewDepths const depths = picture_depths(bounds, camera_at({0, 0, 10}, {0, 0, 0}));
    EXPECT_EQ(depths.nearSide, 0.1);
    EXPECT_EQ(depths.farSide, 10000);
}
} // namespace
} // namespace OSG
