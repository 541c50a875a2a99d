// Events, keys, modes and time of the walk.
#include "OSGWASDWalkEngine.h"

#include <cmath>

#include <gtest/gtest.h>

#include "LogCapture.h"
#include "OSGChangeList.h"
#include "OSGThread.h"
#include "WalkedView.h"

using namespace OSG;
using namespace OSG::Test;

namespace
{
/// In empty space, with a log of the steps.
struct Input : ::testing::Test
{
    Input() { view.walk->setWalkObserver(&log); }

    WalkedView view;
    OpenWalk &walk = *view.walk;
    ScriptedDesktop &desktop = *view.desktop;
    Navigator &navigator = view.navigator;
    StepLog log;
};

constexpr Int16 Escape = 27;
constexpr Int16 Shift = 16;
constexpr Int16 Ctrl = 17;
constexpr Int16 Space = 32;
constexpr Int16 F2 = 113;
constexpr Int16 F3 = 114;
constexpr Int16 F7 = 118;
constexpr Int16 F8 = 119;

// --- keys that are polled ---

struct KeyRow
{
    char const *name;
    Int16 code;
    WalkStep::Direction direction;
    Real32 sign; ///< of the step; 0 where the key only turns
};
using enum WalkStep::Direction;
KeyRow const StepKeys[] = {
    {"W", 87, AlongView, -1},    {"Up", 38, AlongView, -1},     {"LeftButton", 1, AlongView, -1},
    {"S", 83, AlongView, 1},     {"Down", 40, AlongView, 1},    {"RightButton", 2, AlongView, 1},
    {"A", 65, Sideways, 1},      {"Left", 37, Sideways, 1},     {"D", 68, Sideways, -1},
    {"Right", 39, Sideways, -1}, {"X", 88, Vertical, 1},        {"PageUp", 33, Vertical, 1},
    {"Y", 89, Vertical, -1},     {"PageDown", 34, Vertical, -1}};

TEST_F(Input, EachMotionKeySteps)
{
    walk.walk_mode(false);
    for(KeyRow const &row : StepKeys)
    {
        log.steps.clear();
        view.frame({row.code}, 100);
        ASSERT_EQ(log.steps.size(), 1u) << row.name;
        EXPECT_EQ(log.steps[0].direction, row.direction) << row.name;
        EXPECT_EQ(std::copysign(1.f, log.steps[0].step), row.sign) << row.name;
    }
}

TEST_F(Input, TurningKeysTurn)
{
    struct
    {
        Int16 code;
        Real32 sign; // of the x of the point that is looked at
    } const rows[] = {{81, -1}, {46, -1}, {69, 1}, {35, 1}};
    for(auto const &row : rows)
    {
        walk.set(Pnt3f(0, 0, 0), Pnt3f(0, 0, -1), Vec3f(0, 1, 0));
        view.frame({row.code}, 1000);
        EXPECT_NEAR(walk.getAt()[0], row.sign * std::sin(0.2f), 1e-5) << row.code;
    }
    EXPECT_TRUE(log.steps.empty());
}

TEST_F(Input, CLooksTowardsTheHorizonByAShareOfTheAngle)
{
    walk.set(Pnt3f(0, 0, 0), Pnt3f(0, std::sin(0.5f), -std::cos(0.5f)), Vec3f(0, 1, 0));
    view.frame({'C'}, 1000); // a turn of 0.2
    EXPECT_NEAR(walk.getAt()[1], std::sin(0.4f), 1e-5);
}

TEST_F(Input, OtherKeysMoveNothing)
{
    Pnt3f const at = walk.getAt();
    for(Int16 code = 0; code < 256; ++code)
    {
        bool const isMotionKey = std::string("ACDEQSWXY").find(char(code)) != std::string::npos ||
                                 code == 1 || code == 2 || code == 46 ||
                                 (code >= 33 && code <= 40 && code != 36);
        if(isMotionKey && code != 0)
            continue;
        view.frame({code}, 1000);
        EXPECT_TRUE(log.steps.empty()) << code;
        EXPECT_EQ(walk.getAt(), at) << code;
    }
}

TEST_F(Input, TwoKeysForOneStepWalkTwiceAsFar)
{
    view.frame({'W', 38, 1}, 100);
    EXPECT_EQ(log.steps.size(), 3u);
    EXPECT_NEAR(walk.getFrom()[2], -0.6f, 1e-5);
}

TEST_F(Input, BothMouseButtonsStepForwardsThenBackwards)
{
    view.frame({1, 2}, 100);
    ASSERT_EQ(log.steps.size(), 2u);
    EXPECT_LT(log.steps[0].step, 0.f);
    EXPECT_GT(log.steps[1].step, 0.f);
    EXPECT_NEAR(walk.getFrom()[2], 0, 1e-6);
}

TEST_F(Input, KeysActInTheOrderOfTheirCodes)
{
    walk.walk_mode(false);
    view.frame({89, 88, 87, 83, 68, 65, 2, 1}, 100);
    std::vector<WalkStep::Direction> directions;
    for(WalkStep const &step : log.steps)
        directions.push_back(step.direction);
    EXPECT_EQ(directions,
              (std::vector<WalkStep::Direction>{AlongView, AlongView, Sideways, Sideways, AlongView,
                                                AlongView, Vertical, Vertical}));
}

// --- time ---

/// The length of a step as the text of the time formula has it.
Real32 expected_step(Real32 motionFactor, Int64 ticks, Int64 ticksPerSecond, Real32 factor)
{
    Real64 const unit = Real64(motionFactor) * 0.001 * 10;
    Real32 const milliseconds =
        ticksPerSecond > 0
            ? static_cast<Real32>(Real64(static_cast<Real32>(ticks)) * 1000 / ticksPerSecond)
            : static_cast<Real32>(ticks) / 10000;
    return milliseconds * static_cast<Real32>(unit) * factor;
}

TEST(WalkTime, StepsAndTurnsAreInProportionToTheTime)
{
    for(Int64 const ticksPerSecond : {0, 1000, 10000000, 3579545})
    {
        WalkedView view(make_group(), ticksPerSecond);
        StepLog log;
        view.walk->setWalkObserver(&log);
        view.navigator.setMotionFactor(1.7f);
        view.navigator.setRotationAngle(0.03f);
        for(Int64 const ticks : {1, 7, 16000, 123456, 33333333})
        {
            log.steps.clear();
            view.frame({'S'}, ticks);
            ASSERT_EQ(log.steps.size(), 1u);
            EXPECT_EQ(log.steps[0].step, expected_step(1.7f, ticks, ticksPerSecond, 0.2f))
                << ticks << " of " << ticksPerSecond;
            view.walk->set(Pnt3f(0, 0, 0), Pnt3f(0, 0, -1), Vec3f(0, 1, 0));
            view.frame({'E'}, ticks);
            Real32 const turn = expected_step(0.03f * 2, ticks, ticksPerSecond, 0.2f);
            EXPECT_NEAR(view.walk->getAt()[0], std::sin(turn), 1e-4 + 1e-6 * std::abs(turn));
        }
    }
}

TEST_F(Input, ShiftIsFastCtrlIsSlowAndShiftGoesBeforeCtrl)
{
    walk.fast_motion_factor(3);
    walk.slow_motion_factor(0.5f);
    walk.fast_rot_factor(3);
    walk.slow_rot_factor(0.5f);
    struct
    {
        std::initializer_list<Int16> keys;
        std::initializer_list<Int16> turningKeys;
        Real32 factor;
    } const rows[] = {{{'S'}, {'E'}, 1.f},
                      {{'S', Shift}, {'E', Shift}, 3.f},
                      {{'S', Ctrl}, {'E', Ctrl}, 0.5f},
                      {{'S', Shift, Ctrl}, {'E', Shift, Ctrl}, 3.f}};
    for(auto const &row : rows)
    {
        log.steps.clear();
        view.frame(row.keys, 20);
        EXPECT_EQ(log.steps.at(0).step, expected_step(1, 20, 1000, 0.2f) * row.factor);
        walk.set(Pnt3f(0, 0, 0), Pnt3f(0, 0, -1), Vec3f(0, 1, 0));
        view.frame(row.turningKeys, 1000);
        EXPECT_NEAR(walk.getAt()[0], std::sin(0.2f * row.factor), 1e-5);
    }
}

TEST_F(Input, TimeWithoutFocusCountsIntoTheNextStep)
{
    view.frame({}, 5);
    desktop.setFocus(nullptr);
    view.frame({'S'}, 300);
    view.frame({'S'}, 300);
    EXPECT_TRUE(log.steps.empty());
    desktop.setFocus(view.native);
    view.frame({'S'}, 16);
    ASSERT_EQ(log.steps.size(), 1u);
    EXPECT_EQ(log.steps[0].step, expected_step(1, 616, 1000, 0.2f));
    // So does time in which the engine was silent, but not time without keys.
    walk.setSilent(true);
    view.frame({'S'}, 300);
    walk.setSilent(false);
    view.frame({}, 300);
    view.frame({'S'}, 16);
    ASSERT_EQ(log.steps.size(), 2u);
    EXPECT_EQ(log.steps[1].step, expected_step(1, 16, 1000, 0.2f));
}

// --- focus ---

TEST_F(Input, WithoutAnEventThereIsNoNavigatorAndNothingHappens)
{
    WalkPtr const fresh = make_walk(view.desktop);
    fresh->setWalkObserver(&log);
    desktop.setKey('S', true);
    desktop.advance(100);
    fresh->onUpdateCameraTransformation(&navigator);
    fresh->keyPressEx(F3, NavigatorEvent::KeyDown | NavigatorEvent::VirtualKey, 3, 4, &navigator);
    fresh->idle(0, 3, 4, &navigator);
    EXPECT_TRUE(log.steps.empty());
    EXPECT_TRUE(fresh->wasd_walk_console());
    EXPECT_FALSE(fresh->check_focus());
    for(auto const event : {0, 1, 2, 3})
    {
        WalkPtr const other = make_walk(view.desktop);
        if(event == 0)
            other->buttonPress(0, 3, 4, &navigator);
        else if(event == 1)
            other->buttonRelease(0, 3, 4, &navigator);
        else if(event == 2)
            other->moveTo(3, 4, &navigator);
        else
            other->mouseMove(3, 4, &navigator);
        EXPECT_TRUE(other->check_focus()) << event;
    }
}

TEST_F(Input, NeedsAWindowOfTheDesktopWithTheFocus)
{
    EXPECT_TRUE(walk.check_focus());
    desktop.setFocus(&desktop);
    EXPECT_FALSE(walk.check_focus());
    desktop.setFocus(view.native);
    view.window->subPort(view.viewport);
    EXPECT_FALSE(walk.check_focus());
    WindowPtr const plain = make_window(800, 600, view.viewport);
    EXPECT_FALSE(walk.check_focus());
    view.window->addPort(view.viewport);
    EXPECT_TRUE(walk.check_focus());
    navigator.setViewport(nullptr);
    EXPECT_FALSE(walk.check_focus());
}

TEST(WalkFocus, OneWarningSaysThatTheDesktopServesNothing)
{
    LogCapture const log;
    WalkedView view;
    WalkPtr const walk = make_walk(nullptr); // the desktop that serves nothing
    EXPECT_TRUE(log.texts().empty());
    view.navigator.setEngine(walk);
    view.navigator.moveTo(1, 1);
    for(int i = 0; i < 3; ++i)
    {
        view.navigator.updateCameraTransformation();
        view.navigator.idle(0, 1, 1);
    }
    EXPECT_EQ(log.texts(),
              (std::vector<std::string>{"WASDWalkEngine: the desktop does not serve everything: " +
                                        std::string(Desktop::current()->missing()) + "\n"}));
}

// --- the pointer: console mode ---

TEST_F(Input, ConsoleModeHidesThePointerWhileAKeyMoves)
{
    desktop.setPointer({333, 222});
    view.frame({'E'}, 16);
    EXPECT_FALSE(desktop.isPointerVisible());
    EXPECT_EQ(desktop.getCapture(), view.native);
    desktop.setPointer({400, 300});
    view.frame({}, 16);
    EXPECT_TRUE(desktop.isPointerVisible());
    EXPECT_EQ(desktop.getPointer().x, 333);
    EXPECT_EQ(desktop.getPointer().y, 222);
    EXPECT_EQ(desktop.getCapture(), nullptr);
}

TEST_F(Input, LeavesACaptureOfAnotherWindow)
{
    int other = 0;
    desktop.setCapture(&other);
    view.frame({'E'}, 16);
    EXPECT_FALSE(desktop.isPointerVisible());
    view.frame({}, 16);
    EXPECT_EQ(desktop.getCapture(), &other);
}

TEST_F(Input, TakesALostCaptureBack)
{
    walk.setGameMode();
    desktop.loseCapture();
    view.frame({}, 16);
    EXPECT_EQ(desktop.getCapture(), view.native);
    // A capture of another window is left alone.
    int other = 0;
    desktop.setCapture(&other);
    view.frame({}, 16);
    EXPECT_EQ(desktop.getCapture(), &other);
}

// --- modes ---

TEST_F(Input, EscapeInGameModeShowsThePointerWhereItVanished)
{
    desktop.setPointer({333, 222});
    view.pressVirtual(F2);
    EXPECT_FALSE(walk.wasd_walk_console());
    EXPECT_FALSE(walk.rotate_on_idle());
    EXPECT_FALSE(desktop.isPointerVisible());
    view.frame({}, 16);
    EXPECT_FALSE(desktop.isPointerVisible());
    desktop.setPointer({1, 2});
    view.pressVirtual(Escape);
    EXPECT_TRUE(walk.wasd_walk_console());
    EXPECT_TRUE(desktop.isPointerVisible());
    EXPECT_EQ(desktop.getPointer().x, 333);
    EXPECT_EQ(desktop.getPointer().y, 222);
    EXPECT_EQ(desktop.getCapture(), nullptr);
}

TEST_F(Input, F2TogglesGameModeWithoutLooksOnIdle)
{
    walk.rotate_on_idle(true);
    view.pressVirtual(F2);
    EXPECT_FALSE(walk.wasd_walk_console());
    EXPECT_FALSE(walk.rotate_on_idle());
    walk.rotate_on_idle(true);
    view.pressVirtual(F2);
    EXPECT_TRUE(walk.wasd_walk_console());
    EXPECT_FALSE(walk.rotate_on_idle());
    EXPECT_TRUE(desktop.isPointerVisible());
}

TEST_F(Input, F3DigitThreeAndSetGameModeToggleTheModeWithLooksOnIdle)
{
    for(int way = 0; way < 3; ++way)
    {
        auto const toggle = [this, way]
        {
            if(way == 0)
                view.pressVirtual(F3);
            else if(way == 1)
                view.pressVirtual('3');
            else
                walk.setGameMode();
        };
        toggle();
        EXPECT_FALSE(walk.wasd_walk_console()) << way;
        EXPECT_TRUE(walk.rotate_on_idle()) << way;
        EXPECT_FALSE(desktop.isPointerVisible()) << way;
        toggle();
        EXPECT_TRUE(walk.wasd_walk_console()) << way;
        EXPECT_FALSE(walk.rotate_on_idle()) << way;
        EXPECT_TRUE(desktop.isPointerVisible()) << way;
    }
}

TEST_F(Input, LostFocusEndsGameModeAlsoWhereTheEngineIsSilent)
{
    walk.setSilent(true);
    walk.setGameMode();
    EXPECT_FALSE(walk.wasd_walk_console());
    walk.killFocus(&navigator);
    EXPECT_TRUE(walk.wasd_walk_console());
    EXPECT_FALSE(walk.rotate_on_idle());
    EXPECT_TRUE(desktop.isPointerVisible());
    EXPECT_EQ(desktop.getCapture(), nullptr);
}

// --- keys of the settings ---

struct Settings
{
    explicit Settings(OpenWalk const &walk)
        : numbers{walk.motion_factor(), walk.rot_factor(), walk.camera_field_of_view()}
        , truths{walk.walk_mode(),
                 walk.god_mode(),
                 walk.staircase_mode(),
                 walk.out_of_camera_console(),
                 walk.god_perspecitve_console(),
                 walk.wasd_walk_console(),
                 walk.rotate_on_idle()}
    {
    }
    friend bool operator==(Settings const &, Settings const &) = default;

