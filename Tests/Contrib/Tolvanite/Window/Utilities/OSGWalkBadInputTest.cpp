// What a host may get wrong with the walk: nothing crashes or hangs, and the pose stays finite.

#include <cmath>

#include <gtest/gtest.h>

#include "LogCapture.h"
#include "RandomNumbers.h"
#include "WalkedView.h"

using namespace OSG;
using namespace OSG::Test;

namespace
{
constexpr Int16 AllKeys[] = {1,   2,   33,  34,  35,  37,  38,  39,  40, 46,
                             'A', 'C', 'D', 'E', 'Q', 'S', 'W', 'X', 'Y'};

NodePtr make_room()
{
    return make_group({make_floor(0), make_floor(2.5f), make_wall(-1), make_wall(1),
                       make_block({-2, 0, -2}, {-0.5f, 0.2f, 2})});
}

/// Every motion, on its own and by keys, in both modes.
void mistreat(WalkedView &view)
{
    OpenWalk &walk = *view.walk;
    for(bool const walks : {true, false})
    {
        walk.walk_mode(walks);
        for(Int16 const key : AllKeys)
        {
            view.frame({key}, 16);
            view.frame({key, 16}, 500);
        }
        for(Real32 const step : {0.3f, -20.f})
        {
            walk.view_dir_move(step, 3, 4);
            walk.horizontal_move(step, 500, 600);
            walk.vertical_move(step, -7, 8);
        }
        walk.staircase_mode(false);
        walk.view_dir_move(2, 0, 0);
        walk.rotate(0.1f, 0.2f);
        walk.rotate_horizont(0.5f);
        walk.fall();
        walk.can_fall(walk.getFrom());
        walk.setDistance(1);
        walk.setGameMode();
        walk.idle(0, 900, 900, &view.navigator);
        walk.setGameMode();
    }
}

void expect_finite(WalkedView &view, std::string const &name)
{
    EXPECT_TRUE(is_finite(view.walk->getFrom())) << name;
    EXPECT_TRUE(is_finite(view.walk->getAt())) << name;
    EXPECT_TRUE(is_finite(view.walk->getUp())) << name;
    EXPECT_TRUE(is_finite(view.walk->getMatrix())) << name;
}

struct NumberRow
{
    char const *name;
    void (WASDWalkEngine::*set)(Real32);
};
using W = WASDWalkEngine;
NumberRow const Numbers[] = {{"height", &W::height},
                             {"height_eye", &W::height_eye},
                             {"width", &W::width},
                             {"fatness", &W::fatness},
                             {"ground_distance", &W::ground_distance},
                             {"wall_distance", &W::wall_distance},
                             {"jump_strength", &W::jump_strength},
                             {"jump_staircase_strength", &W::jump_staircase_strength},
                             {"motion_factor", &W::motion_factor},
                             {"motion_delta", &W::motion_delta},
                             {"motion_multiplier", &W::motion_multiplier},
                             {"motion_max_factor", &W::motion_max_factor},
                             {"fast_motion_factor", &W::fast_motion_factor},
                             {"slow_motion_factor", &W::slow_motion_factor},
                             {"rot_factor", &W::rot_factor},
                             {"rot_delta", &W::rot_delta},
                             {"rot_multiplier", &W::rot_multiplier},
                             {"rot_max_factor", &W::rot_max_factor},
                             {"fast_rot_factor", &W::fast_rot_factor},
                             {"slow_rot_factor", &W::slow_rot_factor},
                             {"camera_field_of_view", &W::camera_field_of_view}};

TEST(WalkBadInput, NumbersThatAreNoneInAnySetting)
{
    LogCapture const log;
    for(NumberRow const &row : Numbers)
    {
        for(Real32 const bad : {NAN, INFINITY, -INFINITY, 3e38f, -3e38f, 0.f, -1.f, 1e-40f})
        {
            WalkedView view(make_room());
            (*view.walk.*row.set)(bad);
            mistreat(view);
            expect_finite(view, row.name + std::to_string(bad));
        }
    }
}

TEST(WalkBadInput, NumbersThatAreNoneInTheNavigator)
{
    LogCapture const log;
    for(Real32 const bad : {NAN, INFINITY, -INFINITY, 3e38f, 0.f, -1.f})
    {
        WalkedView view(make_room());
        view.navigator.setMotionFactor(bad);
        view.navigator.setRotationAngle(bad);
        mistreat(view);
        expect_finite(view, std::to_string(bad));
    }
}

TEST(WalkBadInput, ANumberThatIsNoneStaysOutOfThePose)
{
    struct
    {
        char const *name;
        void (WASDWalkEngine::*set)(Real32);
    } const rows[] = {{"height", &W::height},
                      {"height_eye", &W::height_eye},
                      {"motion_factor", &W::motion_factor}};
    for(auto const &row : rows)
    {
        WalkedView view(make_room());
        (*view.walk.*row.set)(NAN);
        Pnt3f const before = view.walk->getFrom();
        view.frame({'W'}, 16);
        view.frame({'A'}, 16);
        EXPECT_EQ(view.walk->getFrom(), before) << row.name;
    }
}

TEST(WalkBadInput, DimensionsOfNothingAndBelow)
{
    LogCapture const log;
    for(Real32 const size : {0.f, -0.f, -1.75f, -1e-3f})
    {
        for(int which = 0; which < 16; ++which)
        {
            WalkedView view(make_room());
            view.walk->setPersonDimensions(which & 1 ? size : 1.75f, which & 2 ? size : 1.6f,
                                           which & 4 ? size : 0.5f, which & 8 ? size : 0.2f);
            mistreat(view);
            expect_finite(view, std::to_string(which));
        }
    }
}

TEST(WalkBadInput, NoTriesAndFourThousandMillions)
{
    for(UInt32 const tries : {0u, 4294967295u})
    {
        WalkedView view(make_room());
        view.walk->num_step_loop(tries);
        mistreat(view);
        expect_finite(view, std::to_string(tries));
    }
}

struct ViewRow
{
    char const *name;
    void (*spoil)(WalkedView &);
};

TEST(WalkBadInput, ViewsWithoutTheirParts)
{
    LogCapture const log;
    for(ViewRow const &row :
        {ViewRow{"no viewport", [](WalkedView &v) { v.navigator.setViewport(nullptr); }},
         ViewRow{"no root", [](WalkedView &v) { v.viewport->setRoot(nullptr); }},
         ViewRow{"no root as the world",
                 [](WalkedView &v)
                 {
                     v.viewport->setRoot(nullptr);
                     v.walk->onViewportChanged(&v.navigator);
                 }},
         ViewRow{"no window", [](WalkedView &v) { v.window->subPort(v.viewport); }},
         ViewRow{"no native window", [](WalkedView &v) { v.window->setHwnd(nullptr); }},
         ViewRow{"no camera", [](WalkedView &v) { v.viewport->setCamera(nullptr); }},
         ViewRow{"no pixels", [](WalkedView &v) { v.window->setSize(0, 0); }},
         ViewRow{"no world", [](WalkedView &v) { v.walk->setWorld(nullptr); }},
         ViewRow{"no navigator", [](WalkedView &v) { v.walk->moveTo(1, 1, nullptr); }}})
    {
        WalkedView view(make_room());
        row.spoil(view);
        mistreat(view);
        expect_finite(view, row.name);
    }
}

TEST(WalkBadInput, WithoutAWorldNothingIsFoundAndThePersonMovesFreely)
{
    WalkedView view(make_room());
    view.walk->setWorld(nullptr);
    EXPECT_FALSE(view.walk->can_fall(Pnt3f(0, 1, 0)));
    view.walk->view_dir_move(-10, 0, 0);
    EXPECT_NEAR(view.walk->getFrom()[2], -10, 1e-4);
}

TEST(WalkBadInput, AnEngineThatNoEventHasReachedMovesByCallsAlone)
{
    WalkPtr const walk = make_walk(std::make_shared<ScriptedDesktop>());
    NodePtr const room = make_room();
    room->updateVolume();
    walk->setWorld(room);
    walk->set(Pnt3f(0, 1.65f, 0), Pnt3f(0, 1.65f, -1), Vec3f(0, 1, 0));
    walk->setDistance(0.3f);
    EXPECT_NEAR(walk->getFrom()[2], 0.3f, 1e-5);
    walk->evaluate();
    walk->center_cursor(-1, -1);
    walk->disable_cursor();
    walk->enable_cursor();
    walk->onUpdateCameraTransformation(nullptr);
    walk->onViewportChanged(nullptr);
    walk->killFocus(nullptr);
    EXPECT_NEAR(walk->getFrom()[2], 0.3f, 1e-5);
}

TEST(WalkBadInput, ModelsOfDegenerateTrianglesOnly)
{
    LogCapture const log;
    RandomNumbers random(7);
    std::vector<Pnt3f> corners;
    for(int i = 0; i < 300; ++i)
    {
        Pnt3f const a = random.point(-2, 2);
        Pnt3f const b = random.point(-2, 2);
        Pnt3f const middle = a + (b - a) * 0.5f;
        corners.insert(corners.end(), {a, a, a, a, b, a, a, middle, b});
    }
    for(Pnt3f const bad : {Pnt3f(NAN, 0, 0), Pnt3f(0, INFINITY, 0), Pnt3f(3e38f, 0, -3e38f)})
        corners.insert(corners.end(), {bad, bad, bad, bad, corners[0], corners[1]});
    WalkedView view(
        make_group({make_node(make_geometry(one_primitive(TrianglesPrimitive, corners)))}));
    mistreat(view);
    expect_finite(view, "degenerate");
}

TEST(WalkBadInput, PosesWithoutADirection)
{
    LogCapture const log;
    struct
    {
        Pnt3f from, at;
        Vec3f up;
    } const rows[] = {{{0, 1, 0}, {0, 1, 0}, {0, 1, 0}},
                      {{0, 1, 0}, {0, 5, 0}, {0, 1, 0}},
                      {{0, 1, 0}, {0, -5, 0}, {0, 1, 0}},
                      {{0, 1, 0}, {0, 1, -1}, {0, 0, 0}},
                      {{0, 1, 0}, {0, 1, -1}, {1e-7f, 0, 0}},
                      {{0, 1, 0}, {0, 1, -1}, {3e38f, 3e38f, 0}},
                      {{3e38f, -3e38f, 0}, {-3e38f, 3e38f, 1}, {0, 1, 0}}};
    for(auto const &row : rows)
    {
        WalkedView view(make_room());
        view.walk->set(row.from, row.at, row.up);
        mistreat(view);
        expect_finite(view, std::to_string(row.at[1]));
    }
}

TEST(WalkBadInput, ASecondWindowAndASetBackClock)
{
    WalkedView view(make_room());
    view.desktop->setTicks(1000000);
    view.frame({'W'}, 16);
    view.desktop->setTicks(5);
    view.frame({'W'}, 16);
    mistreat(view);
    expect_finite(view, "clock");
}
} // namespace
