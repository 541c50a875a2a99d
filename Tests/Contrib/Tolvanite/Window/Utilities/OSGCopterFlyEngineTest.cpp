#include "OSGCopterFlyEngine.h"

#include <cmath>

#include <gtest/gtest.h>

#include "LogCapture.h"
#include "MathPrinters.h"
#include "OpenCopter.h"
#include "RandomNumbers.h"

using namespace OSG;
using namespace OSG::Test;

namespace
{
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

TEST_F(Copter, TurnsToTheRightDownAndCounterClockwise)
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
    // A character is no virtual-key code, and a virtual-key code is no character.
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
} // namespace
