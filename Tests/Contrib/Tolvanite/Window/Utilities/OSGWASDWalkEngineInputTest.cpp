// Events, keys and time of the walk.
#include "OSGWASDWalkEngine.h"

#include <cmath>

#include <gtest/gtest.h>

#include "LogCapture.h"
#include "WalkInput.h"

using namespace OSG;
using namespace OSG::Test;

namespace
{
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

/// Time passes while a frame is computed.
struct SlowFrames : ScriptedDesktop
{
    Int64 getTicks() override
    {
        advance(isSlow ? 1000 : 0);
        return ScriptedDesktop::getTicks();
    }
    bool isSlow = false;
};

TEST(WalkTime, TheTimeThatAFrameTakesIsNotWalked)
{
    auto const desktop = std::make_shared<SlowFrames>();
    WalkedView view;
    WalkPtr const walk = make_walk(desktop);
    StepLog log;
    walk->setWalkObserver(&log);
    view.navigator.setEngine(walk);
    view.navigator.moveTo(0, 0);
    desktop->setFocus(view.native);
    desktop->setKey('S', true);
    desktop->isSlow = true;
    view.navigator.updateCameraTransformation(); // asks at 1000, and at 2000 when it is done
    desktop->isSlow = false;
    desktop->advance(16);
    view.navigator.updateCameraTransformation();
    ASSERT_EQ(log.steps.size(), 2u);
    EXPECT_EQ(log.steps[0].step, expected_step(1, 1000, 1000, 0.2f));
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
    EXPECT_TRUE(log.steps.at(0).isAfterSpace);
    EXPECT_TRUE(log.steps.at(1).isAfterSpace);
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

} // namespace
