// Settings, percentages, modes and life of the walk; its input, motion and bad input have files of
// their own.
#include "OSGWASDWalkEngine.h"

#include <cmath>

#include <gtest/gtest.h>

#include "LogCapture.h"
#include "OSGMemManager.h"
#include "WalkedView.h"

using namespace OSG;
using namespace OSG::Test;

namespace
{
using Engine = WASDWalkEngine;

struct NumberRow
{
    char const *name;
    Real32 (Engine::*get)() const;
    void (Engine::*set)(Real32);
    Real32 initial;
};
NumberRow const Numbers[] = {
    {"height", &Engine::height, &Engine::height, 1.75f},
    {"height_eye", &Engine::height_eye, &Engine::height_eye, 1.6f},
    {"width", &Engine::width, &Engine::width, 0.5f},
    {"fatness", &Engine::fatness, &Engine::fatness, 0.2f},
    {"ground_distance", &Engine::ground_distance, &Engine::ground_distance, 0.05f},
    {"wall_distance", &Engine::wall_distance, &Engine::wall_distance, 0.1f},
    {"jump_strength", &Engine::jump_strength, &Engine::jump_strength, 1.5f},
    {"jump_staircase_strength", &Engine::jump_staircase_strength, &Engine::jump_staircase_strength,
     0.3f},
    {"motion_factor", &Engine::motion_factor, &Engine::motion_factor, 0.2f},
    {"motion_delta", &Engine::motion_delta, &Engine::motion_delta, 2.f},
    {"motion_multiplier", &Engine::motion_multiplier, &Engine::motion_multiplier, 1.2f},
    {"motion_max_factor", &Engine::motion_max_factor, &Engine::motion_max_factor, 10.f},
    {"fast_motion_factor", &Engine::fast_motion_factor, &Engine::fast_motion_factor, 5.f},
    {"slow_motion_factor", &Engine::slow_motion_factor, &Engine::slow_motion_factor, 0.2f},
    {"rot_factor", &Engine::rot_factor, &Engine::rot_factor, 0.2f},
    {"rot_delta", &Engine::rot_delta, &Engine::rot_delta, 2.f},
    {"rot_multiplier", &Engine::rot_multiplier, &Engine::rot_multiplier, 1.2f},
    {"rot_max_factor", &Engine::rot_max_factor, &Engine::rot_max_factor, 10.f},
    {"fast_rot_factor", &Engine::fast_rot_factor, &Engine::fast_rot_factor, 5.f},
    {"slow_rot_factor", &Engine::slow_rot_factor, &Engine::slow_rot_factor, 0.2f},
    {"camera_field_of_view", &Engine::camera_field_of_view, &Engine::camera_field_of_view, 45.f},
    {"setGroundDistance", &Engine::getGroundDistance, &Engine::setGroundDistance, 0.05f},
    {"setMinWallDistance", &Engine::getMinWallDistance, &Engine::setMinWallDistance, 0.1f},
};

struct TruthRow
{
    char const *name;
    bool (Engine::*get)() const;
    void (Engine::*set)(bool);
    bool initial;
};
TruthRow const Truths[] = {
    {"walk_mode", &Engine::walk_mode, &Engine::walk_mode, true},
    {"god_mode", &Engine::god_mode, &Engine::god_mode, false},
    {"staircase_mode", &Engine::staircase_mode, &Engine::staircase_mode, true},
    {"out_of_camera_console", &Engine::out_of_camera_console, &Engine::out_of_camera_console, true},
    {"god_perspecitve_console", &Engine::god_perspecitve_console, &Engine::god_perspecitve_console,
     true},
    {"wasd_walk_console", &Engine::wasd_walk_console, &Engine::wasd_walk_console, true},
    {"rotate_on_idle", &Engine::rotate_on_idle, &Engine::rotate_on_idle, false},
};

TEST(WASDWalkEngine, NumbersHaveTheirDefaultsAndAreStoredAsGiven)
{
    for(NumberRow const &row : Numbers)
    {
        UnrecordedRefPtr<Engine> const walk(Engine::create());
        EXPECT_EQ((walk->*row.get)(), row.initial) << row.name;
        for(Real32 const value : {-3.f, 0.f, 1e30f, INFINITY})
        {
            (walk->*row.set)(value);
            EXPECT_EQ((walk->*row.get)(), value) << row.name;
        }
        (walk->*row.set)(NAN);
        EXPECT_TRUE(std::isnan((walk->*row.get)())) << row.name;
    }
}

TEST(WASDWalkEngine, TruthsHaveTheirDefaults)
{
    for(TruthRow const &row : Truths)
    {
        UnrecordedRefPtr<Engine> const walk(Engine::create());
        EXPECT_EQ((walk->*row.get)(), row.initial) << row.name;
        (walk->*row.set)(!row.initial);
        EXPECT_EQ((walk->*row.get)(), !row.initial) << row.name;
    }
}

TEST(WASDWalkEngine, StoresNormalTriesAndPersonDimensions)
{
    UnrecordedRefPtr<Engine> const walk(Engine::create());
    EXPECT_EQ(walk->normal(), Vec3f(1, 0, 0));
    walk->setNormal(Vec3f(1, 2, 3));
    EXPECT_EQ(walk->normal(), Vec3f(1, 2, 3));
    EXPECT_EQ(walk->num_step_loop(), 10u);
    walk->num_step_loop(4000000000u);
    EXPECT_EQ(walk->num_step_loop(), 4000000000u);
    walk->setPersonDimensions(2, 1.8f, 0.6f, 0.3f);
    Real32 height, heightEye, width, fatness;
    walk->getPersonDimensions(height, heightEye, width, fatness);
    EXPECT_EQ(height, 2.f);
    EXPECT_EQ(heightEye, 1.8f);
    EXPECT_EQ(width, 0.6f);
    EXPECT_EQ(fatness, 0.3f);
    EXPECT_EQ(walk->height(), 2.f);
    EXPECT_EQ(walk->fatness(), 0.3f);
}

TEST(WASDWalkEngine, TheFieldOfViewIsLimitedInItsAbsoluteValue)
{
    UnrecordedRefPtr<Engine> const walk(Engine::create());
    EXPECT_EQ(walk->getFieldOfViewFac(), 1.2f);
    EXPECT_EQ(walk->getFieldOfViewMax(), 120.f);
    EXPECT_EQ(walk->getFieldOfViewMin(), 30.f);
    std::pair<Real32, Real32> const rows[] = {{60, 60},      {-45, -45},  {120, 120},  {-120, -120},
                                              {120.5f, 120}, {-121, 120}, {29.5f, 30}, {-2, 30}};
    for(auto const &[given, stored] : rows)
    {
        walk->setFieldOfView(given);
        EXPECT_EQ(walk->getFieldOfView(), stored) << given;
    }
}

TEST(WASDWalkEngine, FactorsInPercentStayBetweenNothingAndTheMaximum)
{
    UnrecordedRefPtr<Engine> const walk(Engine::create());
    EXPECT_EQ(walk->getMotionFactor(), 2.f);
    EXPECT_EQ(walk->getRotationFactor(), 2.f);
    EXPECT_EQ(walk->getMotionMultiplier(), 1.2f);
    EXPECT_EQ(walk->getRotationMultiplier(), 1.2f);
    walk->setMotionFactor(-1);
    EXPECT_EQ(walk->motion_factor(), 0.f);
    walk->setMotionFactor(1000);
    EXPECT_EQ(walk->motion_factor(), 10.f);
    walk->setMotionFactor(50);
    EXPECT_EQ(walk->motion_factor(), 5.f);
    walk->rot_max_factor(4);
    walk->setRotationFactor(-1);
    EXPECT_EQ(walk->rot_factor(), 0.f);
    walk->setRotationFactor(101);
    EXPECT_EQ(walk->rot_factor(), 4.f);
    walk->setRotationFactor(25);
    EXPECT_EQ(walk->rot_factor(), 1.f);
}

TEST(WASDWalkEngine, ADistanceIsAStepBackwards)
{
    WalkedView view;
    view.walk->setDistance(2);
    EXPECT_EQ(view.walk->getDistance(), 0.f);
    EXPECT_TRUE(view.walk->getFrom().equals(Pnt3f(0, 1.65f, 2), 1e-6f));
    EXPECT_TRUE(view.walk->getAt().equals(Pnt3f(0, 1.65f, 1), 1e-6f));
}

TEST(WASDWalkEngine, AMatrixGoesThroughTheSetterOfThreeParts)
{
    struct Watching : OpenWalk
    {
        using WASDWalkEngine::set;
        void set(Pnt3f from, Pnt3f at, Vec3f up) override
        {
            ++sets;
            WASDWalkEngine::set(from, at, up);
        }
        int sets = 0;
    };
    UnrecordedRefPtr<Watching> const walk(new Watching);
    walk->set(translation(1, 2, 3) * rotation(Vec3f(0, 1, 0), -1.5707963f));
    EXPECT_EQ(walk->sets, 1);
    EXPECT_EQ(walk->getFrom(), Pnt3f(1, 2, 3));
    EXPECT_TRUE(walk->getAt().equals(Pnt3f(2, 2, 3), 1e-6f));
    EXPECT_EQ(walk->getUp(), Vec3f(0, 1, 0));
}

TEST(WASDWalkEngine, TheFrameIsHorizontal)
{
    WalkedView view;
    Pnt3f position;
    Vec3f back, left, up;
    view.walk->getFrame(position, back, left, up);
    EXPECT_EQ(position, Pnt3f(0, 1.65f, 0));
    EXPECT_EQ(back, Vec3f(0, 0, 1));
    EXPECT_EQ(left, Vec3f(-1, 0, 0));
    EXPECT_EQ(up, Vec3f(0, 1, 0));
    view.walk->set(Pnt3f(1, 2, 3), Pnt3f(5, 7, 3), Vec3f(0, 3, 0));
    view.walk->calc_frame(back, left, up);
    EXPECT_TRUE(back.equals(Vec3f(-1, 0, 0), 1e-6f));
    EXPECT_TRUE(left.equals(Vec3f(0, 0, -1), 1e-6f));
    EXPECT_EQ(up, Vec3f(0, 1, 0));
}

// Actions, key tables and the functor have blocks of their own.
TEST(WASDWalkEngine, IsNotMadeWhicheverBlockIsMissing)
{
    LogCapture const log(LOG_PROGRESS);
    std::shared_ptr<Desktop> const desktop = Desktop::current();
    UnrecordedRefPtr<Engine> made(Engine::create()); // makes what all engines share
    made = nullptr;
    UInt64 blocks = 0;
    for(; made == nullptr && blocks < 1000; ++blocks)
    {
        UInt64 const before = get_mem_bytes();
        set_mem_block_limit(blocks);
        made = Engine::create();
        set_mem_limit(0);
        if(made == nullptr)
        {
            EXPECT_EQ(get_mem_bytes(), before) << blocks;
        }
    }
    EXPECT_GT(blocks, 30u);
    EXPECT_NE(made.get(), nullptr);
    EXPECT_TRUE(log.texts().empty());
}

TEST(WASDWalkEngine, EndsGameModeWhenItIsDestroyed)
{
    WalkedView view;
    view.walk->setGameMode();
    EXPECT_FALSE(view.desktop->isPointerVisible());
    EXPECT_EQ(view.desktop->getCapture(), view.native);
    view.desktop->setPointer({7, 8});
    view.navigator.setEngine(nullptr);
    view.walk = nullptr;
    EXPECT_TRUE(view.desktop->isPointerVisible());
    EXPECT_EQ(view.desktop->getCapture(), nullptr);
    EXPECT_EQ(view.desktop->getPointer().x, 7);
}

TEST(WASDWalkEngine, LeavesTheCaptureOfAnotherWindowWhenItIsDestroyed)
{
    WalkedView view;
    int other = 0;
    view.walk->setGameMode();
    view.desktop->setCapture(&other);
    view.navigator.setEngine(nullptr);
    view.walk = nullptr;
    EXPECT_EQ(view.desktop->getCapture(), &other);
    EXPECT_TRUE(view.desktop->isPointerVisible());
}
} // namespace
