#include "OSGWASDFlyEngine.h"

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
using FlyPtr = UnrecordedRefPtr<WASDFlyEngine>;

/// Flies in a view of a motion factor of 2, from (0, 0, 10) along -z.
struct Fly : ::testing::Test
{
    Fly()
    {
        view.navigator.setMotionFactor(2);
        view.navigator.setRotationAngle(0.25f);
        engine->set(Pnt3f(0, 0, 10), Pnt3f(0, 0, 5), Vec3f(0, 1, 0));
        view.navigator.setEngine(engine);
    }

    NavigatedView view;
    Navigator &navigator = view.navigator;
    FlyPtr const engine{WASDFlyEngine::create()};
};

// --- motion ---

TEST_F(Fly, PositiveStepsGoBackwards)
{
    EXPECT_EQ(engine->forward(3), 0.f);
    EXPECT_EQ(engine->getFrom(), Pnt3f(0, 0, 13));
    EXPECT_EQ(engine->getAt(), Pnt3f(0, 0, 8));
}

TEST_F(Fly, PositiveStepsSidewaysGoToTheLeft)
{
    EXPECT_EQ(engine->right(3), 0.f);
    EXPECT_EQ(engine->getFrom(), Pnt3f(-3, 0, 10));
    EXPECT_EQ(engine->getAt(), Pnt3f(-3, 0, 5));
}

TEST_F(Fly, DoesNotMoveAlongAViewWithoutADirection)
{
    engine->set(Pnt3f(1, 2, 3), Pnt3f(1, 2, 3), Vec3f(0, 1, 0));
    engine->forward(5);
    engine->right(5);
    EXPECT_EQ(engine->getFrom(), Pnt3f(1, 2, 3));
    EXPECT_EQ(engine->getAt(), Pnt3f(1, 2, 3));
}

TEST_F(Fly, DoesNotMoveSidewaysWithUpAlongTheView)
{
    engine->setUp(Vec3f(0, 0, 1));
    engine->right(5);
    EXPECT_EQ(engine->getFrom(), Pnt3f(0, 0, 10));
}

TEST_F(Fly, TurnsOfNothingLeaveThePoint)
{
    engine->rotate(0, 0);
    EXPECT_TRUE(engine->getAt().equals(Pnt3f(0, 0, 5), 1e-6f));
}

TEST_F(Fly, TurnsToTheRightAndDown)
{
    engine->rotate(1.5707963f, 0);
    EXPECT_TRUE(engine->getAt().equals(Pnt3f(5, 0, 10), 1e-5f));
    engine->rotate(0, 0.5235988f);
    EXPECT_TRUE(engine->getAt().equals(Pnt3f(4.330127f, -2.5f, 10), 1e-5f));
    EXPECT_EQ(engine->getUp(), Vec3f(0, 1, 0));
    EXPECT_EQ(engine->getFrom(), Pnt3f(0, 0, 10));
}

TEST_F(Fly, PassesTheVertical)
{
    for(int i = 0; i < 3; ++i)
        engine->rotate(0, 0.7f);
    // 120 degrees down: what was ahead is behind.
    Pnt3f const expected(0, -5 * std::sin(2.1f), 10 - 5 * std::cos(2.1f));
    EXPECT_TRUE(engine->getAt().equals(expected, 1e-5f));
}

TEST_F(Fly, AtTheVerticalTheMatrixStays)
{
    Matrix const before = engine->getMatrix();
    engine->setAt(Pnt3f(0, -5, 10));
    EXPECT_EQ(engine->getMatrix(), before);
    EXPECT_EQ(engine->getAt(), Pnt3f(0, -5, 10));
}

// --- pose ---

TEST_F(Fly, ItsDistanceIsAStep)
{
    engine->setDistance(2);
    EXPECT_EQ(engine->getDistance(), 0.f);
    EXPECT_EQ(engine->getFrom(), Pnt3f(0, 0, 12));
    EXPECT_EQ(engine->getAt(), Pnt3f(0, 0, 7));
}

TEST_F(Fly, AMatrixPutsThePointOneUnitAhead)
{
    engine->set(translation(1, 2, 3) * rotation(Vec3f(0, 1, 0), -1.5707963f));
    EXPECT_EQ(engine->getFrom(), Pnt3f(1, 2, 3));
    EXPECT_TRUE(engine->getAt().equals(Pnt3f(2, 2, 3), 1e-6f));
    EXPECT_EQ(engine->getUp(), Vec3f(0, 1, 0));
}

