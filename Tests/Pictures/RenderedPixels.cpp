#include "RenderedPixels.h"

#include <map>
#include <memory>
#include <numbers>
#include <utility>

#include <epoxy/gl.h>
#include <gtest/gtest.h>

#include "CameraBuilders.h"
#include "OSGOffscreenContext.h"
#include "OSGRenderAction.h"
#include "OSGSolidBackground.h"

namespace OSG::Test
{
namespace
{
OffscreenContext &context_of(UInt32 width, UInt32 height)
{
    static std::map<std::pair<UInt32, UInt32>, std::unique_ptr<OffscreenContext>> contexts;
    std::unique_ptr<OffscreenContext> &context = contexts[{width, height}];
    if(context == nullptr)
        context = std::make_unique<OffscreenContext>(width, height);
    return *context;
}

CameraPtr<Camera> camera_of(ViewSetup const &setup)
{
    constexpr Real32 Degree = std::numbers::pi_v<Real32> / 180;
    if(setup.fov == 0)
        return make_orthographic(setup.size, setup.near, setup.far);
    return make_perspective(setup.fov * Degree, setup.near, setup.far);
}

void draw_view(Node *root, ViewSetup const &setup, AppearanceTable const &table)
{
    NodePtr const beacon = make_beacon(setup.from, setup.at, setup.up);
    CameraPtr<Camera> const camera = camera_of(setup);
    camera->setBeacon(beacon);
    UnrecordedRefPtr<SolidBackground> const background(SolidBackground::create());
    background->setColor(setup.background);
    ViewportPtr const viewport = make_viewport(0, 0, static_cast<Int32>(setup.width) - 1,
                                               static_cast<Int32>(setup.height) - 1);
    viewport->setCamera(camera);
    viewport->setBackground(background);
    viewport->setRoot(root);
    viewport->setTravMask(setup.travMask);
    UnrecordedRefPtr<RenderAction> const action(RenderAction::create());
    action->setHeadlight(setup.headlight);
    action->editAppearances() = table;
    action->editDrawEnv().setSections(setup.sections);
    viewport->render(action);
}
} // namespace

std::string missing_renderer() { return context_of(200, 150).missing(); }

OffscreenContext &rendering_context(ViewSetup const &setup)
{
    return context_of(setup.width, setup.height);
}

Pixels rendered_pixels(Node *root, ViewSetup const &setup, AppearanceTable const &table)
{
    OffscreenContext &context = rendering_context(setup);
    EXPECT_TRUE(context.makeCurrent()) << context.missing();
    draw_view(root, setup, table);
    EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_NO_ERROR));
    Pixels pixels{setup.width, setup.height, context.readPixels()};
    context.release();
    return pixels;
}
} // namespace OSG::Test