    std::vector<Real32> numbers;
    std::vector<bool> truths;
};

TEST_F(Input, SpaceLetsTheNextStepJump)
{
    view.pressVirtual(Space);
    EXPECT_FALSE(walk.staircase_mode());
    view.frame({'A'}, 16);
    EXPECT_FALSE(walk.staircase_mode());
    view.frame({'W'}, 16);
    EXPECT_TRUE(walk.staircase_mode());
    EXPECT_FALSE(log.steps.at(0).mayJump);
    EXPECT_TRUE(log.steps.at(1).mayJump);
}

TEST_F(Input, F7AndF8ChangeTheFieldOfView)
{
    view.pressVirtual(F7);
    EXPECT_EQ(walk.camera_field_of_view(), 45.f / 1.2f);
    view.pressVirtual(F8);
    EXPECT_EQ(walk.camera_field_of_view(), 45.f / 1.2f * 1.2f);
    for(int i = 0; i < 20; ++i)
        view.pressVirtual(F8);
    EXPECT_EQ(walk.camera_field_of_view(), 120.f);
    for(int i = 0; i < 20; ++i)
        view.pressVirtual(F7);
    EXPECT_EQ(walk.camera_field_of_view(), 30.f);
}

TEST_F(Input, CharactersChangeTheFactorsByPercent)
{
    view.pressCharacter('+');
    EXPECT_EQ(walk.motion_factor(), 0.4f);
    view.pressCharacter('-');
    EXPECT_EQ(walk.motion_factor(), 0.2f);
    for(int i = 0; i < 3; ++i)
        view.pressCharacter('-');
    EXPECT_EQ(walk.motion_factor(), 0.f);
    view.pressCharacter('*');
    EXPECT_EQ(walk.rot_factor(), 0.4f);
    view.pressCharacter('_');
    EXPECT_EQ(walk.rot_factor(), 0.2f);
}

TEST_F(Input, DigitsToggle)
{
    struct
    {
        Int16 digit;
        bool (WASDWalkEngine::*get)() const;
    } const rows[] = {{'1', &WASDWalkEngine::walk_mode},
                      {'2', &WASDWalkEngine::god_mode},
                      {'5', &WASDWalkEngine::out_of_camera_console},
                      {'6', &WASDWalkEngine::god_perspecitve_console}};
    for(auto const &row : rows)
    {
        bool const before = (walk.*row.get)();
        view.pressCharacter(row.digit);
        EXPECT_EQ((walk.*row.get)(), !before) << row.digit;
        view.pressCharacter(row.digit);
        EXPECT_EQ((walk.*row.get)(), before) << row.digit;
    }
}

TEST_F(Input, CharactersAreNoVirtualKeysAndVirtualKeysNoCharacters)
{
    Settings const before(walk);
    for(Int16 const key : {Escape, Shift, Ctrl, Space, F2, F3, F7, F8, Int16('3')})
    {
        view.pressCharacter(key);
        EXPECT_EQ(Settings(walk), before) << key;
    }
    for(char const key : std::string("1256*+-_"))
    {
        view.pressVirtual(key);
        EXPECT_EQ(Settings(walk), before) << key;
    }
}

TEST_F(Input, KeysThatGoUpAndPlainKeyPressesDoNothing)
{
    Settings const before(walk);
    for(Int16 key = 0; key < 300; ++key)
    {
        for(UInt16 const modifiers : {0, 0x10, 0x20, 0x30})
            walk.keyPressEx(key, modifiers, 1, 1, &navigator);
        walk.keyPress(key, 1, 1, &navigator);
        EXPECT_EQ(Settings(walk), before) << key;
    }
}

TEST_F(Input, AKeyPressWithoutFocusIsIgnored)
{
    desktop.setFocus(nullptr);
    view.pressVirtual(F3);
    EXPECT_TRUE(walk.wasd_walk_console());
}

// --- the wheel ---

TEST_F(Input, TheWheelChangesTheSpeed)
{
    walk.buttonPress(NavigatorEvent::WheelUp, 0, 0, &navigator);
    EXPECT_EQ(walk.motion_factor(), 0.2f / 1.2f);
    walk.buttonPress(NavigatorEvent::WheelDown, 0, 0, &navigator);
    EXPECT_EQ(walk.motion_factor(), 0.2f / 1.2f * 1.2f);
    for(int i = 0; i < 40; ++i)
        walk.buttonPress(NavigatorEvent::WheelDown, 0, 0, &navigator);
    EXPECT_EQ(walk.motion_factor(), 10.f);
    for(int i = 0; i < 120; ++i)
        walk.buttonPress(NavigatorEvent::WheelUp, 0, 0, &navigator);
    EXPECT_EQ(walk.motion_factor(), 1e-6f);
    walk.motion_factor(-9.5f);
    walk.buttonPress(NavigatorEvent::WheelDown, 0, 0, &navigator);
    EXPECT_EQ(walk.motion_factor(), -10.f);
    EXPECT_EQ(walk.rot_factor(), 0.2f);
}

TEST_F(Input, TheWheelWithShiftChangesTheTurns)
{
    desktop.setKey(Shift, true);
    walk.buttonPress(NavigatorEvent::WheelUp, 0, 0, &navigator);
    EXPECT_EQ(walk.rot_factor(), 0.2f / 1.2f);
    for(int i = 0; i < 40; ++i)
        walk.buttonPress(NavigatorEvent::WheelDown, 0, 0, &navigator);
    EXPECT_EQ(walk.rot_factor(), 10.f);
    for(int i = 0; i < 120; ++i)
        walk.buttonPress(NavigatorEvent::WheelUp, 0, 0, &navigator);
    EXPECT_EQ(walk.rot_factor(), 1e-6f);
    EXPECT_EQ(walk.motion_factor(), 0.2f);
}

TEST_F(Input, TheWheelWithCtrlKeepsTheFieldOfViewInItsRange)
{
    desktop.setKey(Ctrl, true);
    desktop.setKey(Shift, true); // Ctrl goes first
    walk.buttonPress(NavigatorEvent::WheelUp, 0, 0, &navigator);
    EXPECT_EQ(walk.camera_field_of_view(), 45.f / 1.2f);
    for(Int16 const button : {NavigatorEvent::WheelUp, NavigatorEvent::WheelDown})
    {
        for(int i = 0; i < 30; ++i)
        {
            walk.buttonPress(button, 0, 0, &navigator);
            EXPECT_GE(walk.camera_field_of_view(), 30.f);
            EXPECT_LE(walk.camera_field_of_view(), 120.f);
        }
        EXPECT_EQ(walk.camera_field_of_view(), button == NavigatorEvent::WheelUp ? 30.f : 120.f);
    }
    EXPECT_EQ(walk.motion_factor(), 0.2f);
    EXPECT_EQ(walk.rot_factor(), 0.2f);
}

TEST_F(Input, OtherButtonsChangeNothing)
{
    Settings const before(walk);
    for(Int16 const button : {-1, 0, 1, 2, 5, 99})
        walk.buttonPress(button, 0, 0, &navigator);
    EXPECT_EQ(Settings(walk), before);
}

// --- looks ---

TEST_F(Input, NormalisedPlacesCountFromTheLastLook)
{
    Real32 fromX, fromY, toX, toY;
    ASSERT_TRUE(walk.calcFromTo(400, 300, fromX, fromY, toX, toY));
    EXPECT_EQ(fromX, -1.f);
    EXPECT_EQ(fromY, 1.f);
    EXPECT_EQ(toX, 0.f);
    EXPECT_EQ(toY, 0.f);
    walk.rotate_move(0, 600, 450);
    ASSERT_TRUE(walk.calcFromTo(400, 300, fromX, fromY, toX, toY));
    EXPECT_EQ(fromX, 0.5f);
    EXPECT_EQ(fromY, -0.5f);
}

TEST_F(Input, NormalisedPlacesCountFromTheCornerOfTheView)
{
    view.viewport->setLeft(200);
    view.viewport->setRight(599);
    view.viewport->setBottom(100);
    view.viewport->setTop(299);
    Real32 fromX, fromY, toX, toY;
    ASSERT_TRUE(walk.calcFromTo(200, 300, fromX, fromY, toX, toY));
    EXPECT_EQ(fromX, -2.f);
    EXPECT_EQ(fromY, 4.f);
    EXPECT_EQ(toX, -1.f);
    EXPECT_EQ(toY, 1.f);
}

TEST_F(Input, WithoutPixelsNothingIsNormalisedAndTheNextLookStillBeginsThere)
{
    view.window->setSize(0, 0);
    Real32 numbers[4] = {1, 2, 3, 4};
    EXPECT_FALSE(walk.calcFromTo(5, 6, numbers[0], numbers[1], numbers[2], numbers[3]));
    EXPECT_EQ(numbers[0], 1.f);
    EXPECT_EQ(numbers[3], 4.f);
    Pnt3f const at = walk.getAt();
    walk.rotate_move(0, 400, 300);
    EXPECT_EQ(walk.getAt(), at);
    view.window->setSize(800, 600);
    walk.rotate_move(0, 400, 300);
    EXPECT_TRUE(walk.getAt().equals(at, 1e-6f));
}

TEST_F(Input, IdleOnlyRemembersThePlaceUnlessTheViewIsToFollow)
{
    Pnt3f const at = walk.getAt();
    walk.idle(0, 400, 300, &navigator);
    EXPECT_EQ(walk.getAt(), at);
    walk.rotate_move(0, 400, 300); // the look begins at the place of the idle event
    EXPECT_TRUE(walk.getAt().equals(at, 1e-6f));
    walk.rotate_on_idle(true); // in console mode it does not follow yet
    walk.idle(0, 0, 0, &navigator);
    EXPECT_TRUE(walk.getAt().equals(at, 1e-6f));
    view.pressVirtual(F3);
    walk.idle(0, 80, 0, &navigator); // a tenth of the width: 0.2 to the right
    EXPECT_NEAR(walk.getAt()[0] - at[0], std::sin(0.2f), 1e-5);
}

TEST_F(Input, IdleFollowsWhileAKeyMoves)
{
    walk.idle(0, 0, 0, &navigator);
    Pnt3f const at = walk.getAt();
    view.frame({'C'}, 16);
    walk.idle(0, 0, 60, &navigator); // a tenth of the height: 0.2 down
    EXPECT_NEAR(walk.getAt()[1] - at[1], -std::sin(0.2f), 1e-5);
    view.frame({}, 16);
    Pnt3f const after = walk.getAt();
    walk.idle(0, 0, 120, &navigator);
    EXPECT_EQ(walk.getAt(), after);
}

TEST_F(Input, AStepLooksFirst)
{
    walk.idle(0, 0, 0, &navigator);
    walk.moveTo(Int16(400 * 1.5707963f), 0, &navigator); // a quarter turn to the right
    view.frame({'W'}, 100);
    EXPECT_NEAR(walk.getFrom()[0], 0.2f, 1e-3);
    EXPECT_NEAR(walk.getFrom()[2], 0.f, 1e-3);
}

TEST_F(Input, APointerThatLeavesTheViewWrapsWithoutATurn)
{
    view.pressVirtual(F3);
    walk.idle(0, 400, 300, &navigator);
    Vec3f const look = walk.getAt() - walk.getFrom();
    struct
    {
        Int16 x, y;
    } const places[] = {{-1, 300}, {801, 300}, {400, -1}, {400, 601}, {-32768, 32767}};
    for(auto const &place : places)
    {
        desktop.setPointer({0, 0});
        walk.mouseMove(place.x, place.y, &navigator);
        EXPECT_EQ(desktop.getPointer().x, 500) << place.x;
        EXPECT_EQ(desktop.getPointer().y, 350) << place.x;
        walk.idle(0, 400, 300, &navigator); // where the pointer now is
        view.frame({'W'}, 16);
        EXPECT_TRUE((walk.getAt() - walk.getFrom()).equals(look, 1e-5f)) << place.x;
    }
}

TEST_F(Input, APointerInTheViewAndOnItsEdgeIsLeftAlone)
{
    view.pressVirtual(F3);
    struct
    {
        Int16 x, y;
    } const places[] = {{0, 0}, {800, 600}, {400, 300}};
    for(auto const &place : places)
    {
        desktop.setPointer({1, 2});
        walk.mouseMove(place.x, place.y, &navigator);
        walk.idle(0, place.x, place.y, &navigator);
        EXPECT_EQ(desktop.getPointer().x, 1) << place.x;
    }
}

TEST_F(Input, InConsoleModeThePointerNeverWraps)
{
    desktop.setPointer({1, 2});
    walk.mouseMove(-5, 700, &navigator);
    walk.idle(0, -5, 700, &navigator);
    EXPECT_EQ(desktop.getPointer().x, 1);
}

TEST_F(Input, AnIdleEventThatTurnsAlsoWraps)
{
    view.pressVirtual(F3);
    walk.idle(0, 810, 300, &navigator);
    EXPECT_EQ(desktop.getPointer().x, 500);
    Pnt3f const at = walk.getAt();
    walk.idle(0, 400, 300, &navigator);
    EXPECT_TRUE(walk.getAt().equals(at, 1e-6f));
}

// --- silence ---

TEST_F(Input, ASilentEngineIgnoresEverythingButLostFocus)
{
    walk.setSilent(true);
    Settings const before(walk);
    Pnt3f const at = walk.getAt();
    for(Int16 button = 0; button < 5; ++button)
    {
        walk.buttonPress(button, 900, 900, &navigator);
        walk.buttonRelease(button, 900, 900, &navigator);
    }
    walk.moveTo(900, 900, &navigator);
    walk.mouseMove(900, 900, &navigator);
    walk.idle(0, 900, 900, &navigator);
    for(Int16 key = 0; key < 256; ++key)
    {
        view.pressVirtual(key);
        view.pressCharacter(key);
    }
    view.frame({'W', 'E', 'C'}, 100);
    EXPECT_EQ(Settings(walk), before);
    EXPECT_EQ(walk.getAt(), at);
    EXPECT_TRUE(log.steps.empty());
    EXPECT_TRUE(desktop.isPointerVisible());
    // Nor has it noted a place: the next step does not turn.
    walk.setSilent(false);
    view.frame({'W'}, 16);
    EXPECT_NEAR(walk.getAt()[0], at[0], 1e-6);
}

// --- the camera ---

TEST_F(Input, TheCamerasFieldOfViewFollowsTheEngines)
{
    view.frame({}, 16);
    EXPECT_EQ(view.camera->getFov(), 45.f / 360 * 2 * 3.1415927f);
    walk.setFieldOfView(60);
    walk.setSilent(true);
    view.frame({}, 16);
    EXPECT_EQ(view.camera->getFov(), 60.f / 360 * 2 * 3.1415927f);
    view.camera->setFov(0.1f);
    view.frame({}, 16);
    EXPECT_EQ(view.camera->getFov(), 60.f / 360 * 2 * 3.1415927f);
    EXPECT_EQ(walk.getFieldOfView(), 60.f);
}

TEST_F(Input, AnEqualFieldOfViewIsNotWrittenAgain)
{
    for(Real32 const degrees : {30.f, 37.5f, 45.f, 54.f, 64.8f, 77.759995f, 111.1f, 120.f})
    {
        walk.camera_field_of_view(degrees);
        view.frame({}, 16);
        Thread::getCurrentChangeList()->commitChanges();
        view.frame({}, 16);
        EXPECT_EQ(view.camera->getChangeMask(), 0u) << degrees;
    }
}

TEST_F(Input, TheWorldIsTheRootOfTheViewport)
{
    view.viewport->setRoot(make_floor(0));
    EXPECT_FALSE(walk.can_fall(Pnt3f(0, 1, 0)));
    walk.setSilent(true);
    walk.onViewportChanged(&navigator);
    EXPECT_TRUE(walk.can_fall(Pnt3f(0, 1, 0)));
    walk.onViewportChanged(nullptr);
    EXPECT_FALSE(walk.can_fall(Pnt3f(0, 1, 0)));
}
} // namespace
