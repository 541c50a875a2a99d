#include "OSGKeptFrame.h"

#include <epoxy/gl.h>
#include <gtest/gtest.h>

#include "NeedsContext.h"
#include "OSGGLErrors.h"
#include "OSGOffscreenContext.h"

namespace OSG::Test
{
namespace
{
struct KeptFrameTest : testing::Test
{
    OffscreenContext context{8, 6};
    KeptFrame frame;

    void SetUp() override
    {
        OSG_NEEDS_CONTEXT(context);
        ASSERT_TRUE(context.makeCurrent());
    }
    void TearDown() override
    {
        if(!context.missing().empty())
            return;
        frame.release();
        EXPECT_EQ(take_gl_errors(), "");
        context.release();
    }
    /// A picture without two equal rows or columns.
    void paint()
    {
        glEnable(GL_SCISSOR_TEST);
        for(int y = 0; y < 6; ++y)
        {
            for(int x = 0; x < 8; ++x)
            {
                glScissor(x, y, 1, 1);
                glClearColor(static_cast<float>(x) / 8, static_cast<float>(y) / 6, 0.5f, 1);
                glClear(GL_COLOR_BUFFER_BIT);
            }
        }
        glDisable(GL_SCISSOR_TEST);
    }
    void wipe()
    {
        glClearColor(1, 1, 1, 1);
        glClear(GL_COLOR_BUFFER_BIT);
    }
};

TEST_F(KeptFrameTest, PutsTheSamePixelsBack)
{
    paint();
    auto const before = context.readPixels();
    frame.keep(8, 6);
    wipe();
    EXPECT_NE(context.readPixels(), before);
    EXPECT_TRUE(frame.show(8, 6));
    EXPECT_EQ(context.readPixels(), before);
    wipe();
    frame.keep(8, 6); // in the place of the one before
    paint();
    EXPECT_TRUE(frame.show(8, 6));
    EXPECT_NE(context.readPixels(), before);
}

TEST_F(KeptFrameTest, NothingIsKeptOfAnotherSizeAndAfterTheRelease)
{
    EXPECT_FALSE(frame.show(8, 6));
    paint();
    frame.keep(8, 6);
    EXPECT_FALSE(frame.show(7, 6));
    EXPECT_FALSE(frame.show(0, 0));
    frame.release();
    EXPECT_FALSE(frame.show(8, 6));
    frame.release();
}

TEST_F(KeptFrameTest, TheStateOfTheHostIsNeitherUsedNorChanged)
{
    paint();
    auto const before = context.readPixels();
    frame.keep(8, 6);
    wipe();
    glEnable(GL_DEPTH_TEST);
    glDepthFunc(GL_NEVER);
    glEnable(GL_LIGHTING);
    glEnable(GL_CLIP_PLANE3);
    glEnable(GL_BLEND);
    glBlendFunc(GL_ZERO, GL_ZERO);
    glColorMask(GL_FALSE, GL_FALSE, GL_FALSE, GL_FALSE);
    glPolygonMode(GL_FRONT_AND_BACK, GL_POINT);
    glMatrixMode(GL_TEXTURE);
    glTranslatef(3, 0, 0);
    glViewport(1, 1, 2, 2);
    EXPECT_TRUE(frame.show(8, 6));
    GLint viewport[4];
    glGetIntegerv(GL_VIEWPORT, viewport);
    EXPECT_EQ(viewport[2], 2);
    EXPECT_TRUE(glIsEnabled(GL_DEPTH_TEST));
    EXPECT_TRUE(glIsEnabled(GL_CLIP_PLANE3));
    GLfloat matrix[16];
    glGetFloatv(GL_TEXTURE_MATRIX, matrix);
    EXPECT_EQ(matrix[12], 3);
    EXPECT_EQ(context.readPixels(), before);
}

TEST_F(KeptFrameTest, ASizeBeyondTheDriverIsNotKept)
{
    frame.keep(1U << 30, 1);
    EXPECT_FALSE(frame.show(1U << 30, 1));
}

TEST_F(KeptFrameTest, ErrorsAreNamedOnce)
{
    EXPECT_EQ(take_gl_errors(), "");
    glEnable(GLenum(0xFFFF));
    EXPECT_EQ(take_gl_errors(), "invalid enumerant");
    EXPECT_EQ(take_gl_errors(), "");
}
} // namespace
} // namespace OSG::Test
