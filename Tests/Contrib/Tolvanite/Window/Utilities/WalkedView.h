#pragma once

/// \file
/// A person in a view of a scripted desktop, for tests of the walk.

#include <memory>

#include "CameraBuilders.h"
#include "GeometryBuilders.h"
#include "MathPrinters.h"
#include "OSGNavigator.h"
#include "OSGScriptedDesktop.h"
#include "OSGWASDWalkEngine.h"
#include "OSGWIN32Window.h"

namespace OSG::Test
{
/// The engine with its protected operations.
class OpenWalk : public WASDWalkEngine
{
  public:
    using WASDWalkEngine::calc_frame;
    using WASDWalkEngine::calcFromTo;
    using WASDWalkEngine::center_cursor;
    using WASDWalkEngine::check_focus;
    using WASDWalkEngine::determine_max_jump;
    using WASDWalkEngine::disable_cursor;
    using WASDWalkEngine::enable_cursor;
    using WASDWalkEngine::evaluate;
    using WASDWalkEngine::fall_imp;
    using WASDWalkEngine::FrustumType;
    using WASDWalkEngine::getFrustum;
    using WASDWalkEngine::horizontal_move;
    using WASDWalkEngine::horizontal_move_imp;
    using WASDWalkEngine::intersection;
    using WASDWalkEngine::key_data;
    using WASDWalkEngine::MoveResult;
    using WASDWalkEngine::refresh_keyboard_data;
    using WASDWalkEngine::rotate;
    using WASDWalkEngine::rotate_horizont;
    using WASDWalkEngine::rotate_imp;
    using WASDWalkEngine::rotate_move;
    using WASDWalkEngine::test;
    using WASDWalkEngine::vertical_move;
    using WASDWalkEngine::vertical_move_imp;
    using WASDWalkEngine::view_dir_move;
    using WASDWalkEngine::view_dir_move_imp;
};
using WalkPtr = UnrecordedRefPtr<OpenWalk>;

/// An engine that asks `desktop`.
inline WalkPtr make_walk(std::shared_ptr<Desktop> const &desktop)
{
    std::shared_ptr<Desktop> const before = Desktop::current();
    Desktop::setCurrent(desktop);
    WalkPtr walk(new OpenWalk);
    Desktop::setCurrent(before);
    return walk;
}

/// Keeps the steps of a walk.
struct StepLog : WalkObserver
{
    void observe(WalkStep const &step) override { steps.push_back(step); }

    std::vector<WalkStep> steps;
};

/// A quadrilateral with its corners in order.
inline NodePtr make_quad(Pnt3f const &a, Pnt3f const &b, Pnt3f const &c, Pnt3f const &d)
{
    return make_node(make_geometry(one_primitive(QuadsPrimitive, {a, b, c, d})));
}

/// A level floor around the origin.
inline NodePtr make_floor(Real32 height, Real32 halfSize = 50)
{
    return make_quad({-halfSize, height, -halfSize}, {-halfSize, height, halfSize},
                     {halfSize, height, halfSize}, {halfSize, height, -halfSize});
}

/// A wall across the way along z.
inline NodePtr make_wall(Real32 z, Real32 bottom = -5, Real32 top = 20)
{
    return make_quad({-50, bottom, z}, {50, bottom, z}, {50, top, z}, {-50, top, z});
}

/// The six sides of a box.
inline NodePtr make_block(Pnt3f const &min, Pnt3f const &max)
{
    auto const corner = [&min, &max](int x, int y, int z)
    { return Pnt3f((x ? max : min)[0], (y ? max : min)[1], (z ? max : min)[2]); };
    std::vector<Pnt3f> corners;
    for(int const side : {0, 1})
    {
        int const faces[3][4][3] = {{{side, 0, 0}, {side, 1, 0}, {side, 1, 1}, {side, 0, 1}},
                                    {{0, side, 0}, {1, side, 0}, {1, side, 1}, {0, side, 1}},
                                    {{0, 0, side}, {1, 0, side}, {1, 1, side}, {0, 1, side}}};
        for(auto const &face : faces)
        {
            for(auto const &place : face)
                corners.push_back(corner(place[0], place[1], place[2]));
        }
    }
    return make_node(make_geometry(one_primitive(QuadsPrimitive, corners)));
}

/// The view has 800 by 600 pixels, the focus, and its corner at (100, 50) of the screen. The person
/// has its eye at (0, 1.65, 0), as it stands on a floor of height 0, looks along -z, and its engine
/// knows the navigator. Time passes in milliseconds.
struct WalkedView
{
    explicit WalkedView(NodePtr const &world = make_group(), Int64 ticksPerSecond = 1000)
        : desktop(std::make_shared<ScriptedDesktop>(ticksPerSecond))
        , walk(make_walk(desktop))
        , root(world)
    {
        root->updateVolume();
        window->setHwnd(native);
        window->setSize(800, 600);
        window->addPort(viewport);
        viewport->setRoot(root);
        viewport->setCamera(camera);
        desktop->setWindow(native, {100, 50}, {800, 600});
        desktop->setFocus(native);
        navigator.setEngine(walk);
        navigator.setViewport(viewport);
        walk->set(Pnt3f(0, StandingEye, 0), Pnt3f(0, StandingEye, -1), Vec3f(0, 1, 0));
        walk->moveTo(0, 0, &navigator);
    }

    /// A frame after `ticks` with only these keys down.
    void frame(std::initializer_list<Int16> keys, Int64 ticks)
    {
        desktop->releaseAllKeys();
        for(Int16 const key : keys)
            desktop->setKey(key, true);
        desktop->advance(ticks);
        navigator.updateCameraTransformation();
    }

    void pressVirtual(Int16 key)
    {
        walk->keyPressEx(key, NavigatorEvent::KeyDown | NavigatorEvent::VirtualKey, 0, 0,
                         &navigator);
    }
    void pressCharacter(Int16 key)
    {
        walk->keyPressEx(key, NavigatorEvent::KeyDown, 0, 0, &navigator);
    }

    /// The walk's eye above the floor: the distance from the ground, and the height of the eye.
    static constexpr Real32 StandingEye = 1.65f;

    std::shared_ptr<ScriptedDesktop> const desktop;
    WalkPtr walk;
    NodePtr const root;
    UnrecordedRefPtr<WIN32Window> const window{WIN32Window::create()};
    NativeWindow const native = window.get();
    ViewportPtr const viewport{Viewport::create()};
    CameraPtr<PerspectiveCamera> const camera = make_perspective(0.8f, 0.1f, 1000.f);
    Navigator navigator;
};

/// A world of these parts, with a log of the steps.
struct Walked : WalkedView
{
    explicit Walked(Children const &parts)
        : WalkedView(make_group(parts))
    {
        walk->setWalkObserver(&log);
    }
    Pnt3f const &from() { return walk->getFrom(); }
    void forwards(Real32 step) { walk->view_dir_move(-step, 0, 0); }
    WalkStep const &last() const { return log.steps.back(); }

    StepLog log;
};
} // namespace OSG::Test
