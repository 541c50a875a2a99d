#pragma once

/// \file
/// A copter in a view of its own, for tests.

#include <gtest/gtest.h>

#include "NavigatedView.h"
#include "OSGCopterFlyEngine.h"

namespace OSG::Test
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

/// A camera at (0, 0, 10) that looks along -z at a point five units ahead. The navigator has a
/// motion factor of 10 and a rotation angle of 1. The window has 640 by 480 pixels.
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
} // namespace OSG::Test
