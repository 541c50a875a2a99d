#include <algorithm>

#include <epoxy/gl.h>
#include <gtest/gtest.h>

#include "LogCapture.h"
#include "OSGChangeList.h"
#include "OSGOffscreenContext.h"
#include "OSGThread.h"
#include "PictureScenes.h"
#include "RandomScenes.h"
#include "RenderedPixels.h"

namespace OSG::Test
{
namespace
{
constexpr UInt32 Scenes = 1000;
constexpr GLuint NamesAsked = 20000; // more than so many scenes would have if nothing were freed

struct ObjectCount
{
    UInt32 textures = 0;
    UInt32 buffers = 0;
    UInt32 lists = 0;
};

// Asks the driver itself.
ObjectCount objects_of(OffscreenContext &context)
{
    EXPECT_TRUE(context.makeCurrent());
    ObjectCount count;
    for(GLuint name = 1; name < NamesAsked; ++name)
    {
        count.textures += glIsTexture(name);
        count.buffers += glIsBuffer(name);
        count.lists += glIsList(name);
    }
    context.release();
    return count;
}

ViewSetup small_view()
{
    ViewSetup setup = random_scene(0, RandomMaterials::Chunks).view;
    setup.width = 32;
    setup.height = 24;
    return setup;
}

void draw_and_drop(std::uint64_t seed, ViewSetup const &view)
{
    LogCapture log; // of indices out of range
    // Software renderers compile a program for each new combination of textures.
    bool const hasTextures = seed % 20 == 0;
    rendered_pixels(
        random_scene(seed, hasTextures ? RandomMaterials::Textured : RandomMaterials::Simple).root,
        view);
    Thread::getCurrentChangeList()->commitChanges();
}

TEST(RenderedObjects, AThousandScenesLeaveNone)
{
    if(!missing_renderer().empty())
        GTEST_SKIP() << missing_renderer();
    ViewSetup const view = small_view();
    NodePtr const empty = make_group();
    rendered_pixels(empty, view);
    OffscreenContext &context = rendering_context(view);
    ObjectCount const before = objects_of(context);
    ObjectCount most;
    for(std::uint64_t seed = 0; seed < Scenes; ++seed)
    {
        draw_and_drop(seed, view);
        if(seed % 100 != 0)
            continue;
        ObjectCount const now = objects_of(context);
        most.buffers = std::max(most.buffers, now.buffers);
        most.textures = std::max(most.textures, now.textures);
    }
    EXPECT_GT(most.buffers, before.buffers) << "what is drawn has buffers";
    EXPECT_GT(most.textures, before.textures) << "and textures";
    rendered_pixels(empty, view); // frees what has died
    ObjectCount const after = objects_of(context);
    EXPECT_EQ(after.textures, before.textures);
    EXPECT_EQ(after.buffers, before.buffers);
    EXPECT_EQ(after.lists, before.lists);
}
} // namespace
} // namespace OSG::Test
