#include "OSGCadTrackballEngine.h"

#include <cmath>
#include <optional>

#include <gtest/gtest.h>

#include "LogCapture.h"
#include "MathPrinters.h"
#include "NavigatedView.h"
#include "RandomNumbers.h"

using namespace OSG;
using namespace OSG::Test;

namespace
{
constexpr Real32 Pi = 3.14159265f;

/// A trackball whose protected parts are open, and which counts the poses that are set.
class OpenTrackball : public CadTrackballEngine
{
  public:
    using CadTrackballEngine::CadTrackballEngine;
    using CadTrackballEngine::calcDeltas;
    using CadTrackballEngine::getIntersectionPoint;
    using CadTrackballEngine::key_conversion;
    using CadTrackballEngine::projectToSphere;
    using CadTrackballEngine::set;
    using CadTrackballEngine::translateOrtho;

    static UnrecordedRefPtr<OpenTrackball> create()
    {
        return UnrecordedRefPtr<OpenTrackball>(TransitPtr<OpenTrackball>(new OpenTrackball(0.8f)));
    }
    void set(Pnt3f from, Pnt3f at, Vec3f up) override
    {
        ++sets;
        CadTrackballEngine::set(from, at, up);
    }
    Int32 state() const { return _state; }

    int sets = 0;
};

/// Looks from (0, 0, 10) at the origin; a motion factor of 0.25.
struct Cad : ::testing::Test
{
    Cad()
    {
        view.navigator.setMotionFactor(0.25f);
        engine->set(Pnt3f(0, 0, 10), Pnt3f(0, 0, 0), Vec3f(0, 1, 0));
        view.navigator.setEngine(engine);
    }
    void orthographic(Real32 size)
    {
        ortho = make_orthographic(size, 0.1f, 1000);
        view.setCamera(ortho.get());
        view.navigator.updateCameraTransformation();
    }
    void drag(Int16 button, Int16 fromX, Int16 fromY, Int16 toX, Int16 toY)
    {
        navigator.buttonPress(button, fromX, fromY);
        navigator.moveTo(toX, toY);
    }

