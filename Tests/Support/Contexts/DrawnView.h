#pragma once

/// \file
/// A view of a square, for tests that draw views.

#include "CameraBuilders.h"
#include "DrawingTest.h"
#include "GeometryBuilders.h"
#include "OSGRenderAction.h"
#include "OSGSimpleMaterial.h"
#include "OSGSolidBackground.h"

namespace OSG::Test
{
/// A view that leaves the viewport of OpenGL to the host.
class PassiveViewport : public Viewport
{
  public:
    static UnrecordedRefPtr<PassiveViewport> make()
    {
        return UnrecordedRefPtr<PassiveViewport>(TransitPtr<PassiveViewport>(new PassiveViewport));
    }
    bool isPassive() const override { return true; }
};

inline UnrecordedRefPtr<SimpleMaterial> unlit(Color3f const &color)
{
    UnrecordedRefPtr<SimpleMaterial> material(SimpleMaterial::create());
    material->setDiffuse(color);
    material->setLit(false);
    return material;
}

/// A square of side 2 about the origin, which looks along z.
inline NodePtr square(Material *material)
{
    GeometryPtr const geometry = make_geometry(
        one_primitive(QuadsPrimitive, {{-1, -1, 0}, {1, -1, 0}, {1, 1, 0}, {-1, 1, 0}},
                      {{0, 0, 1}, {0, 0, 1}, {0, 0, 1}, {0, 0, 1}}));
    geometry->setMaterial(material);
    return make_node(geometry);
}

/// The square is red, the background blue.
struct ViewportDrawing : DrawingTest
{
    void SetUp() override
    {
        DrawingTest::SetUp();
        camera->setBeacon(beacon);
        background->setColor(Color3f(0, 0, 1));
        furnish(viewport);
    }

    void furnish(Viewport *view)
    {
        view->setCamera(camera);
        view->setBackground(background);
        view->setRoot(root);
    }

    // The square covers the middle half of the view.
    CameraPtr<OrthographicCamera> const camera = make_orthographic(4, 1, 10);
    NodePtr const beacon = make_beacon({0, 0, 5}, {0, 0, 0}, {0, 1, 0});
    UnrecordedRefPtr<SolidBackground> const background{SolidBackground::create()};
    UnrecordedRefPtr<SimpleMaterial> const red = unlit(Color3f(1, 0, 0));
    NodePtr const root = make_group({square(red)});
    ViewportPtr const viewport = make_viewport(0, 0, Size - 1, Size - 1);
    UnrecordedRefPtr<RenderAction> const action{RenderAction::create()};

    Rgb const redPixel{255, 0, 0};
    Rgb const bluePixel{0, 0, 255};
    Rgb const blackPixel{0, 0, 0};
};
} // namespace OSG::Test