/// Tells whether the pose goes through the function that a derived engine may have replaced.
class WatchingFly : public WASDFlyEngine
{
  public:
    using WASDFlyEngine::set;
    void set(Pnt3f from, Pnt3f at, Vec3f up) override
    {
        ++sets;
        WASDFlyEngine::set(from, at, up);
    }
    Real32 forward(Real32 step) override
    {
        steps.push_back(step);
        return 0.f;
    }
    Real32 right(Real32 step) override
    {
        sideways.push_back(step);
        return 0.f;
    }
    void rotate(Real32 x, Real32 y) override { turns.push_back({x, y}); }
    void keyPressEx(Int16 key, UInt16 modifiers, Int16 x, Int16 y, Navigator *navigator) override
    {
        keys.push_back(key);
        WASDFlyEngine::keyPressEx(key, modifiers, x, y, navigator);
    }

    int sets = 0;
    std::vector<Int16> keys;
    std::vector<Real32> sideways;
    std::vector<Real32> steps;
    std::vector<std::pair<Real32, Real32>> turns;
};

TEST_F(Fly, GoesThroughTheOperationsThatMayBeReplaced)
{
    UnrecordedRefPtr<WatchingFly> const fly(TransitPtr<WatchingFly>(new WatchingFly));
    fly->set(translation(1, 2, 3));
    EXPECT_EQ(fly->sets, 1);
    fly->buttonPress(3, 0, 0, &navigator);
    fly->buttonPress(0, 0, 0, &navigator);
    fly->moveTo(0, 0, &navigator);
    fly->keyPress(4, 0, 0, &navigator);
    EXPECT_EQ(fly->steps, (std::vector<Real32>{-2, -2}));
    EXPECT_EQ(fly->turns, (std::vector<std::pair<Real32, Real32>>{{0, 0}, {-0.25f, 0}}));
}

TEST_F(Fly, StepsSidewaysThroughTheOperationThatMayBeReplaced)
{
    UnrecordedRefPtr<WatchingFly> const fly(TransitPtr<WatchingFly>(new WatchingFly));
    navigator.setEngine(fly);
    Pnt3f const before = fly->getFrom();
    navigator.keyPress(NavigatorEvent::LeftKey, 1, 1);
    navigator.keyPress(NavigatorEvent::RightKey, 1, 1);
    EXPECT_EQ(fly->sideways, (std::vector<Real32>{2, -2}));
    EXPECT_EQ(fly->getFrom(), before);
}

TEST_F(Fly, KeysGoThroughTheOperationThatMayBeReplaced)
{
    UnrecordedRefPtr<WatchingFly> const fly(TransitPtr<WatchingFly>(new WatchingFly));
    navigator.setEngine(fly);
    navigator.keyPress(2, 1, 1);
    navigator.keyPressEx(3, NavigatorEvent::KeyDown, 1, 1);
    fly->keyPress(5, 1, 1, &navigator);
    EXPECT_EQ(fly->keys, (std::vector<Int16>{2, 3, 5}));
}

TEST_F(Fly, ATurnByOneBadAngleIsNoTurn)
{
    for(Real32 const bad : {NAN, INFINITY})
    {
        engine->rotate(0.5f, bad);
        engine->rotate(bad, 0.5f);
    }
    EXPECT_EQ(engine->getAt(), Pnt3f(0, 0, 5));
}

// --- events ---

TEST_F(Fly, FliesWithEachMoveWhileAButtonIsDown)
{
    struct Row
    {
        Int16 button;
        Real32 z;
    };
    for(Row const &row : {Row{0, 8}, Row{1, 10}, Row{2, 12}})
    {
        engine->set(Pnt3f(0, 0, 10), Pnt3f(0, 0, 5), Vec3f(0, 1, 0));
        navigator.buttonPress(row.button, 320, 240);
        EXPECT_EQ(engine->getFrom(), Pnt3f(0, 0, 10));
        navigator.moveTo(320, 240);
        EXPECT_EQ(engine->getFrom(), Pnt3f(0, 0, row.z));
        navigator.buttonRelease(4, 320, 240);
        navigator.moveTo(320, 240);
        EXPECT_EQ(engine->getFrom(), Pnt3f(0, 0, row.z));
    }
}

