#include "OSGOffscreenContext.h"

#include <thread>

#include <epoxy/gl.h>
#include <gmock/gmock.h>

#include "NeedsContext.h"

namespace OSG
{
namespace
{
using testing::ElementsAre;
using testing::StartsWith;

void fill(GLint x, GLint y, GLsizei width, GLsizei height, GLclampf red, GLclampf blue)
{
    glEnable(GL_SCISSOR_TEST);
    glScissor(x, y, width, height);
    glClearColor(red, 0, blue, 1);
    glClear(GL_COLOR_BUFFER_BIT);
    glDisable(GL_SCISSOR_TEST);
}

TEST(OffscreenContext, ItsPictureIsReadWithoutPaddingAndTheTopRowFirst)
{
    OffscreenContext context(3, 3);
    OSG_NEEDS_CONTEXT(context);
    ASSERT_TRUE(context.makeCurrent());
    fill(0, 0, 3, 3, 1, 0);
    fill(0, 2, 1, 1, 0, 1);
    EXPECT_THAT(context.readPixels(), ElementsAre(0, 0, 255, 255, 0, 0, 255, 0, 0, //
                                                  255, 0, 0, 255, 0, 0, 255, 0, 0, //
                                                  255, 0, 0, 255, 0, 0, 255, 0, 0));
    EXPECT_EQ(glGetError(), GLenum(GL_NO_ERROR));
    context.release();
}

TEST(OffscreenContext, TheSettingsOfTheOneWhoDrewDoNotChangeWhatIsRead)
{
    OffscreenContext context(2, 1);
    OSG_NEEDS_CONTEXT(context);
    ASSERT_TRUE(context.makeCurrent());
    fill(0, 0, 2, 1, 1, 1);
    glPixelStorei(GL_PACK_ALIGNMENT, 8);
    glPixelStorei(GL_PACK_SKIP_PIXELS, 1);
    GLuint other = 0;
    glGenFramebuffers(1, &other);
    glBindFramebuffer(GL_FRAMEBUFFER, other);
    EXPECT_THAT(context.readPixels(), ElementsAre(255, 0, 255, 255, 0, 255));
    GLint alignment = 0;
    glGetIntegerv(GL_PACK_ALIGNMENT, &alignment);
    EXPECT_EQ(alignment, 8);
    EXPECT_EQ(glGetError(), GLenum(GL_NO_ERROR));
    context.release();
}

TEST(OffscreenContext, TheViewportCoversThePictureAndDepthHas24Bits)
{
    OffscreenContext context(37, 21);
    OSG_NEEDS_CONTEXT(context);
    ASSERT_TRUE(context.makeCurrent());
    GLint viewport[4] = {};
    glGetIntegerv(GL_VIEWPORT, viewport);
    EXPECT_THAT(viewport, ElementsAre(0, 0, 37, 21));
    GLint bits = 0;
    glGetIntegerv(GL_DEPTH_BITS, &bits);
    EXPECT_GE(bits, 24);
    GLint samples = -1;
    glGetIntegerv(GL_SAMPLES, &samples);
    EXPECT_EQ(samples, 0);
    EXPECT_FALSE(context.getRenderer().empty());
    EXPECT_EQ(glGetError(), GLenum(GL_NO_ERROR));
    context.release();
}

TEST(OffscreenContext, AHostsContextIsCurrentAgainAfterwards)
{
    OffscreenContext host(4, 4);
    OSG_NEEDS_CONTEXT(host);
    ASSERT_TRUE(host.makeCurrent());
    fill(0, 0, 4, 4, 1, 0);
    {
        OffscreenContext context(1, 1);
        OSG_NEEDS_CONTEXT(context);
        ASSERT_TRUE(context.makeCurrent());
        ASSERT_TRUE(context.makeCurrent());
        fill(0, 0, 1, 1, 0, 1);
        EXPECT_THAT(context.readPixels(), ElementsAre(0, 0, 255));
        context.release();
        EXPECT_EQ(host.readPixels().front(), 255);
        context.release();
        EXPECT_EQ(host.readPixels().front(), 255);
        ASSERT_TRUE(context.makeCurrent());
    }
    EXPECT_EQ(host.readPixels().front(), 255);
    EXPECT_EQ(glGetError(), GLenum(GL_NO_ERROR));
    host.release();
}

TEST(OffscreenContext, WhileItIsCurrentElsewhereItIsRefused)
{
    OffscreenContext context(4, 4);
    OSG_NEEDS_CONTEXT(context);
    ASSERT_TRUE(context.makeCurrent());
    bool isCurrent = true;
    std::thread([&] { isCurrent = context.makeCurrent(); }).join();
    EXPECT_FALSE(isCurrent);
    context.release();
    std::thread(
        [&]
        {
            isCurrent = context.makeCurrent();
            context.release();
        })
        .join();
    EXPECT_TRUE(isCurrent);
}

TEST(OffscreenContext, ASizeThatNoDriverHasIsRefused)
{
    OffscreenContext context(1, 1);
    OSG_NEEDS_CONTEXT(context);
    for(auto const &[width, height, text] :
        {std::tuple(100000u, 100000u, "a size of 100000x100000 is beyond the driver's "),
         std::tuple(1u, 4294967295u, "a size of 1x4294967295 is beyond the driver's "),
         std::tuple(0u, 7u, "a size of 0x7 has no pixels")})
    {
        OffscreenContext refused(width, height);
        EXPECT_THAT(refused.missing(), StartsWith(text));
        EXPECT_FALSE(refused.makeCurrent());
        EXPECT_TRUE(refused.readPixels().empty());
        refused.release();
    }
}
} // namespace
} // namespace OSG