    NavigatedView view;
    Navigator &navigator = view.navigator;
    UnrecordedRefPtr<OpenTrackball> const engine = OpenTrackball::create();
    CameraPtr<OrthographicCamera> ortho;
};

// --- pose ---

TEST(CadTrackball, StartsAtDistanceOneFromTheOrigin)
{
    UnrecordedRefPtr<CadTrackballEngine> const engine(CadTrackballEngine::create(0.8f));
    EXPECT_EQ(engine->getDistance(), 1.f);
    EXPECT_EQ(engine->getMatrix(), translation(0, 0, 1));
    EXPECT_EQ(engine->getFrom(), Pnt3f(0, 0, 1));
    EXPECT_EQ(engine->getAt(), Pnt3f(0, 0, 0));
    EXPECT_EQ(engine->getUp(), Vec3f(0, 1, 0));
    EXPECT_EQ(engine->wheel_factor_ortho(), 1.2f);
    EXPECT_EQ(engine->wheel_factor_persp(), 10.f);
}

TEST_F(Cad, OrbitsThePointThatItLooksAt)
{
    EXPECT_EQ(engine->getDistance(), 10.f);
    engine->setDistance(4);
    EXPECT_EQ(engine->getFrom(), Pnt3f(0, 0, 4));
    EXPECT_EQ(engine->getAt(), Pnt3f(0, 0, 0));
}

TEST_F(Cad, AfterATurnThePointsAreThoseOfTheLastMatrix)
{
    engine->rotate(0, 0, 0.3f, 0);
    EXPECT_EQ(engine->getFrom(), Pnt3f(0, 0, 10));
    EXPECT_EQ(engine->getUp(), Vec3f(0, 1, 0));
    engine->getMatrix();
    EXPECT_LT(engine->getFrom()[2], 9.9f);
    engine->translateXY(1, 0);
    EXPECT_TRUE(engine->getAt().equals(Pnt3f(0, 0, 0), 1e-5f));
    engine->translateZ(5);
    EXPECT_EQ(engine->getDistance(), 15.f);
}

TEST_F(Cad, SettersWorkOnThePointsAsTheyShow)
{
    engine->translateXY(3, 0);
    // The shift does not show yet, so it is lost.
    engine->setFrom(Pnt3f(0, 0, 20));
    EXPECT_EQ(engine->getMatrix(), translation(0, 0, 20));
    EXPECT_EQ(engine->getDistance(), 20.f);
    EXPECT_EQ(engine->sets, 2);
}

TEST_F(Cad, AMatrixPutsTheCentreAsFarAwayAsTheOrigin)
{
    engine->set(translation(3, 0, 4));
    EXPECT_EQ(engine->getDistance(), 5.f);
    EXPECT_TRUE(engine->getAt().equals(Pnt3f(3, 0, -1), 1e-6f));
    EXPECT_EQ(engine->getMatrix(), translation(3, 0, 4));
    EXPECT_EQ(engine->sets, 2);
}

TEST_F(Cad, ACameraInTheOriginHasNoDistanceAndNoNewPose)
{
    LogCapture const log(LOG_NOTICE);
    engine->set(translation(0, 0, 0));
    EXPECT_EQ(engine->getDistance(), 0.f);
    EXPECT_EQ(log.texts(LOG_NOTICE),
              std::vector<std::string>{"CadTrackballEngine: set(.,.,.), failed"});
    // The centre is still where it was.
    EXPECT_EQ(engine->getMatrix(), Matrix());
}

TEST_F(Cad, SaysWhenThreePartsGiveNoPose)
{
    LogCapture const log(LOG_NOTICE);
    Matrix const before = engine->getMatrix();
    engine->set(Pnt3f(1, 2, 3), Pnt3f(1, 2, 3), Vec3f(0, 1, 0));
    engine->set(Pnt3f(1, 2, 3), Pnt3f(1, 2, 7), Vec3f(0, 0, 1));
    EXPECT_EQ(log.texts(LOG_NOTICE),
              (std::vector<std::string>{"CadTrackballEngine: set(.,.,.), failed",
                                        "CadTrackballEngine: set(.,.,.), failed"}));
    EXPECT_EQ(engine->getMatrix(), before);
    EXPECT_EQ(engine->getDistance(), 10.f);
}

TEST_F(Cad, NoticesAreHeardOnlyWhereTheLogHearsThem)
{
    LogCapture const log(LOG_WARNING);
    engine->set(Pnt3f(1, 2, 3), Pnt3f(1, 2, 3), Vec3f(0, 1, 0));
    navigator.keyPress(77, 1, 1);
    EXPECT_TRUE(log.texts().empty());
}

// --- turning ---

TEST_F(Cad, TurnsOfNothingTouchNothing)
{
    Matrix const before = engine->getMatrix();
    engine->rotate(0.25f, 0.5f, 0.25f, 0.5f);
    engine->rotate(1e-6f, 0, 0, 1e-6f);
    EXPECT_EQ(engine->getMatrix(), before);
}

TEST_F(Cad, ADragToTheRightTakesTheCameraToTheLeft)
{
    drag(0, 320, 240, 400, 240);
    EXPECT_EQ(engine->state(), 1);
    EXPECT_LT(engine->getMatrix()[3][0], -1.f);
    EXPECT_NEAR(engine->getMatrix()[3][1], 0.f, 1e-5f);
    Pnt3f const from = engine->getFrom();
    // Twice the angle of half the chord on a ball of 0.8.
    Real32 const z = std::sqrt(0.64f - 0.0625f);
    Real32 const angle = 2 * std::asin(std::hypot(0.25f, 0.8f - z) / 1.6f);
    EXPECT_TRUE(from.equals(Pnt3f(-10 * std::sin(angle), 0, 10 * std::cos(angle)), 1e-4f));
}

TEST_F(Cad, TurnsByNoMoreThanHalfAWay)
{
    engine->rotate(0.1f, 0, 1000, 0);
    EXPECT_TRUE(
        engine->getMatrix().equals(rotation(Vec3f(0, 1, 0), Pi) * translation(0, 0, 10), 1e-4f));
}

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
    // A scene that cannot be walked without a warning: a core that visits the tree that it is in.
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
    // The last pan still counts from the press.
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

/// An orthographic camera by its class, of another type.
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

// --- zooming ---

TEST_F(Cad, ZoomsByTheWheelInUnitsOfTheMotionFactor)
{
    navigator.buttonPress(3, 1, 1);
    EXPECT_EQ(engine->getDistance(), 7.5f);
    navigator.buttonPress(4, 1, 1);
    navigator.buttonPress(4, 1, 1);
    EXPECT_EQ(engine->getDistance(), 12.5f);
    engine->wheel_factor_persp(4);
    navigator.buttonPress(3, 1, 1);
    EXPECT_EQ(engine->getDistance(), 11.5f);
}

TEST_F(Cad, TheDistanceMayPassZero)
{
    for(int i = 0; i < 5; ++i)
        navigator.buttonPress(3, 1, 1);
    EXPECT_EQ(engine->getDistance(), -2.5f);
    EXPECT_EQ(engine->getFrom(), Pnt3f(0, 0, -2.5f));
    EXPECT_EQ(engine->getAt(), Pnt3f(0, 0, 0));
}

TEST_F(Cad, ZoomsByTheSquareOfTheDrag)
{
    drag(2, 320, 240, 300, 240 - 60);
    EXPECT_EQ(engine->state(), 3);
    EXPECT_FLOAT_EQ(engine->getDistance(), 10 + 0.25f * 0.25f * 0.25f * 100);
    navigator.moveTo(300, 240);
    EXPECT_FLOAT_EQ(engine->getDistance(), 10);
    navigator.moveTo(400, 240);
    EXPECT_FLOAT_EQ(engine->getDistance(), 10);
}

TEST_F(Cad, ZoomsAnOrthographicCameraByItsPicture)
{
    orthographic(12);
    engine->wheel_factor_ortho(2);
    navigator.buttonPress(3, 1, 1);
    EXPECT_EQ(ortho->getVerticalSize(), 6.f);
    navigator.buttonPress(4, 1, 1);
    EXPECT_EQ(ortho->getVerticalSize(), 12.f);
    // The drag has ratios of its own; one that is only sideways counts as upwards.
    drag(2, 320, 240, 320, 250);
    EXPECT_FLOAT_EQ(ortho->getVerticalSize(), 12 * 0.8333333f);
    navigator.moveTo(320, 240);
    EXPECT_FLOAT_EQ(ortho->getVerticalSize(), 12);
    navigator.moveTo(400, 240);
    EXPECT_FLOAT_EQ(ortho->getVerticalSize(), 14.4f);
    EXPECT_EQ(engine->getDistance(), 10.f);
}

// --- clicks ---

TEST_F(Cad, AClickCentresTheOrbitOnThePoint)
{
    navigator.setClickCenter(true);
    for(Int16 const button : {0, 1, 2})
    {
        engine->set(Pnt3f(0, 0, 10), Pnt3f(0, 0, 0), Vec3f(0, 1, 0));
        view.navigator.updateCameraTransformation();
        Line const ray = view.ray(400, 260);
        navigator.buttonPress(button, 400, 260);
        navigator.buttonRelease(0, 400, 260);
        Pnt3f const clicked = ray.getPoint(-ray.getPosition()[2] / ray.getDirection()[2]);
        EXPECT_TRUE(engine->getAt().equals(clicked, 1e-4f)) << button;
        EXPECT_TRUE(engine->getFrom().equals(Pnt3f(0, 0, 10), 1e-4f)) << button;
        EXPECT_EQ(engine->state(), 0);
    }
}

TEST_F(Cad, NothingElseCentresTheOrbit)
{
    navigator.setClickCenter(true);
    navigator.buttonPress(0, 400, 260);
    navigator.moveTo(401, 260);
    navigator.moveTo(400, 260);
    int const sets = engine->sets;
    navigator.buttonRelease(0, 400, 260); // it has moved
    navigator.buttonPress(3, 400, 260);
    navigator.buttonRelease(3, 400, 260); // nothing was begun
    navigator.setClickCenter(false);
    navigator.buttonPress(0, 400, 260);
    navigator.buttonRelease(0, 400, 260); // not asked for
    navigator.setClickCenter(true);
    view.viewport->setRoot(make_group());
    navigator.buttonPress(0, 400, 260);
    navigator.buttonRelease(0, 400, 260); // nothing hit
    EXPECT_EQ(engine->sets, sets);
}

TEST_F(Cad, AnotherButtonNeitherMakesNorEndsAClick)
{
    navigator.setClickCenter(true);
    int const sets = engine->sets;
    navigator.buttonPress(0, 400, 260);
    navigator.buttonPress(5, 10, 10);
    navigator.buttonRelease(5, 20, 20);
    EXPECT_EQ(engine->state(), 1);
    EXPECT_EQ(engine->sets, sets);
    navigator.buttonRelease(0, 400, 260);
    EXPECT_EQ(engine->sets, sets + 1); // still a click
    navigator.buttonPress(0, 400, 260);
    navigator.moveTo(401, 260);
    navigator.buttonPress(5, 401, 260);
    navigator.buttonRelease(0, 401, 260);
    EXPECT_EQ(engine->sets, sets + 1); // still a drag
}

TEST_F(Cad, AnotherButtonDoesNotInterruptATurn)
{
    drag(0, 320, 240, 400, 200);
    Matrix const undisturbed = engine->getMatrix();
    navigator.buttonRelease(0, 400, 200);
    engine->set(Pnt3f(0, 0, 10), Pnt3f(0, 0, 0), Vec3f(0, 1, 0));
    navigator.buttonPress(0, 320, 240);
    navigator.buttonPress(7, 10, 10);
    navigator.buttonRelease(7, 10, 10);
    navigator.moveTo(400, 200);
    EXPECT_EQ(engine->getMatrix(), undisturbed);
}

// --- operations that a host replaces ---

class HostTrackball : public CadTrackballEngine
{
  public:
    using CadTrackballEngine::calcDeltas;
    using CadTrackballEngine::getIntersectionPoint;
    using CadTrackballEngine::translateOrtho;

