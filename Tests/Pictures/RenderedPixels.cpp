#include "RenderedPixels.h"

#include <map>
#include <memory>
#include <utility>

#include <epoxy/gl.h>
#include <gtest/gtest.h>

#include "OSGGLObjectStore.h"
#include "OSGListDrawing.h"
#include "OSGOffscreenContext.h"
#include "OSGRenderAction.h"

namespace OSG::Test
{
namespace
{
// One for each size, which stays until the program ends.
OffscreenContext &context_of(UInt32 width, UInt32 height)
{
    static std::map<std::pair<UInt32, UInt32>, std::unique_ptr<OffscreenContext>> contexts;
    std::unique_ptr<OffscreenContext> &context = contexts[{width, height}];
    if(context == nullptr)
        context = std::make_unique<OffscreenContext>(width, height);
    return *context;
}

void set_view(DrawEnv &env, SlowView const &view)
{
    Matrix4d cameraToWorld;
    cameraToWorld.invertFrom(view.viewing);
    env.setView(Matrix(cameraToWorld), Matrix(view.viewing), Matrix(view.projection),
                {0, static_cast<Int32>(view.width) - 1, 0, static_cast<Int32>(view.height) - 1});
    env.setObjects(&GLObjectStore::current());
}
} // namespace

std::string missing_renderer() { return context_of(200, 150).missing(); }

Pixels rendered_pixels(Node *root, SlowView const &view)
{
    OffscreenContext &context = context_of(view.width, view.height);
    EXPECT_TRUE(context.makeCurrent()) << context.missing();
    UnrecordedRefPtr<RenderAction> const action(RenderAction::create());
    action->setHeadlight(view.headlight);
    set_view(action->editDrawEnv(), view);
    action->setTravMask(view.travMask);
    action->apply(root);
    glPushAttrib(GL_ALL_ATTRIB_BITS);
    glPushClientAttrib(GL_CLIENT_ALL_ATTRIB_BITS);
    glClearColor(view.background[0], view.background[1], view.background[2], 1);
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
    draw_list(action->editDrawEnv(), action->getDrawList());
    glPopClientAttrib();
    glPopAttrib();
    glBindBuffer(GL_ARRAY_BUFFER, 0);
    glBindBuffer(GL_ELEMENT_ARRAY_BUFFER, 0);
    for(GLenum const mode : {GL_PROJECTION, GL_MODELVIEW})
    {
        glMatrixMode(mode);
        glLoadIdentity();
    }
    EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_NO_ERROR));
    Pixels pixels{view.width, view.height, context.readPixels()};
    context.release();
    return pixels;
}
} // namespace OSG::Test
