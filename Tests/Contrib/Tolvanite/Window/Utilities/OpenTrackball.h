#pragma once

/// \file
/// A trackball in a view of its own, for tests.

#include <gtest/gtest.h>

#include "NavigatedView.h"
#include "OSGCadTrackballEngine.h"

namespace OSG::Test
{
inline constexpr Real32 Pi = 3.14159265f;

/// A trackball that makes protected operations public and counts the calls of set.
class OpenTrackball : public CadTrackballEngine
{
  public:
    using CadTrackballEngine::CadTrackballEngine;
    using CadTrackballEngine::calcDeltas;
    using CadTrackballEngine::getIntersectionPoint;
    using CadTrackballEngine::key_conversion;
    using CadTrackballEngine::projectToSphere;
    using CadTrackballEngine::set;
    using CadTrackballEngine::translateOrtho;

    static UnrecordedRefPtr<OpenTrackball> create()
    {
        return UnrecordedRefPtr<OpenTrackball>(TransitPtr<OpenTrackball>(new OpenTrackball(0.8f)));
    }
    void set(Pnt3f from, Pnt3f at, Vec3f up) override
    {
        ++sets;
        CadTrackballEngine::set(from, at, up);
    }
    Int32 state() const { return _state; }

    int sets = 0;
};

/// Looks from (0, 0, 10) at the origin; a motion factor of 0.25.
struct Cad : ::testing::Test
{
    Cad()
    {
        view.navigator.setMotionFactor(0.25f);
        engine->set(Pnt3f(0, 0, 10), Pnt3f(0, 0, 0), Vec3f(0, 1, 0));
        view.navigator.setEngine(engine);
    }
    void orthographic(Real32 size)
    {
        ortho = make_orthographic(size, 0.1f, 1000);
        view.setCamera(ortho.get());
        view.navigator.updateCameraTransformation();
    }
    void drag(Int16 button, Int16 fromX, Int16 fromY, Int16 toX, Int16 toY)
    {
        navigator.buttonPress(button, fromX, fromY);
        navigator.moveTo(toX, toY);
    }

    NavigatedView view;
    Navigator &navigator = view.navigator;
    UnrecordedRefPtr<OpenTrackball> const engine = OpenTrackball::create();
    CameraPtr<OrthographicCamera> ortho;
};
} // namespace OSG::Test