    Pnt3f const &getFrom() override { return from ? *from : CadTrackballEngine::getFrom(); }
    Matrix const &getMatrix() override
    {
        return matrix ? *matrix : CadTrackballEngine::getMatrix();
    }
    void setAt(Pnt3f at) override { centers.push_back(at); }

    std::optional<Pnt3f> from;
    std::optional<Matrix> matrix;
    std::vector<Pnt3f> centers;
};

/// As Cad, with an engine of the host.
struct HostCad : ::testing::Test
{
    HostCad()
    {
        engine->set(Pnt3f(0, 0, 10), Pnt3f(0, 0, 0), Vec3f(0, 1, 0));
        navigator.setEngine(engine);
    }

    NavigatedView view;
    Navigator &navigator = view.navigator;
    UnrecordedRefPtr<HostTrackball> const engine{TransitPtr<HostTrackball>(new HostTrackball)};
};

TEST_F(HostCad, SettersReadTheReplacedFrom)
{
    engine->from = Pnt3f(0, 0, 25);
    engine->setUp(Vec3f(0, 1, 0));
    EXPECT_EQ(engine->getDistance(), 25.f);
    engine->from = Pnt3f(0, 0, 40);
    engine->CadTrackballEngine::setAt(Pnt3f(0, 0, 10));
    EXPECT_EQ(engine->getDistance(), 30.f);
}

TEST_F(HostCad, AnOrthographicPanBeginsAtTheReplacedFrom)
{
    CameraPtr<OrthographicCamera> const camera = make_orthographic(12, 0.1f, 1000);
    view.setCamera(camera.get());
    navigator.updateCameraTransformation();
    engine->from = Pnt3f(0, 0, 3);
    EXPECT_TRUE(engine->translateOrtho(100, 100, 140, 101, &navigator));
    engine->from.reset();
    EXPECT_TRUE(engine->getFrom().equals(Pnt3f(-1, 0, 3), 1e-5f));
}

TEST_F(HostCad, AClickCentresThroughTheReplacedSetAt)
{
    navigator.setClickCenter(true);
    navigator.updateCameraTransformation();
    navigator.buttonPress(0, 320, 240);
    navigator.buttonRelease(0, 320, 240);
    ASSERT_EQ(engine->centers.size(), 1u);
    EXPECT_TRUE(engine->centers[0].equals(Pnt3f(0, 0, 0), 1e-4f));
    EXPECT_EQ(engine->getMatrix(), translation(0, 0, 10));
}

TEST_F(HostCad, ThePanAndTheCameraUseTheReplacedMatrix)
{
    engine->matrix = translation(0, 0, 20);
    navigator.updateCameraTransformation();
    EXPECT_EQ(view.beacon->getToWorld(), translation(0, 0, 20));
    navigator.setClickNoIntersect(true);
    engine->getIntersectionPoint(320, 240, &navigator);
    Line const ray = view.ray(420, 180);
    Pnt3f const pointed = ray.getPoint(-ray.getPosition()[2] / ray.getDirection()[2]);
    Real32 x, y;
    engine->calcDeltas(0, 0, 420, 180, x, y, &navigator);
    EXPECT_NEAR(x, -pointed[0], 1e-4f);
    EXPECT_NEAR(y, -pointed[1], 1e-4f);
}

// --- buttons and keys ---

TEST_F(Cad, KeepsItsStateAtButtonsThatItDoesNotKnow)
{
    LogCapture const log(LOG_NOTICE);
    navigator.buttonPress(2, 1, 1);
    navigator.buttonPress(5, 1, 1);
    navigator.buttonPress(-1, 1, 1);
    EXPECT_EQ(engine->state(), 3);
    EXPECT_EQ(log.texts(LOG_NOTICE),
              (std::vector<std::string>{"CadTrackballEngine: buttonPress, unknown button\n",
                                        "CadTrackballEngine: buttonPress, unknown button\n"}));
    navigator.buttonPress(4, 1, 1);
    EXPECT_EQ(engine->state(), 0);
}

TEST_F(Cad, ZoomsByKeysAndKeepsItsState)
{
    navigator.buttonPress(0, 320, 240);
    navigator.keyPress(2, 320, 240);
    EXPECT_EQ(engine->getDistance(), 7.5f);
    navigator.keyPress(3, 320, 240);
    EXPECT_EQ(engine->getDistance(), 10.f);
    navigator.keyPress(0, 320, 240);
    navigator.keyPress(1, 320, 240);
    EXPECT_EQ(engine->getDistance(), 10.f);
    EXPECT_EQ(engine->state(), 1);
}

TEST_F(Cad, KnowsVirtualKeysOfArrowsAndPages)
{
    struct Row
    {
        Int16 virtualKey, key;
    };
    for(Row const &row : {Row{33, 4}, Row{34, 5}, Row{37, 0}, Row{38, 2}, Row{39, 1}, Row{40, 3},
                          Row{36, 36}, Row{2, 2}})
    {
        Int16 key = row.virtualKey;
        engine->key_conversion(key, 0x28);
        EXPECT_EQ(key, row.key);
        key = row.virtualKey;
        engine->key_conversion(key, 0x08);
        EXPECT_EQ(key, row.virtualKey);
    }
}

TEST_F(Cad, SaysWhichKeysItDoesNotKnow)
{
    LogCapture const log(LOG_NOTICE);
    navigator.keyPress(4, 1, 1);
    navigator.keyPress(38, 1, 1);
    navigator.keyPressEx(33, 0x20, 1, 1);
    EXPECT_EQ(log.count("CadTrackballEngine: keyPress, unknown key\n"), 3u);
    EXPECT_EQ(log.texts().size(), 3u);
    navigator.keyPressEx(38, 0x28, 1, 1);
    EXPECT_EQ(log.texts().size(), 3u);
    EXPECT_EQ(engine->getDistance(), 7.5f);
}

// --- what a host may get wrong ---

TEST_F(Cad, MotionsThatAreNoNumbersAreNotMade)
{
    Matrix const before = engine->getMatrix();
    for(Real32 const bad : {NAN, INFINITY, -INFINITY})
    {
        engine->translateXY(bad, 0);
        engine->translateXY(0, bad);
        engine->translateZ(bad);
        engine->setDistance(bad);
        engine->rotate(bad, 0, 0.1f, 0);
        engine->rotate(0, 0, 0.1f, bad);
        EXPECT_EQ(engine->getMatrix(), before);
    }
    engine->translateXY(1, 2);
    engine->translateZ(1);
    EXPECT_EQ(engine->getMatrix(), translation(1, 2, 11));
    engine->translateXY(-1, -2);
    engine->translateZ(-1);
    engine->wheel_factor_persp(NAN);
    navigator.buttonPress(3, 1, 1);
    EXPECT_EQ(engine->getMatrix(), before);
    orthographic(12);
    engine->wheel_factor_ortho(0);
    navigator.buttonPress(3, 1, 1);
    EXPECT_EQ(ortho->getVerticalSize(), 12.f);
}

TEST_F(Cad, APoseTooFarAwayIsNoPose)
{
    LogCapture const log(LOG_NOTICE);
    Matrix const before = engine->getMatrix();
    // The square of the distance is beyond single precision.
    engine->set(Pnt3f(0, 0, 1e30f), Pnt3f(0, 0, 0), Vec3f(0, 1, 0));
    EXPECT_EQ(log.texts(LOG_NOTICE),
              std::vector<std::string>{"CadTrackballEngine: set(.,.,.), failed"});
    EXPECT_EQ(engine->getMatrix(), before);
    EXPECT_EQ(engine->getDistance(), 10.f);
}

TEST_F(Cad, AMotionThatTakesTheCameraBeyondAllNumbersIsNotMade)
{
    engine->setDistance(3e38f);
    engine->translateXY(3e38f, 0);
    // A quarter turn to the right would take the camera to x = 6e38.
    engine->rotate(0, 0, -0.7f, 0);
    engine->translateXY(3e38f, 0);
    engine->setDistance(10);
    EXPECT_EQ(engine->getMatrix(), translation(3e38f, 0, 10));
}

TEST_F(Cad, ABallWithoutARadiusTurnsNothingIntoNoNumber)
{
    for(Real32 const radius : {0.f, -1.f, NAN})
    {
        UnrecordedRefPtr<CadTrackballEngine> const odd(CadTrackballEngine::create(radius));
        odd->rotate(0, 0, 0.1f, 0.2f);
        odd->rotate(0.1f, 0.2f, 0, 0);
        EXPECT_TRUE(NavigationMath::is_finite(odd->getMatrix())) << radius;
    }
}

// --- what holds whatever is done ---

TEST_F(Cad, TurnsKeepTheCentreAndTheDistance)
{
    RandomNumbers random(52);
    engine->set(Pnt3f(5, 6, 7), Pnt3f(1, 2, 3), Vec3f(0, 1, 0));
    Real32 const distance = engine->getDistance();
    navigator.buttonPress(0, 320, 240);
    for(int i = 0; i < 3000; ++i)
    {
        navigator.moveTo(static_cast<Int16>(random.below(640)),
                         static_cast<Int16>(random.below(480)));
        EXPECT_EQ(engine->getDistance(), distance);
        EXPECT_NEAR((engine->getAt() - engine->getFrom()).length(), distance, 2e-3f);
        EXPECT_TRUE(engine->getAt().equals(Pnt3f(1, 2, 3), 2e-3f));
        EXPECT_NEAR(engine->getUp().dot(engine->getAt() - engine->getFrom()), 0.f, 2e-3f);
    }
}

TEST_F(Cad, RandomEventsKeepFromAtAndDistanceTogether)
{
    RandomNumbers random(53);
    for(int i = 0; i < 3000; ++i)
    {
        Int16 const x = static_cast<Int16>(random.below(640));
        Int16 const y = static_cast<Int16>(random.below(480));
        switch(random.below(5))
        {
        case 0:
            navigator.buttonPress(static_cast<Int16>(random.below(5)), x, y);
            break;
        case 1:
            navigator.keyPress(static_cast<Int16>(random.below(4)), x, y);
            break;
        case 2:
            navigator.buttonRelease(0, x, y);
            break;
        default:
            navigator.moveTo(x, y);
        }
        Real32 const size = engine->getFrom().subZero().length();
        Real32 const length = (engine->getAt() - engine->getFrom()).length();
        EXPECT_NEAR(length, std::abs(engine->getDistance()), 2e-3f + 1e-4f * (size + length));
    }
}
} // namespace
