#include "OSGCopterFlyEngine.h"

#include <cmath>

#include <gtest/gtest.h>

#include "LogCapture.h"
#include "MathPrinters.h"
#include "NavigatedView.h"
#include "RandomNumbers.h"

using namespace OSG;
using namespace OSG::Test;

namespace
{
class OpenCopter : public CopterFlyEngine
{
  public:
    using CopterFlyEngine::calc_box_volume;
    using CopterFlyEngine::CopterFlyEngine;
    using CopterFlyEngine::init_cursor_pos;
    using CopterFlyEngine::qualify_cursor_pos;
    using CopterFlyEngine::rotate;
    using CopterFlyEngine::translate_forward;
    using CopterFlyEngine::translate_right;
    using CopterFlyEngine::translate_up;

    static UnrecordedRefPtr<OpenCopter> create()
    {
        return UnrecordedRefPtr<OpenCopter>(TransitPtr<OpenCopter>(new OpenCopter));
    }
};

/// In (0, 0, 10), looking along -z at a point five units ahead; a motion factor of 10, a rotation
/// angle of 1. The window is 640 by 480.
struct Copter : ::testing::Test
{
    Copter()
    {
        view.navigator.setMotionFactor(10);
        view.navigator.setRotationAngle(1);
        home();
        view.navigator.setEngine(engine);
        view.navigator.updateCameraTransformation();
    }
    void home() { engine->set(Pnt3f(0, 0, 10), Pnt3f(0, 0, 5), Vec3f(0, 1, 0)); }
    void fly(CopterFlyEngine::State state, Int16 button = 0)
    {
        engine->setState(state);
        engine->setIdle();
        navigator.buttonPress(button, 1, 1);
        navigator.buttonRelease(button, 1, 1);
    }
    void tick(Int16 x, Int16 y) { navigator.idle(-1, x, y); }

