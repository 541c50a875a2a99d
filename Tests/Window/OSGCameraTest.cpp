#include "OSGCamera.h"

#include <cmath>

#include <gtest/gtest.h>

#include "CameraBuilders.h"
#include "LogCapture.h"
#include "MathPrinters.h"
#include "RandomNumbers.h"

using namespace OSG;
using namespace OSG::Test;

namespace
{
constexpr char const *Singular =
    "TransformationMatrix<>::calcInverse: Singular matrix, no inverse!\n";

/// A camera with its beacon, in a viewport that may be a part of a window.
struct View
{
    UnrecordedRefPtr<Camera> camera;
    ViewportPtr viewport;
    WindowPtr window;
    NodePtr beacon;
    Matrix pose;
};

View random_view(RandomNumbers &random, UnrecordedRefPtr<Camera> camera)
{
    View view;
    view.camera = std::move(camera);
    Int32 const left = static_cast<Int32>(random.below(300));
    Int32 const bottom = static_cast<Int32>(random.below(300));
    Int32 const right = left + 40 + static_cast<Int32>(random.below(900));
    Int32 const top = bottom + 40 + static_cast<Int32>(random.below(900));
    view.viewport = make_viewport(left, bottom, right, top);
    view.window =
        make_window(static_cast<UInt16>(right + 20), static_cast<UInt16>(top + 30), view.viewport);
    Pnt3f const from = random.point(-5, 5);
    EXPECT_FALSE(MatrixLookAt(view.pose, from, from + random.vector(), random.vector()));
    view.beacon = make_transform(view.pose);
    view.camera->setBeacon(view.beacon);
    return view;
}

View random_perspective(RandomNumbers &random)
{
    return random_view(random, make_perspective(random.real(0.2f, 2.f), 0.1f, 100.f).get());
}

View random_orthographic(RandomNumbers &random)
{
    return random_view(random, make_orthographic(random.real(0.5f, 20.f), 0.1f, 100.f).get());
}

/// Where a point of the world lies in the window, by the camera's matrices: pixels from the left
/// top corner.
Vec2f pixel_of(View const &view, Pnt3f const &point)
{
    UInt32 const width = static_cast<UInt32>(view.viewport->calcPixelWidth());
    UInt32 const height = static_cast<UInt32>(view.viewport->calcPixelHeight());
    Matrix projection, translation, viewing;
    view.camera->getProjection(projection, width, height);
    view.camera->getProjectionTranslation(translation, width, height);
    view.camera->getViewing(viewing, width, height);
    Pnt3d norm;
    (Matrix4d(projection) * Matrix4d(translation) * Matrix4d(viewing))
        .multFull(Pnt3d(point[0], point[1], point[2]), norm);
    Real64 const x = (norm[0] + 1) / 2 * width + view.viewport->calcPixelLeft();
    Real64 const y = (norm[1] + 1) / 2 * height + view.viewport->calcPixelBottom();
    return Vec2f(x, view.window->getHeight() - y);
}

struct Pixel
{
    Int32 x, y;
};

Pixel random_pixel(RandomNumbers &random, View const &view)
{
    Int32 const left = view.viewport->calcPixelLeft();
    Int32 const bottom = view.viewport->calcPixelBottom();
    UInt32 const width = static_cast<UInt32>(view.viewport->calcPixelWidth());
    UInt32 const height = static_cast<UInt32>(view.viewport->calcPixelHeight());
    return {left + static_cast<Int32>(random.below(width + 1)),
            view.window->getHeight() - bottom - static_cast<Int32>(random.below(height + 1))};
}

class AnyCamera : public ::testing::TestWithParam<View (*)(RandomNumbers &)>
{
};

TEST_P(AnyCamera, PointsOnTheRayThroughAPixelProjectToThePixel)
{
    RandomNumbers random(1);
    for(int i = 0; i < 500; ++i)
    {
        View const view = GetParam()(random);
        Pixel const pixel = random_pixel(random, view);
        Line ray;
        Real32 length = 0;
        ASSERT_TRUE(view.camera->calcViewRay(ray, pixel.x, pixel.y, *view.viewport, &length));
        for(Real32 const depth : {0.3f, 2.f, 50.f, 99.f})
        {
            Vec2f const shown = pixel_of(view, ray.getPoint(depth));
            // What remains are the units in the last place of the points and of the ray.
            Real32 const tolerance = depth < 1 ? 2e-2f : 1e-2f;
            EXPECT_NEAR(shown[0], static_cast<Real32>(pixel.x), tolerance);
            EXPECT_NEAR(shown[1], static_cast<Real32>(pixel.y), tolerance);
        }
    }
}

TEST_P(AnyCamera, RaysRunFromTheNearToTheFarPlane)
{
    RandomNumbers random(2);
    for(int i = 0; i < 200; ++i)
    {
        View const view = GetParam()(random);
        Pixel const pixel = random_pixel(random, view);
        Line ray;
        Real32 length = 0;
        ASSERT_TRUE(view.camera->calcViewRay(ray, pixel.x, pixel.y, *view.viewport, &length));
        EXPECT_NEAR(ray.getDirection().length(), 1.f, 1e-6f);
        Pnt3f const eye(view.pose[3][0], view.pose[3][1], view.pose[3][2]);
        Vec3f const back(view.pose[2][0], view.pose[2][1], view.pose[2][2]);
        EXPECT_NEAR((eye - ray.getPosition()).dot(back), 0.1f, 1e-5f);
        EXPECT_NEAR((eye - ray.getPoint(length)).dot(back), 100.f, 2e-2f);
    }
}

TEST_P(AnyCamera, FrustumHoldsWhatProjectsIntoTheViewport)
{
    RandomNumbers random(3);
    int inside = 0;
    for(int i = 0; i < 200; ++i)
    {
        View const view = GetParam()(random);
        UInt32 const width = static_cast<UInt32>(view.viewport->calcPixelWidth());
        UInt32 const height = static_cast<UInt32>(view.viewport->calcPixelHeight());
        Matrix projection, viewing;
        view.camera->getProjection(projection, width, height);
        view.camera->getViewing(viewing, width, height);
        FrustumVolume frustum;
        view.camera->getFrustum(frustum, width, height);
        for(int j = 0; j < 20; ++j)
        {
            Pnt3f const eyePoint = random.point(-3, 3) + Vec3f(0, 0, -3);
            Pnt3f norm;
            projection.multFull(eyePoint, norm);
            Real32 const farthest =
                std::max({std::abs(norm[0]), std::abs(norm[1]), std::abs(norm[2])});
            if(std::abs(farthest - 1) < 1e-3f || std::abs(eyePoint[2]) < 0.2f)
                continue;
            bool const shown = farthest < 1 && eyePoint[2] < 0;
            inside += shown ? 1 : 0;
            EXPECT_EQ(frustum.intersect(view.pose * eyePoint), shown);
        }
    }
    EXPECT_GT(inside, 500);
}

INSTANTIATE_TEST_SUITE_P(Projections, AnyCamera,
                         ::testing::Values(&random_perspective, &random_orthographic),
                         [](auto const &suite)
                         { return suite.index == 0 ? "Perspective" : "Orthographic"; });

// --- compared with plain trigonometry ---

TEST(PerspectiveCamera, RayLeavesTheEyeAtTheAngleOfThePixel)
{
    RandomNumbers random(4);
    for(int i = 0; i < 300; ++i)
    {
        View const view = random_perspective(random);
        Pixel const pixel = random_pixel(random, view);
        double const width = view.viewport->calcPixelWidth();
        double const height = view.viewport->calcPixelHeight();
        double const fov = dynamic_cast<PerspectiveCamera &>(*view.camera).getFov();
        // Distance of the picture from the eye, in pixels.
        double const focal = height / 2 / std::tan(fov / 2);
        double const column = pixel.x - view.viewport->calcPixelLeft() - width / 2;
        double const row =
            view.window->getHeight() - pixel.y - view.viewport->calcPixelBottom() - height / 2;
        Vec3f expected = view.pose * Vec3f(static_cast<Real32>(column), static_cast<Real32>(row),
                                           static_cast<Real32>(-focal));
        expected.normalize();
        Line ray;
        ASSERT_TRUE(view.camera->calcViewRay(ray, pixel.x, pixel.y, *view.viewport));
        EXPECT_TRUE(ray.getDirection().equals(expected, 2e-6f));
    }
}

// Single precision projects all of these as if far were infinite, but for the first two.
class FarAway : public ::testing::TestWithParam<Real32>
{
  protected:
    View random()
    {
        CameraPtr<PerspectiveCamera> const camera =
            make_perspective(_numbers.real(0.2f, 2.f), 0.1f, GetParam());
        return random_view(_numbers, camera.get());
    }

