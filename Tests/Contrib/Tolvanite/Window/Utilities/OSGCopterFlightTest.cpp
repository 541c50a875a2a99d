// How the copter flies: start and stop, its four states, the sphere.

#include <cmath>

#include "LogCapture.h"
#include "MathPrinters.h"
#include "RandomNumbers.h"

#include "OpenCopter.h"

using namespace OSG;
using namespace OSG::Test;

namespace
{
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
    // Half the window is 1 in normalised coordinates. Ten ticks turn by 1 / 20 * 0.4 each.
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
    // MoveToState takes the turn, but not the step.
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
