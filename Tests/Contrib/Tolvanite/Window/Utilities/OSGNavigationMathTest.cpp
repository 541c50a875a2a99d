#include "OSGNavigationMath.h"

#include <cmath>

#include <gtest/gtest.h>

#include "CameraBuilders.h"
#include "MathPrinters.h"
#include "RandomNumbers.h"

using namespace OSG;
using namespace OSG::Test;
using namespace OSG::NavigationMath;

namespace
{
constexpr Real32 Pi = 3.14159265f;

TEST(NavigationMath, RotatesRightHanded)
{
    EXPECT_TRUE(
        (rotation_about(Vec3f(0, 0, 7), Pi / 2) * Vec3f(1, 0, 0)).equals(Vec3f(0, 1, 0), 1e-6f));
    EXPECT_TRUE(
        (rotation_about(Vec3f(2, 0, 0), Pi / 2) * Vec3f(0, 1, 0)).equals(Vec3f(0, 0, 1), 1e-6f));
}

TEST(NavigationMath, DoesNotRotateAboutAnAxisWithoutLength)
{
    EXPECT_EQ(rotation_about(Vec3f(1e-6f, 0, 0), 1), Matrix());
    EXPECT_EQ(rotation_about(Vec3f(NAN, 0, 0), 1), Matrix());
    EXPECT_NE(rotation_about(Vec3f(2e-6f, 0, 0), 1), Matrix());
}

TEST(NavigationMath, RotatesAroundAPointAsRodriguesDoes)
{
    RandomNumbers random(31);
    for(int i = 0; i < 500; ++i)
    {
        Pnt3f const point = random.point(-5, 5);
        Pnt3f const center = random.point(-5, 5);
        Vec3f const axis = random.vector();
        Real32 const angle = random.real(-7, 7);
        Vec3f const k = unit(axis);
        Vec3f const v = point - center;
        Vec3f const turned = v * std::cos(angle) + k.cross(v) * std::sin(angle) +
                             k * (k.dot(v) * (1 - std::cos(angle)));
        EXPECT_TRUE(rotate_around(point, center, axis, angle).equals(center + turned, 1e-4f));
    }
}

TEST(NavigationMath, BallIsASphereInTheMiddleAndAHyperbolaOutside)
{
    EXPECT_EQ(project_to_sphere(0.8f, 0, 0), 0.8f);
    EXPECT_FLOAT_EQ(project_to_sphere(0.8f, 0.3f, 0.4f), std::sqrt(0.64f - 0.25f));
    EXPECT_FLOAT_EQ(project_to_sphere(0.8f, 0.6f, 0.8f), 0.32f);
    EXPECT_FLOAT_EQ(project_to_sphere(0.8f, 8, 0), 0.04f);
    // The two meet without a step.
    Real32 const rim = 0.8f * 0.70710677f;
    EXPECT_NEAR(project_to_sphere(0.8f, rim * 0.9999f, 0),
                project_to_sphere(0.8f, rim * 1.0001f, 0), 2e-4f);
}

TEST(NavigationMath, ADragOfNothingIsNoTurn)
{
    EXPECT_FALSE(drag_on_sphere(0.8f, 0.1f, 0.2f, 0.1f, 0.2f));
    // Differences of exactly 1e-6.
    EXPECT_FALSE(drag_on_sphere(0.8f, 1e-6f, 0, 0, 1e-6f));
    EXPECT_TRUE(drag_on_sphere(0.8f, 2e-6f, 0, 0, 0));
    EXPECT_TRUE(drag_on_sphere(0.8f, 0, 0, 0, -2e-6f));
}

TEST(NavigationMath, ADragFromInsideToOutsideTurnsByAFiniteAngle)
{
    for(Real32 const to : {0.7f, 1.f, 3.f, 1000.f, 1e30f})
    {
        auto const turn = drag_on_sphere(0.8f, 0.1f, 0, to, 0);
        ASSERT_TRUE(turn);
        EXPECT_GT(turn->angle, 0.f);
        EXPECT_LE(turn->angle, Pi);
    }
    EXPECT_FLOAT_EQ(drag_on_sphere(0.8f, 0.1f, 0, 1000, 0)->angle, Pi);
}

TEST(NavigationMath, TheBallFollowsThePointerInItsMiddle)
{
    // The grabbed point of the sphere, turned back, lies under the new place.
    RandomNumbers random(32);
    for(int i = 0; i < 500; ++i)
    {
        Real32 const a[2] = {random.real(-0.35f, 0.35f), random.real(-0.35f, 0.35f)};
        Real32 const b[2] = {random.real(-0.35f, 0.35f), random.real(-0.35f, 0.35f)};
        auto const turn = drag_on_sphere(0.8f, a[0], a[1], b[0], b[1]);
        ASSERT_TRUE(turn);
        Vec3f const grabbed(a[0], a[1], project_to_sphere(0.8f, a[0], a[1]));
        Vec3f const there(b[0], b[1], project_to_sphere(0.8f, b[0], b[1]));
        EXPECT_TRUE((rotation_about(turn->axis, -turn->angle) * grabbed).equals(there, 1e-5f));
    }
}

// --- pans ---

TEST(NavigationMath, TheScreenFacesTheEyeHoweverFarTheViewReaches)
{
    RandomNumbers random(34);
    for(Real32 const far : {10.f, 1000.f, 3e6f, 3.5e6f, 1e7f, 1e9f})
    {
        auto const camera = make_perspective(0.8f, 0.1f, far);
        for(int i = 0; i < 50; ++i)
        {
            Matrix pose, viewing;
            Pnt3f const from = random.point(-5, 5);
            ASSERT_FALSE(MatrixLookAt(pose, from, from + random.vector(), random.vector()));
            viewing.invertFrom(pose);
            Matrix4d toWorld;
            ASSERT_TRUE(camera->calcScreenToWorld(toWorld, viewing, 640, 480));
            EXPECT_TRUE(screen_axis(toWorld).equals(axis_of(pose, 2), 1e-6f)) << far;
        }
    }
}
} // namespace