TEST_F(Fly, TurnsWithEachMoveWhateverButtonIsDown)
{
    navigator.mouseMove(320, 240);
    navigator.moveTo(400, 240);
    // A quarter of half the view to the right.
    Pnt3f const expected(5 * std::sin(0.25f), 0, 10 - 5 * std::cos(0.25f));
    EXPECT_TRUE(engine->getAt().equals(expected, 1e-5f));
}

TEST_F(Fly, APointerThatMovesUpTurnsTheViewUp)
{
    navigator.mouseMove(320, 240);
    navigator.moveTo(320, 180);
    EXPECT_TRUE(
        engine->getAt().equals(Pnt3f(0, 5 * std::sin(0.25f), 10 - 5 * std::cos(0.25f)), 1e-5f));
}

TEST_F(Fly, StepsWithTheWheelAndEndsTheFlight)
{
    navigator.buttonPress(0, 320, 240);
    navigator.buttonPress(3, 320, 240);
    EXPECT_EQ(engine->getFrom(), Pnt3f(0, 0, 8));
    navigator.moveTo(320, 240);
    EXPECT_EQ(engine->getFrom(), Pnt3f(0, 0, 8));
    navigator.buttonPress(4, 320, 240);
    EXPECT_EQ(engine->getFrom(), Pnt3f(0, 0, 10));
}

TEST_F(Fly, StepsAndTurnsWithTheKeys)
{
    struct Row
    {
        Int16 key;
        Pnt3f from, at;
    };
    Real32 const s = 5 * std::sin(0.25f);
    Real32 const c = 10 - 5 * std::cos(0.25f);
    for(Row const &row : {Row{0, {-2, 0, 10}, {-2, 0, 5}}, Row{1, {2, 0, 10}, {2, 0, 5}},
                          Row{2, {0, 0, 8}, {0, 0, 3}}, Row{3, {0, 0, 12}, {0, 0, 7}},
                          Row{4, {0, 0, 10}, {-s, 0, c}}, Row{5, {0, 0, 10}, {s, 0, c}}})
    {
        engine->set(Pnt3f(0, 0, 10), Pnt3f(0, 0, 5), Vec3f(0, 1, 0));
        navigator.keyPress(row.key, 1, 1);
        EXPECT_TRUE(engine->getFrom().equals(row.from, 1e-5f)) << row.key;
        EXPECT_TRUE(engine->getAt().equals(row.at, 1e-5f)) << row.key;
    }
}

TEST_F(Fly, SaysWhatItDoesNotKnow)
{
    LogCapture log(LOG_NOTICE);
    navigator.buttonPress(0, 320, 240);
    navigator.buttonPress(5, 320, 240);
    navigator.keyPress(6, 320, 240);
    // Virtual keys are not converted here.
    navigator.keyPressEx(38, NavigatorEvent::VirtualKey | NavigatorEvent::KeyDown, 320, 240);
    EXPECT_EQ(log.texts(LOG_NOTICE),
              (std::vector<std::string>{"WASDFlyEngine: buttonPress, unknown button\n",
                                        "FlyEngine: keyPress, unknown key\n",
                                        "FlyEngine: keyPress, unknown key\n"}));
    // The flight is still on.
    navigator.moveTo(320, 240);
    EXPECT_EQ(engine->getFrom(), Pnt3f(0, 0, 8));
}

TEST_F(Fly, StandsStillBetweenEvents)
{
    navigator.buttonPress(0, 320, 240);
    navigator.idle(0, 400, 100);
    EXPECT_EQ(engine->getFrom(), Pnt3f(0, 0, 10));
    EXPECT_EQ(engine->getAt(), Pnt3f(0, 0, 5));
}

// --- what holds whatever is done ---

TEST_F(Fly, KeepsTheDistanceToItsPoint)
{
    RandomNumbers random(41);
    for(int i = 0; i < 2000; ++i)
    {
        Int16 const x = static_cast<Int16>(random.below(640));
        Int16 const y = static_cast<Int16>(random.below(480));
        switch(random.below(4))
        {
        case 0:
            navigator.buttonPress(static_cast<Int16>(random.below(5)), x, y);
            break;
        case 1:
            navigator.keyPress(static_cast<Int16>(random.below(6)), x, y);
            break;
        default:
            navigator.moveTo(x, y);
        }
        Real32 const size = engine->getFrom().subZero().length();
        EXPECT_NEAR((engine->getAt() - engine->getFrom()).length(), 5.f, 1e-3f + 1e-5f * size);
        EXPECT_EQ(engine->getUp(), Vec3f(0, 1, 0));
    }
}
} // namespace