    RandomNumbers _numbers{6};
    LogCapture const _log;
};

TEST_P(FarAway, RaysLeaveTheEyeThroughTheirPixels)
{
    for(int i = 0; i < 300; ++i)
    {
        View const view = random();
        Pixel const pixel = random_pixel(_numbers, view);
        Line ray;
        ASSERT_TRUE(view.camera->calcViewRay(ray, pixel.x, pixel.y, *view.viewport));
        Pnt3f const eye(view.pose[3][0], view.pose[3][1], view.pose[3][2]);
        Vec3f const back(view.pose[2][0], view.pose[2][1], view.pose[2][2]);
        EXPECT_NEAR((eye - ray.getPosition()).dot(back), 0.1f, 1e-5f);
        EXPECT_LT(ray.getDirection().dot(back), 0.f);
        EXPECT_TRUE(ray.getDirection().cross(ray.getPosition() - eye).equals(Vec3f(), 2e-6f));
        for(Real32 const depth : {2.f, 50.f, 1e5f})
        {
            Vec2f const shown = pixel_of(view, ray.getPoint(depth));
            EXPECT_NEAR(shown[0], static_cast<Real32>(pixel.x), 1e-2f);
            EXPECT_NEAR(shown[1], static_cast<Real32>(pixel.y), 1e-2f);
        }
    }
    EXPECT_TRUE(_log.texts().empty());
}

TEST_P(FarAway, RaysEndAtTheFarPlane)
{
    // The projection holds far ever more coarsely until it holds it no longer.
    Real64 const tolerance = GetParam() < 1e6f ? 0.1 : GetParam() < 1e7f ? 0.6 : 1e-5;
    for(int i = 0; i < 300; ++i)
    {
        View const view = random();
        Pixel const pixel = random_pixel(_numbers, view);
        Line ray;
        Real32 length = 0;
        ASSERT_TRUE(view.camera->calcViewRay(ray, pixel.x, pixel.y, *view.viewport, &length));
        Vec3f const back(view.pose[2][0], view.pose[2][1], view.pose[2][2]);
        EXPECT_NEAR(-ray.getDirection().dot(back) * length / GetParam(), 1, tolerance);
    }
}

TEST_P(FarAway, FrustumStillHasItsOtherPlanes)
{
    for(int i = 0; i < 100; ++i)
    {
        View const view = random();
        FrustumVolume frustum;
        view.camera->getFrustum(frustum, 400, 300);
        EXPECT_TRUE(frustum.intersect(view.pose * Pnt3f(0, 0, -0.11f)));
        EXPECT_TRUE(frustum.intersect(view.pose * Pnt3f(0, 0, -1e5f)));
        EXPECT_FALSE(frustum.intersect(view.pose * Pnt3f(0, 0, -0.09f)));
        EXPECT_FALSE(frustum.intersect(view.pose * Pnt3f(0, 0, 5)));
        for(Real32 const side : {-1e3f, 1e3f})
        {
            EXPECT_FALSE(frustum.intersect(view.pose * Pnt3f(side, 0, -10)));
            EXPECT_FALSE(frustum.intersect(view.pose * Pnt3f(0, side, -10)));
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Distances, FarAway, ::testing::Values(3e5f, 3e6f, 1e7f, 1e9f, 1e36f));

TEST(OrthographicCamera, RaysAreParallelAndAPixelApart)
{
    RandomNumbers random(5);
    for(int i = 0; i < 300; ++i)
    {
        View const view = random_orthographic(random);
        Pixel const pixel = random_pixel(random, view);
        Real32 const size = dynamic_cast<OrthographicCamera &>(*view.camera).getVerticalSize();
        Real32 const unit = size / view.viewport->calcPixelHeight();
        Line ray, right, below;
        ASSERT_TRUE(view.camera->calcViewRay(ray, pixel.x, pixel.y, *view.viewport));
        ASSERT_TRUE(view.camera->calcViewRay(right, pixel.x + 1, pixel.y, *view.viewport));
        ASSERT_TRUE(view.camera->calcViewRay(below, pixel.x, pixel.y + 1, *view.viewport));
        EXPECT_TRUE(right.getDirection().equals(ray.getDirection(), 1e-6f));
        Vec3f const x(view.pose[0][0], view.pose[0][1], view.pose[0][2]);
        Vec3f const y(view.pose[1][0], view.pose[1][1], view.pose[1][2]);
        EXPECT_TRUE((right.getPosition() - ray.getPosition()).equals(x * unit, 1e-5f));
        EXPECT_TRUE((ray.getPosition() - below.getPosition()).equals(y * unit, 1e-5f));
    }
}

TEST(PerspectiveCamera, OpensByItsAngleFromBottomToTop)
{
    CameraPtr<PerspectiveCamera> const camera = make_perspective(1.5707964f, 1.f, 10.f);
    Matrix projection;
    camera->getProjection(projection, 200, 100);
    Pnt3f norm;
    projection.multFull(Pnt3f(4, 2, -2), norm);
    EXPECT_TRUE(norm.equals(Pnt3f(1, 1, 10.f / 9 * (1 - 1 / 2.f) * 2 - 1), 1e-6f)) << norm[2];
}

// --- what cannot be shown ---

TEST(Camera, WithoutABeaconStandsInTheOriginOfTheWorld)
{
    CameraPtr<PerspectiveCamera> const camera(PerspectiveCamera::create());
    Matrix viewing = translation(1, 2, 3);
    camera->getViewing(viewing, 10, 10);
    EXPECT_EQ(viewing, Matrix());
}

TEST(Camera, ForgetsABeaconThatIsGone)
{
    CameraPtr<PerspectiveCamera> const camera(PerspectiveCamera::create());
    {
        NodePtr const beacon = make_transform(translation(1, 2, 3));
        camera->setBeacon(beacon);
        EXPECT_NE(camera->getBeacon(), nullptr);
    }
    EXPECT_EQ(camera->getBeacon(), nullptr);
}

TEST(Camera, SeesThroughTheTransformsAboveItsBeacon)
{
    NodePtr const beacon = make_transform(translation(0, 0, 4));
    NodePtr const root = make_transform(translation(1, 2, 3), {beacon});
    CameraPtr<OrthographicCamera> const camera(OrthographicCamera::create());
    camera->setBeacon(beacon);
    Matrix viewing;
    camera->getViewing(viewing, 10, 10);
    EXPECT_EQ(viewing, translation(-1, -2, -7));
}

TEST(Camera, HasNoRaysInAViewportWithoutPixels)
{
    CameraPtr<PerspectiveCamera> const camera(PerspectiveCamera::create());
    ViewportPtr const viewport = make_viewport(0, 0, -1, 10);
    Line ray(Pnt3f(1, 2, 3), Vec3f(0, 1, 0));
    Real32 length = 7;
    EXPECT_FALSE(camera->calcViewRay(ray, 0, 0, *viewport, &length));
    EXPECT_EQ(ray.getPosition(), Pnt3f(1, 2, 3));
    EXPECT_EQ(length, 7.f);
}

TEST(Camera, FrustumDropsWhatIsNoPlaneAndKeepsTheRest)
{
    /// Tells left and right, nothing else.
    class Flat : public PerspectiveCamera
    {
      public:
        void getProjection(Matrix &result, UInt32, UInt32) const override
        {
            result = Matrix(Vec4f(1, 0, 0, 0), Vec4f(), Vec4f(), Vec4f(0, 0, 0, 1));
        }
    };
    UnrecordedRefPtr<Flat> const camera(TransitPtr<Flat>(new Flat));
    FrustumVolume frustum;
    camera->getFrustum(frustum, 10, 10);
    EXPECT_TRUE(frustum.intersect(Pnt3f(0.9f, 1e9f, -1e9f)));
    EXPECT_FALSE(frustum.intersect(Pnt3f(1.1f, 0, 0)));
    EXPECT_FALSE(frustum.intersect(Pnt3f(-1.1f, 0, 0)));
}

TEST(Camera, SingularBeaconIsLoggedAndSeesFromTheOrigin)
{
    LogCapture const log;
    NodePtr const beacon = make_transform(scaling(0, 1, 1));
    CameraPtr<PerspectiveCamera> const camera(PerspectiveCamera::create());
    camera->setBeacon(beacon);
    ViewportPtr const viewport = make_viewport(0, 0, 99, 99);
    Line ray;
    EXPECT_TRUE(camera->calcViewRay(ray, 50, 50, *viewport));
    EXPECT_TRUE(ray.getDirection().equals(Vec3f(0, 0, -1), 1e-6f));
    EXPECT_EQ(log.texts(), std::vector<std::string>{Singular});
}

TEST(PerspectiveCamera, ProjectsNothingWhereItCannot)
{
    struct Row
    {
        Real32 fov, near, far;
        UInt32 width, height;
    };
    for(Row const &row :
        {Row{1, 1, 10, 0, 10}, Row{1, 1, 10, 10, 0}, Row{0, 1, 10, 10, 10}, Row{4, 1, 10, 10, 10},
         Row{NAN, 1, 10, 10, 10}, Row{1, 0, 10, 10, 10}, Row{1, 10, 1, 10, 10},
         Row{1, NAN, 10, 10, 10}, Row{1, 1, INFINITY, 10, 10}})
    {
        Matrix projection = translation(1, 2, 3);
        make_perspective(row.fov, row.near, row.far)
            ->getProjection(projection, row.width, row.height);
        EXPECT_EQ(projection, Matrix());
    }
}

TEST(OrthographicCamera, ProjectsNothingWhereItCannot)
{
    struct Row
    {
        Real32 size, near, far;
        UInt32 width, height;
    };
    for(Row const &row :
        {Row{1, 1, 10, 0, 10}, Row{1, 1, 10, 10, 0}, Row{0, 1, 10, 10, 10}, Row{-1, 1, 10, 10, 10},
         Row{NAN, 1, 10, 10, 10}, Row{INFINITY, 1, 10, 10, 10}, Row{1, 1, 1, 10, 10},
         Row{1, NAN, 10, 10, 10}})
    {
        Matrix projection = translation(1, 2, 3);
        make_orthographic(row.size, row.near, row.far)
            ->getProjection(projection, row.width, row.height);
        EXPECT_EQ(projection, Matrix());
    }
}
} // namespace
