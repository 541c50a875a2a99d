#include "OSGCadTrackballEngine.h"

#include <cmath>
#include <optional>

#include <gtest/gtest.h>

#include "LogCapture.h"
#include "MathPrinters.h"
#include "OpenTrackball.h"
#include "RandomNumbers.h"

using namespace OSG;
using namespace OSG::Test;

namespace
{
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
    // getAt does not show the shift before the next getMatrix, so setFrom takes the old point.
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
    // The centre has not moved.
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
    // On a ball of radius 0.8, half the chord belongs to half the angle.
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
    // wheel_factor_ortho does not count in a drag. A drag to the side counts as one upwards.
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

/// A view at the same pose with the engine of a host.
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

TEST_F(Cad, MotionsThatAreNotFiniteAreNotMade)
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

TEST_F(Cad, ABallWithoutARadiusKeepsThePoseFinite)
{
    for(Real32 const radius : {0.f, -1.f, NAN})
    {
        UnrecordedRefPtr<CadTrackballEngine> const odd(CadTrackballEngine::create(radius));
        odd->rotate(0, 0, 0.1f, 0.2f);
        odd->rotate(0.1f, 0.2f, 0, 0);
        EXPECT_TRUE(is_finite(odd->getMatrix())) << radius;
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