    NavigatedView view;
    Navigator &navigator = view.navigator;
    UnrecordedRefPtr<OpenCopter> const engine = OpenCopter::create();
};

// --- fields ---

TEST_F(Copter, HasItsDefaults)
{
    EXPECT_TRUE(engine->isIdle());
    EXPECT_EQ(engine->getState(), CopterFlyEngine::MoveToState);
    EXPECT_EQ(engine->getMoveMode(), CopterFlyEngine::RadialMode);
    EXPECT_EQ(engine->getDirMode(), CopterFlyEngine::ForwardDir);
    EXPECT_EQ(engine->motion_factor(), 0.2f);
    EXPECT_EQ(engine->motion_multiplier(), 1.2f);
    EXPECT_EQ(engine->motion_max_factor(), 0.4f);
    EXPECT_EQ(engine->rot_factor(), 0.2f);
    EXPECT_EQ(engine->rot_multiplier(), 1.2f);
    EXPECT_EQ(engine->rot_max_factor(), 0.4f);
    EXPECT_EQ(engine->rot_divider(), 20.f);
    EXPECT_EQ(engine->getMotionFactor(), 50.f);
    EXPECT_EQ(engine->getRotationFactor(), 50.f);
    EXPECT_EQ(engine->getMotionMultiplier(), 1.2f);
    EXPECT_EQ(engine->getRotationMultiplier(), 1.2f);
}

TEST_F(Copter, TakesSpeedsInPercentOfTheMaximum)
{
    engine->setMotionFactor(150);
    EXPECT_EQ(engine->motion_factor(), 0.2f);
    engine->setMotionFactor(100);
    EXPECT_EQ(engine->motion_factor(), 0.4f);
    engine->setMotionFactor(-50);
    EXPECT_EQ(engine->motion_factor(), 0.2f);
    engine->setMotionFactor(NAN);
    EXPECT_EQ(engine->motion_factor(), 0.2f);
    engine->setRotationFactor(-25);
    EXPECT_FLOAT_EQ(engine->rot_factor(), 0.1f);
    engine->setRotationFactor(101);
    EXPECT_FLOAT_EQ(engine->rot_factor(), 0.1f);
}

TEST_F(Copter, AnotherStateStopsTheFlight)
{
    fly(CopterFlyEngine::MoveToState);
    engine->setState(CopterFlyEngine::MoveToState);
    EXPECT_FALSE(engine->isIdle());
    engine->setState(CopterFlyEngine::RotateState);
    EXPECT_TRUE(engine->isIdle());
    EXPECT_EQ(engine->getState(), CopterFlyEngine::RotateState);
}

// --- motion ---

TEST_F(Copter, PositiveStepsGoBackwardsLeftAndUp)
{
    EXPECT_EQ(engine->translate_forward(2), 0.f);
    EXPECT_EQ(engine->translate_right(3), 0.f);
    EXPECT_EQ(engine->translate_up(4), 0.f);
    EXPECT_EQ(engine->getFrom(), Pnt3f(-3, 4, 12));
    EXPECT_EQ(engine->getAt(), Pnt3f(-3, 4, 7));
    engine->setDistance(2);
    EXPECT_EQ(engine->getFrom(), Pnt3f(-3, 4, 14));
    EXPECT_EQ(engine->getDistance(), 0.f);
}

TEST_F(Copter, TurnsToTheRightDownAndClockwise)
{
    engine->rotate(1.5707963f, 0, 0);
    EXPECT_TRUE(engine->getAt().equals(Pnt3f(5, 0, 10), 1e-5f));
    home();
    engine->rotate(0, 0.5f, 0);
    EXPECT_TRUE(
        engine->getAt().equals(Pnt3f(0, -5 * std::sin(0.5f), 10 - 5 * std::cos(0.5f)), 1e-5f));
    home();
    engine->rotate(0, 0, 0.5f);
    EXPECT_TRUE(engine->getUp().equals(Vec3f(-std::sin(0.5f), std::cos(0.5f), 0), 1e-5f));
    EXPECT_EQ(engine->getAt(), Pnt3f(0, 0, 5));
}

struct TurnRow
{
    Real32 yaw, pitch, roll;
};

/// Rodrigues' formula in double precision; `axis` has length 1.
Vec3d turned(Vec3d const &v, Vec3d const &axis, Real64 angle)
{
    return v * std::cos(angle) + axis.cross(v) * std::sin(angle) +
           axis * (axis.dot(v) * (1 - std::cos(angle)));
}

Vec3d wide(Vec3f const &v) { return Vec3d(v[0], v[1], v[2]); }
Vec3d wide_unit(Vec3d const &v) { return v * (1 / v.length()); }

TEST_F(Copter, TurnsByYawThenPitchThenRoll)
{
    for(TurnRow const &row : {TurnRow{0.7f, 0.4f, 0.9f}, TurnRow{-0.3f, 1.1f, 2.5f},
                              TurnRow{2.f, -0.6f, -0.8f}, TurnRow{-1.2f, -1.f, 0.1f}})
    {
        engine->set(Pnt3f(1, 2, 3), Pnt3f(2, 4, 0), Vec3f(0.5f, 2, 0.25f));
        Vec3d look = wide(engine->getAt() - engine->getFrom());
        Vec3d up = wide(engine->getUp());
        engine->rotate(row.yaw, row.pitch, row.roll);
        look = turned(look, wide_unit(up), -row.yaw);
        look = turned(look, wide_unit(look.cross(up)), -row.pitch);
        up = turned(up, wide_unit(look), -row.roll);
        EXPECT_TRUE(
            (engine->getAt() - engine->getFrom()).equals(Vec3f(look[0], look[1], look[2]), 2e-5f))
            << row.yaw;
        EXPECT_TRUE(engine->getUp().equals(Vec3f(up[0], up[1], up[2]), 2e-5f)) << row.yaw;
        EXPECT_EQ(engine->getFrom(), Pnt3f(1, 2, 3));
    }
}

TEST_F(Copter, ATurnByOneBadAngleIsNoTurn)
{
    for(Real32 const bad : {NAN, INFINITY})
    {
        engine->rotate(bad, 0.5f, 0.5f);
        engine->rotate(0.5f, bad, 0.5f);
        engine->rotate(0.5f, 0.5f, bad);
    }
    EXPECT_EQ(engine->getAt(), Pnt3f(0, 0, 5));
    EXPECT_EQ(engine->getUp(), Vec3f(0, 1, 0));
}

// --- the pointer ---

TEST_F(Copter, MeasuresTheWayFromTheMiddle)
{
    EXPECT_EQ(engine->qualify_cursor_pos(320, 240, &navigator), (std::pair<Real32, Real32>(0, 0)));
    EXPECT_EQ(engine->qualify_cursor_pos(640, 0, &navigator), (std::pair<Real32, Real32>(1, -1)));
    EXPECT_EQ(engine->qualify_cursor_pos(160, 360, &navigator),
              (std::pair<Real32, Real32>(-0.5f, 0.5f)));
}

TEST_F(Copter, MeasuresInCoordinatesOfTheMiddleOfAPartOfTheWindow)
{
    view.viewport->setLeft(100);
    view.viewport->setRight(299);
    view.viewport->setBottom(40);
    view.viewport->setTop(139);
    // Middle (200, 390).
    EXPECT_EQ(engine->qualify_cursor_pos(300, 195, &navigator),
              (std::pair<Real32, Real32>(0.5f, -0.5f)));
    engine->init_cursor_pos(&navigator);
    EXPECT_EQ(navigator.getLastX(), 200);
    EXPECT_EQ(navigator.getLastY(), 390);
}

TEST_F(Copter, HalvesOddSizesTowardsZero)
{
    view.window->setSize(641, 481);
    // Middle (320, 481 - 240).
    engine->init_cursor_pos(&navigator);
    EXPECT_EQ(navigator.getLastX(), 320);
    EXPECT_EQ(navigator.getLastY(), 241);
    EXPECT_EQ(engine->qualify_cursor_pos(480, 0, &navigator),
              (std::pair<Real32, Real32>(0.5f, -1)));
    // 201 columns from 101, 99 rows from 31 above the bottom: middle (201, 481 - 49 - 31).
    view.viewport->setLeft(101);
    view.viewport->setRight(301);
    view.viewport->setBottom(31);
    view.viewport->setTop(129);
    engine->init_cursor_pos(&navigator);
    EXPECT_EQ(navigator.getLastX(), 201);
    EXPECT_EQ(navigator.getLastY(), 401);
    EXPECT_EQ(engine->qualify_cursor_pos(402, 401, &navigator), (std::pair<Real32, Real32>(1, 0)));
}

TEST_F(Copter, CountsRowsFromTheViewWithoutAWindow)
{
    ViewportPtr const alone = make_viewport(0, 20, 99, 69);
    navigator.setViewport(alone);
    engine->init_cursor_pos(&navigator);
    EXPECT_EQ(navigator.getLastX(), 50);
    EXPECT_EQ(navigator.getLastY(), 50 - 25 - 20);
}

TEST_F(Copter, HasNoWayInAViewWithoutPixels)
{
    view.window->setSize(0, 480);
    EXPECT_EQ(engine->qualify_cursor_pos(5, 5, &navigator), (std::pair<Real32, Real32>(0, 0)));
    navigator.setViewport(nullptr);
    EXPECT_EQ(engine->qualify_cursor_pos(5, 5, &navigator), (std::pair<Real32, Real32>(0, 0)));
    Int16 const before = navigator.getLastX();
    engine->init_cursor_pos(&navigator);
    EXPECT_EQ(navigator.getLastX(), before);
}

// --- start and stop ---

TEST_F(Copter, AClickStartsAndASecondOneStops)
{
    navigator.buttonPress(0, 10, 10);
    EXPECT_FALSE(engine->isIdle());
    navigator.buttonPress(0, 10, 10);
    EXPECT_TRUE(engine->isIdle());
    EXPECT_EQ(engine->getDirMode(), CopterFlyEngine::ForwardDir);
    navigator.buttonPress(2, 10, 10);
    EXPECT_FALSE(engine->isIdle());
    EXPECT_EQ(engine->getDirMode(), CopterFlyEngine::BackwardDir);
    // The left button stops a flight backwards and leaves its direction.
    navigator.buttonPress(0, 10, 10);
    EXPECT_TRUE(engine->isIdle());
    EXPECT_EQ(engine->getDirMode(), CopterFlyEngine::BackwardDir);
}

TEST_F(Copter, EveryClickTakesTheMiddleForTheLastPosition)
{
    for(Int16 const button : {0, 1, 2, 3, 4})
    {
        navigator.buttonPress(button, 10, 10);
        EXPECT_EQ(navigator.getLastX(), 320) << button;
        EXPECT_EQ(navigator.getLastY(), 240) << button;
    }
}

TEST_F(Copter, ButtonsThatItDoesNotKnowChangeNothingOfAFlight)
{
    auto const flight = [this](bool disturbed)
    {
        home();
        navigator.setEngine(nullptr);
        navigator.setEngine(engine);
        fly(CopterFlyEngine::MoveToState);
        for(Int16 i = 0; i < 5; ++i)
        {
            if(disturbed)
            {
                for(Int16 const button : {5, 6, -1, 32767})
                {
                    navigator.buttonPress(button, 10, 10);
                    navigator.moveTo(30, 20);
                    navigator.buttonRelease(button, 30, 20);
                }
            }
            navigator.mouseMove(500, 100);
            tick(500, 100);
        }
        EXPECT_EQ(navigator.getLastX(), 320);
        EXPECT_EQ(navigator.getLastY(), 240);
        return engine->getMatrix();
    };
    Matrix const undisturbed = flight(false);
    LogCapture const log(LOG_NOTICE);
    EXPECT_EQ(flight(true), undisturbed);
    EXPECT_TRUE(log.texts().empty());
}

TEST_F(Copter, ButtonsThatItDoesNotKnowTakeNoMiddle)
{
    navigator.buttonPress(5, 10, 20);
    EXPECT_EQ(navigator.getLastX(), 10);
    EXPECT_EQ(navigator.getLastY(), 20);
}

TEST_F(Copter, StandsStillWhileItIsStopped)
{
    tick(600, 10);
    EXPECT_EQ(engine->getFrom(), Pnt3f(0, 0, 10));
    fly(CopterFlyEngine::MoveToState);
    navigator.killFocus();
    tick(320, 240);
    EXPECT_EQ(engine->getFrom(), Pnt3f(0, 0, 8));
    engine->setIdle();
    tick(320, 240);
    EXPECT_EQ(engine->getFrom(), Pnt3f(0, 0, 8));
}

// --- the four states ---

TEST_F(Copter, MovesOnAtEachTickAlsoWithThePointerAtRest)
{
    fly(CopterFlyEngine::MoveToState);
    tick(320, 240);
    EXPECT_EQ(engine->getFrom(), Pnt3f(0, 0, 8));
    tick(320, 240);
    EXPECT_EQ(engine->getFrom(), Pnt3f(0, 0, 6));
    EXPECT_EQ(engine->getAt(), Pnt3f(0, 0, 1));
    fly(CopterFlyEngine::MoveToState, 2);
    tick(320, 240);
    EXPECT_EQ(engine->getFrom(), Pnt3f(0, 0, 8));
}

TEST_F(Copter, TurnsTowardsThePointerByTheMotionFactor)
{
    navigator.setMotionFactor(0);
    fly(CopterFlyEngine::MoveToState);
    engine->motion_factor(0.4f);
    navigator.mouseMove(640, 240);
    for(int i = 0; i < 10; ++i)
        tick(640, 240);
    // Half the window is 1; divided by 20, times 0.4, ten times.
    EXPECT_TRUE(
        engine->getAt().equals(Pnt3f(5 * std::sin(0.2f), 0, 10 - 5 * std::cos(0.2f)), 1e-4f));
    home();
    tick(320, 0);
    EXPECT_TRUE(
        engine->getAt().equals(Pnt3f(0, 5 * std::sin(0.02f), 10 - 5 * std::cos(0.02f)), 1e-4f));
}

TEST_F(Copter, TurnsOnTheSpotByModes)
{
    struct Row
    {
        char const *name;
        CopterFlyEngine::MoveMode mode;
        Int16 x, y;
        Pnt3f at;
        Vec3f up;
    };
    // Deflections of a half and a quarter times 0.2.
    Real32 const s1 = std::sin(0.1f), c1 = std::cos(0.1f);
    Real32 const s2 = std::sin(0.05f), c2 = std::cos(0.05f);
    Vec3f const up(0, 1, 0);
    for(Row const &row :
        {Row{"dominant x",
             CopterFlyEngine::DominantAxisMode,
             480,
             300,
             {5 * s1, 0, 10 - 5 * c1},
             up},
         Row{"dominant y",
             CopterFlyEngine::DominantAxisMode,
             400,
             360,
             {0, -5 * s1, 10 - 5 * c1},
             up},
         Row{"both alike",
             CopterFlyEngine::DominantAxisMode,
             480,
             120,
             {5 * s1, 0, 10 - 5 * c1},
             up},
         Row{"vertical", CopterFlyEngine::VerticalMode, 480, 300, {0, -5 * s2, 10 - 5 * c2}, up},
         Row{"horizontal", CopterFlyEngine::HorizontalMode, 400, 360, {5 * s2, 0, 10 - 5 * c2}, up},
         Row{"radial", CopterFlyEngine::RadialMode, 320, 120, {0, 0, 5}, {s1, c1, 0}}})
    {
        home();
        engine->setMoveMode(row.mode);
        fly(CopterFlyEngine::RotateState);
        tick(row.x, row.y);
        EXPECT_TRUE(engine->getAt().equals(row.at, 1e-4f)) << row.name;
        EXPECT_TRUE(engine->getUp().equals(row.up, 1e-4f)) << row.name;
        EXPECT_EQ(engine->getFrom(), Pnt3f(0, 0, 10)) << row.name;
    }
    home();
    engine->setMoveMode(CopterFlyEngine::RadialMode);
    fly(CopterFlyEngine::RotateState, 2);
    tick(320, 120);
    EXPECT_TRUE(engine->getUp().equals(Vec3f(-s1, c1, 0), 1e-4f));
}

TEST_F(Copter, MovesWithoutATurnByModes)
{
    struct Row
    {
        char const *name;
        CopterFlyEngine::MoveMode mode;
        Int16 button, x, y;
        Pnt3f from;
    };
    for(Row const &row :
        {Row{"radial forwards", CopterFlyEngine::RadialMode, 0, 320, 120, {0, 0, 9}},
         Row{"radial backwards", CopterFlyEngine::RadialMode, 2, 320, 120, {0, 0, 11}},
         Row{"radial of 0.3 and 0.4", CopterFlyEngine::RadialMode, 0, 416, 144, {0, 0, 9}},
         Row{"dominant x", CopterFlyEngine::DominantAxisMode, 0, 480, 300, {1, 0, 10}},
         Row{"dominant y", CopterFlyEngine::DominantAxisMode, 0, 400, 360, {0, -1, 10}},
         Row{"vertical", CopterFlyEngine::VerticalMode, 2, 480, 120, {0, 1, 10}},
         Row{"horizontal", CopterFlyEngine::HorizontalMode, 2, 160, 120, {-1, 0, 10}}})
    {
        home();
        engine->setMoveMode(row.mode);
        fly(CopterFlyEngine::TranslateState, row.button);
        tick(row.x, row.y);
        EXPECT_TRUE(engine->getFrom().equals(row.from, 1e-5f)) << row.name;
        EXPECT_TRUE((engine->getFrom() - engine->getAt()).equals(Vec3f(0, 0, 5), 1e-5f));
    }
}

TEST_F(Copter, OtherModesDoNothing)
{
    for(UInt32 const mode : {4u, 77u})
    {
        engine->setMoveMode(CopterFlyEngine::MoveMode(mode));
        fly(CopterFlyEngine::RotateState);
        tick(600, 10);
        fly(CopterFlyEngine::TranslateState);
        tick(600, 10);
    }
    engine->setMoveMode(CopterFlyEngine::RadialMode);
    for(UInt32 const state : {2u, 3u})
    {
        fly(CopterFlyEngine::State(state));
        engine->setDirMode(CopterFlyEngine::DirMode(2));
        tick(600, 10);
    }
    fly(CopterFlyEngine::State(9));
    tick(600, 10);
    EXPECT_EQ(engine->getFrom(), Pnt3f(0, 0, 10));
    EXPECT_EQ(engine->getAt(), Pnt3f(0, 0, 5));
    EXPECT_EQ(engine->getUp(), Vec3f(0, 1, 0));
    // In the first state the turn is taken, the step is not.
    fly(CopterFlyEngine::MoveToState);
    engine->setDirMode(CopterFlyEngine::DirMode(2));
    tick(600, 10);
    EXPECT_EQ(engine->getFrom(), Pnt3f(0, 0, 10));
    EXPECT_FALSE(engine->getAt().equals(Pnt3f(0, 0, 5), 1e-4f));
}

// --- on a sphere ---

NodePtr box_at(Pnt3f const &center)
{
    return make_node(make_geometry(
        one_primitive(TrianglesPrimitive, {center + Vec3f(-1, -1, -1), center + Vec3f(1, -1, 1),
                                           center + Vec3f(0, 1, 0)})));
}

TEST_F(Copter, CirclesAPointThatDriftsToWhatIsSeen)
{
    view.viewport->setRoot(box_at(Pnt3f(0, 0, 0)));
    fly(CopterFlyEngine::MoveOnSphereState);
    tick(420, 240);
    // A tenth of the way from (0, 0, 5) to the box.
    Pnt3f const pivot(0, 0, 4.5f);
    EXPECT_TRUE(engine->getAt().equals(pivot, 1e-4f));
    EXPECT_NEAR((engine->getFrom() - pivot).length(), 5.5f, 1e-4f);
    Real32 const z1 = 0.8f;
    Real32 const z2 = std::sqrt(0.64f - 0.09765625f);
    Real32 const way = std::hypot(0.3125f, z1 - z2);
    Real32 const angle = 2 * std::asin(way / 1.6f) * 0.2f / 20;
    EXPECT_NEAR(engine->getFrom()[0], -5.5f * std::sin(angle), 1e-4f);
}

TEST_F(Copter, StandsStillOnASphereOfNothing)
{
    fly(CopterFlyEngine::MoveOnSphereState);
    tick(320, 240); // the pointer in the middle
    EXPECT_EQ(engine->getFrom(), Pnt3f(0, 0, 10));
    view.viewport->setRoot(make_group());
    tick(420, 100); // an empty scene
    EXPECT_EQ(engine->getFrom(), Pnt3f(0, 0, 10));
    view.viewport->setRoot(box_at(Pnt3f(0, 0, 500)));
    tick(420, 100); // all behind
    EXPECT_EQ(engine->getFrom(), Pnt3f(0, 0, 10));
    EXPECT_EQ(engine->getAt(), Pnt3f(0, 0, 5));
}

TEST_F(Copter, SkipsATickWithoutAView)
{
    view.viewport->setRoot(box_at(Pnt3f(0, 0, 0)));
    fly(CopterFlyEngine::MoveOnSphereState);
    engine->set(Pnt3f(0, 0, 10), Pnt3f(0, 0, 5), Vec3f(0, 0, 1));
    tick(420, 100);
    EXPECT_EQ(engine->getFrom(), Pnt3f(0, 0, 10));
    EXPECT_EQ(engine->getAt(), Pnt3f(0, 0, 5));
}

TEST_F(Copter, BoxesWhatTheCameraSees)
{
    NodePtr const seen = make_transform(translation(1, 0, -2), {box_at(Pnt3f(0, 0, 0))});
    NodePtr const behind = box_at(Pnt3f(0, 0, 300));
    NodePtr const hidden = box_at(Pnt3f(0, 0, -9));
    hidden->setTravMask(0);
    NodePtr const farther = box_at(Pnt3f(-1, 0, -20));
    view.viewport->setRoot(make_group({seen, behind, hidden, farther}));
    BoxVolume const box = engine->calc_box_volume(&navigator);
    EXPECT_EQ(box.getMin(), Pnt3f(-2, -1, -21));
    EXPECT_EQ(box.getMax(), Pnt3f(2, 1, -1));
}

TEST_F(Copter, HasAnEmptyBoxWhileSomethingIsMissing)
{
    view.viewport->setRoot(nullptr);
    EXPECT_TRUE(engine->calc_box_volume(&navigator).isEmpty());
    view.viewport->setRoot(view.root);
    EXPECT_FALSE(engine->calc_box_volume(&navigator).isEmpty());
    view.viewport->setCamera(nullptr);
    EXPECT_TRUE(engine->calc_box_volume(&navigator).isEmpty());
    navigator.setViewport(nullptr);
    EXPECT_TRUE(engine->calc_box_volume(&navigator).isEmpty());
}

// --- buttons and keys ---

TEST_F(Copter, TheMiddleButtonGoesOnToTheNextModeWhereModesCount)
{
    navigator.buttonPress(1, 1, 1);
    EXPECT_EQ(engine->getMoveMode(), CopterFlyEngine::RadialMode);
    engine->setState(CopterFlyEngine::RotateState);
    for(UInt32 const mode : {1u, 2u, 3u, 0u})
    {
        navigator.buttonPress(1, 1, 1);
        EXPECT_EQ(engine->getMoveMode(), mode);
    }
    engine->setState(CopterFlyEngine::TranslateState);
    navigator.buttonPress(1, 1, 1);
    EXPECT_EQ(engine->getMoveMode(), 1u);
    EXPECT_TRUE(engine->isIdle());
}

TEST_F(Copter, TheWheelChangesTheSpeedOfTheState)
{
    for(UInt32 const state : {0u, 1u, 2u, 3u})
    {
        engine->setState(CopterFlyEngine::State(state));
        engine->motion_factor(0.2f);
        engine->rot_factor(0.2f);
        navigator.buttonPress(3, 1, 1);
        bool const moves = state == 0 || state == 3;
        EXPECT_FLOAT_EQ(engine->motion_factor(), moves ? 0.2f / 1.2f : 0.2f) << state;
        EXPECT_FLOAT_EQ(engine->rot_factor(), moves ? 0.2f : 0.2f / 1.2f) << state;
        navigator.buttonPress(4, 1, 1);
        navigator.buttonPress(4, 1, 1);
        EXPECT_FLOAT_EQ(engine->motion_factor(), moves ? 0.24f : 0.2f) << state;
        EXPECT_FLOAT_EQ(engine->rot_factor(), moves ? 0.2f : 0.24f) << state;
    }
}

TEST_F(Copter, SpeedsStayWithinTheirLimits)
{
    for(int i = 0; i < 200; ++i)
        navigator.buttonPress(3, 1, 1);
    EXPECT_EQ(engine->motion_factor(), 1e-6f);
    for(int i = 0; i < 200; ++i)
        navigator.buttonPress(4, 1, 1);
    EXPECT_EQ(engine->motion_factor(), 0.4f);
    engine->motion_factor(-0.4f);
    navigator.buttonPress(4, 1, 1);
    EXPECT_EQ(engine->motion_factor(), 0.4f);
    engine->motion_factor(-0.4f);
    navigator.buttonPress(3, 1, 1);
    EXPECT_EQ(engine->motion_factor(), 1e-6f);
}

TEST_F(Copter, KeysChooseModeStateAndSpeed)
{
    constexpr UInt16 down = NavigatorEvent::KeyDown;
    constexpr UInt16 virtualKey = NavigatorEvent::VirtualKey;
    for(UInt32 const mode : {1u, 2u, 3u, 0u})
    {
        navigator.keyPressEx(13, down | virtualKey, 1, 1);
        EXPECT_EQ(engine->getMoveMode(), mode);
    }
    for(UInt32 const state : {1u, 2u, 3u, 0u})
    {
        navigator.keyPressEx(32, virtualKey, 1, 1);
        EXPECT_EQ(engine->getState(), state);
    }
    navigator.mouseMove(5, 6);
    navigator.keyPressEx('+', down, 5, 6);
    EXPECT_FLOAT_EQ(engine->motion_factor(), 0.24f);
    navigator.keyPress('-', 5, 6);
    EXPECT_FLOAT_EQ(engine->motion_factor(), 0.2f);
    EXPECT_EQ(navigator.getLastX(), 5); // not the middle
    // The codes of the one kind mean nothing in the other.
    navigator.keyPressEx('+', virtualKey, 5, 6);
    navigator.keyPress(13, 5, 6);
    navigator.keyPress(32, 5, 6);
    EXPECT_FLOAT_EQ(engine->motion_factor(), 0.2f);
    EXPECT_EQ(engine->getState(), CopterFlyEngine::MoveToState);
}

TEST_F(Copter, PlusAndMinusChangeTheSpeedOfTheState)
{
    for(UInt32 const state : {0u, 1u, 2u, 3u})
    {
        engine->setState(CopterFlyEngine::State(state));
        engine->motion_factor(0.2f);
        engine->rot_factor(0.2f);
        bool const moves = state == 0 || state == 3;
        navigator.keyPress('-', 1, 1);
        EXPECT_FLOAT_EQ(engine->motion_factor(), moves ? 0.2f / 1.2f : 0.2f) << state;
        EXPECT_FLOAT_EQ(engine->rot_factor(), moves ? 0.2f : 0.2f / 1.2f) << state;
        navigator.keyPressEx('+', NavigatorEvent::KeyDown, 1, 1);
        navigator.keyPress('+', 1, 1);
        EXPECT_FLOAT_EQ(engine->motion_factor(), moves ? 0.24f : 0.2f) << state;
        EXPECT_FLOAT_EQ(engine->rot_factor(), moves ? 0.2f : 0.24f) << state;
    }
}

TEST_F(Copter, PlusAndMinusKeepTheSpeedWithinItsLimits)
{
    engine->setState(CopterFlyEngine::RotateState);
    engine->rot_multiplier(3);
    engine->rot_max_factor(0.5f);
    for(int i = 0; i < 40; ++i)
        navigator.keyPress('-', 1, 1);
    EXPECT_EQ(engine->rot_factor(), 1e-6f);
    for(int i = 0; i < 40; ++i)
        navigator.keyPress('+', 1, 1);
    EXPECT_EQ(engine->rot_factor(), 0.5f);
    EXPECT_EQ(engine->motion_factor(), 0.2f);
}

TEST_F(Copter, HearsNoKeysInFlight)
{
    fly(CopterFlyEngine::MoveToState);
    navigator.keyPressEx(32, NavigatorEvent::VirtualKey, 1, 1);
    navigator.keyPressEx(13, NavigatorEvent::VirtualKey, 1, 1);
    navigator.keyPress('+', 1, 1);
    EXPECT_EQ(engine->getState(), CopterFlyEngine::MoveToState);
    EXPECT_EQ(engine->getMoveMode(), CopterFlyEngine::RadialMode);
    EXPECT_EQ(engine->motion_factor(), 0.2f);
    EXPECT_FALSE(engine->isIdle());
}

// --- what holds whatever is done ---

TEST_F(Copter, FlightsKeepTheDistanceToTheirPoint)
{
    RandomNumbers random(61);
    for(UInt32 const state : {0u, 2u, 3u})
    {
        home();
        navigator.setMotionFactor(0.1f);
        for(int i = 0; i < 1500; ++i)
        {
            if(i % 50 == 0)
            {
                engine->setMoveMode(CopterFlyEngine::MoveMode(random.below(4)));
                fly(CopterFlyEngine::State(state), random.below(2) == 0 ? 0 : 2);
            }
            tick(static_cast<Int16>(random.below(640)), static_cast<Int16>(random.below(480)));
            EXPECT_NEAR((engine->getAt() - engine->getFrom()).length(), 5.f, 2e-3f);
            EXPECT_NEAR(engine->getUp().length(), 1.f, 1e-3f);
        }
    }
}

TEST_F(Copter, AnOrbitKeepsTheDistanceToItsPivot)
{
    RandomNumbers random(62);
    view.viewport->setRoot(box_at(Pnt3f(0, 0, 0)));
    fly(CopterFlyEngine::MoveOnSphereState);
    for(int i = 0; i < 500; ++i)
    {
        Pnt3f const from = engine->getFrom();
        Pnt3f const at = engine->getAt();
        tick(static_cast<Int16>(random.below(640)), static_cast<Int16>(random.below(480)));
        Pnt3f center;
        engine->calc_box_volume(&navigator).getCenter(center);
        Pnt3f const pivot = at + (center - at) * 0.1f;
        EXPECT_TRUE(engine->getAt().equals(pivot, 1e-3f));
        EXPECT_NEAR((engine->getFrom() - pivot).length(), (from - pivot).length(), 1e-3f);
    }
}
} // namespace
