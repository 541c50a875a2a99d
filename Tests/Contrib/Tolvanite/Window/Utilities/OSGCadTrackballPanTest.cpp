// How the trackball pans.

#include <cmath>
#include <optional>

#include "LogCapture.h"
#include "MathPrinters.h"
#include "RandomNumbers.h"

#include "OpenTrackball.h"

using namespace OSG;
using namespace OSG::Test;

namespace
{
// --- panning with perspective ---

TEST_F(Cad, GrabsThePointOfTheScene)
{
    NodePtr const near = make_node(
        make_geometry(one_primitive(TrianglesPrimitive, {{-9, -9, 4}, {9, -9, 4}, {0, 9, 4}})));
    view.root->addChild(near);
    Line const ray = view.ray(350, 260);
    Pnt3f const grabbed = ray.getPoint((4 - ray.getPosition()[2]) / ray.getDirection()[2]);
    drag(1, 350, 260, 400, 300);
    auto const [x, y] = pixel_of(view, grabbed);
    EXPECT_NEAR(x, 400, 1e-3);
    EXPECT_NEAR(y, 300, 1e-3);
}

TEST_F(Cad, GrabsThePlaneThroughTheOriginWhereTheSceneIsNotToBeAsked)
{
    NodePtr const near = make_node(
        make_geometry(one_primitive(TrianglesPrimitive, {{-9, -9, 4}, {9, -9, 4}, {0, 9, 4}})));
    view.root->addChild(near);
    navigator.setClickNoIntersect(true);
    Line const ray = view.ray(350, 260);
    Pnt3f const grabbed = ray.getPoint(-ray.getPosition()[2] / ray.getDirection()[2]);
    drag(1, 350, 260, 400, 300);
    auto const [x, y] = pixel_of(view, grabbed);
    EXPECT_NEAR(x, 400, 1e-3);
    EXPECT_NEAR(y, 300, 1e-3);
}

TEST_F(Cad, NeverCastsARayWhereTheSceneIsNotToBeAsked)
{
    // The core shows the tree that it is in, so every walk through the scene logs a warning.
    NodePtr const loop = make_visit(view.root);
    view.root->addChild(loop);
    LogCapture log;
    navigator.setClickNoIntersect(true);
    drag(1, 350, 260, 400, 300);
    EXPECT_TRUE(log.texts().empty());
    navigator.setClickNoIntersect(false);
    drag(1, 350, 260, 400, 300);
    EXPECT_EQ(log.texts().size(), 1u);
    view.root->subChild(loop);
}

TEST_F(Cad, GrabsThePlaneThroughTheOriginWhereThereIsNothing)
{
    view.viewport->setRoot(make_group());
    Line const ray = view.ray(350, 260);
    Pnt3f const grabbed = ray.getPoint(-ray.getPosition()[2] / ray.getDirection()[2]);
    drag(1, 350, 260, 100, 20);
    auto const [x, y] = pixel_of(view, grabbed);
    EXPECT_NEAR(x, 100, 1e-3);
    EXPECT_NEAR(y, 20, 1e-3);
}

TEST_F(Cad, PansHoldThePointHoweverFarTheViewReaches)
{
    RandomNumbers random(52);
    LogCapture const log;
    for(Real32 const far : {3e6f, 3.5e6f, 1e7f, 1e9f})
    {
        view.setCamera(make_perspective(0.8f, 0.1f, far).get());
        for(int round = 0; round < 20; ++round)
        {
            Pnt3f const at = random.point(-1, 1);
            engine->set(at + random.vector() * 4.f + Vec3f(0, 0, 9), at, Vec3f(0, 1, 0));
            navigator.updateCameraTransformation();
            Line const ray = view.ray(320, 240);
            Pnt3f const grabbed = ray.getPoint(-ray.getPosition()[2] / ray.getDirection()[2]);
            drag(1, 320, 240, 400, 300);
            auto const [x, y] = pixel_of(view, grabbed);
            EXPECT_NEAR(x, 400, 1e-3) << far;
            EXPECT_NEAR(y, 300, 1e-3) << far;
            navigator.buttonRelease(1, 400, 300);
        }
    }
    EXPECT_TRUE(log.texts().empty());
}

TEST_F(Cad, AScriptOfPansKeepsThePointUnderThePointer)
{
    RandomNumbers random(51);
    for(int round = 0; round < 100; ++round)
    {
        // Another place each time, also in a part of the window.
        view.viewport->setRight(static_cast<Real32>(300 + random.below(300)));
        view.viewport->setTop(static_cast<Real32>(200 + random.below(250)));
        view.viewport->setLeft(static_cast<Real32>(random.below(40)));
        view.viewport->setBottom(static_cast<Real32>(random.below(40)));
        Pnt3f const at = random.point(-1, 1);
        engine->set(at + random.vector() * 4.f + Vec3f(0, 0, 9), at, Vec3f(0, 1, 0));
        view.navigator.updateCameraTransformation();
        Int32 const left = view.viewport->calcPixelLeft();
        Int32 const top = 480 - view.viewport->calcPixelBottom() - view.viewport->calcPixelHeight();
        auto const pixel = [&random, &view = view, left, top]
        {
            Int32 const x = left + static_cast<Int32>(random.below(
                                       static_cast<UInt32>(view.viewport->calcPixelWidth())));
            Int32 const y = top + static_cast<Int32>(random.below(
                                      static_cast<UInt32>(view.viewport->calcPixelHeight())));
            return std::pair<Int16, Int16>(x, y);
        };
        auto const [pressX, pressY] = pixel();
        Line const ray = view.ray(pressX, pressY);
        Pnt3f const grabbed = ray.getPoint(-ray.getPosition()[2] / ray.getDirection()[2]);
        if(!(grabbed[1] > -8.9f && grabbed[1] < 8.9f - 2.f * std::abs(grabbed[0])))
            continue; // beside the triangle: another plane
        navigator.buttonPress(1, pressX, pressY);
        for(int i = 0; i < 10; ++i)
        {
            auto const [toX, toY] = pixel();
            navigator.moveTo(toX, toY);
            auto const [x, y] = pixel_of(view, grabbed);
            EXPECT_NEAR(x, toX, 1e-3);
            EXPECT_NEAR(y, toY, 1e-3);
        }
        navigator.buttonRelease(1, pressX, pressY);
    }
}

// --- panning without perspective ---

TEST_F(Cad, PansAnOrthographicCameraToTheRayOfTheRule)
{
    orthographic(12);
    navigator.buttonPress(1, 100, 100);
    Line const ray = view.ray(320 - 130 + 100, 100 - 90 + 240 + 1);
    navigator.moveTo(130, 90);
    Pnt3f const expected(ray.getPosition()[0], ray.getPosition()[1], 10);
    EXPECT_TRUE(engine->getFrom().equals(expected, 1e-5f));
    EXPECT_TRUE(engine->getAt().equals(Pnt3f(expected[0], expected[1], 0), 1e-5f));
    // 30 pixels of 1/40 unit to the left; 10 down and the one that the rule adds.
    EXPECT_TRUE(engine->getFrom().equals(Pnt3f(-0.75f, -0.275f, 10), 1e-5f));
    EXPECT_TRUE(view.beacon->getToWorld().equals(translation(-0.75f, -0.275f, 10), 1e-5f));
}

TEST_F(Cad, APanOfAnOrthographicCameraGoesOnFromTheLastOne)
{
    orthographic(12);
    navigator.buttonPress(1, 100, 100);
    navigator.moveTo(130, 90);
    Pnt3f const between = engine->getFrom();
    navigator.moveTo(140, 80);
    EXPECT_TRUE((engine->getFrom() - between).equals(Vec3f(-0.25f, -0.275f, 0), 1e-5f));
}

TEST_F(Cad, APointerAtRestPansNoOrthographicCamera)
{
    orthographic(12);
    EXPECT_FALSE(engine->translateOrtho(50, 60, 50, 60, &navigator));
    navigator.buttonPress(1, 100, 100);
    navigator.moveTo(100, 100);
    EXPECT_EQ(engine->getFrom(), Pnt3f(0, 0, 10));
    // The next pan still counts from the press.
    navigator.moveTo(140, 99);
    EXPECT_TRUE(engine->getFrom().equals(Pnt3f(-1, -0.05f, 10), 1e-5f));
}

TEST_F(Cad, PansAPartOfAWindowAsAWholeWindow)
{
    orthographic(12);
    // 640 by 480 pixels, 30 from the left and 170 from the top.
    view.window->setSize(800, 700);
    view.viewport->setLeft(30);
    view.viewport->setRight(669);
    view.viewport->setBottom(50);
    view.viewport->setTop(529);
    navigator.buttonPress(1, 130, 270);
    navigator.moveTo(160, 260);
    EXPECT_TRUE(engine->getFrom().equals(Pnt3f(-0.75f, -0.275f, 10), 1e-5f));
    navigator.moveTo(170, 261);
    EXPECT_TRUE(engine->getFrom().equals(Pnt3f(-1, -0.275f, 10), 1e-5f));
}

TEST_F(Cad, HalvesOddSizesTowardsZeroWhenItPansAnOrthographicCamera)
{
    orthographic(12);
    view.window->setSize(641, 481);
    navigator.buttonPress(1, 100, 100);
    navigator.moveTo(130, 90);
    // The ray goes through (320 - 30, 240 + 10 + 1); the middle of the view lies at (320.5, 240.5).
    Real32 const pixel = 12.f / 481;
    EXPECT_TRUE(engine->getFrom().equals(Pnt3f(-30.5f * pixel, -10.5f * pixel, 10), 1e-5f));
}

/// A class derived from OrthographicCamera with another type.
class DerivedCamera : public OrthographicCamera
{
  public:
    static UnrecordedRefPtr<DerivedCamera> create()
    {
        DerivedCamera *const camera = new DerivedCamera;
        camera->enterSystem(0);
        return UnrecordedRefPtr<DerivedCamera>(camera);
    }
    FieldContainerType const &getType() const override { return Camera::getClassType(); }
    FieldContainerType &getType() override { return Camera::getClassType(); }
};

TEST_F(Cad, CamerasDerivedFromTheOrthographicOneCountAsOthers)
{
    UnrecordedRefPtr<DerivedCamera> const camera = DerivedCamera::create();
    camera->setVerticalSize(12);
    camera->setNear(0.1f);
    camera->setFar(100);
    view.setCamera(camera.get());
    navigator.buttonPress(3, 1, 1);
    EXPECT_EQ(camera->getVerticalSize(), 12.f);
    EXPECT_EQ(engine->getDistance(), 7.5f);
}
} // namespace
