#include "OSGFrameImage.h"

#include <epoxy/gl.h>
#include <gmock/gmock.h>

#include "LogCapture.h"
#include "NeedsContext.h"
#include "OSGOffscreenContext.h"

namespace OSG::Test
{
namespace
{
using testing::ElementsAre;

GLint integer(GLenum name)
{
    GLint value = 0;
    glGetIntegerv(name, &value);
    return value;
}

void fill(GLint x, GLint y, GLsizei width, GLsizei height, GLclampf red, GLclampf blue)
{
    glEnable(GL_SCISSOR_TEST);
    glScissor(x, y, width, height);
    glClearColor(red, 0, blue, 1);
    glClear(GL_COLOR_BUFFER_BIT);
    glDisable(GL_SCISSOR_TEST);
}

/// A frame buffer of the host's own, with `samples` samples a pixel, bound for drawing alone.
class HostFrame
{
  public:
    HostFrame(GLsizei width, GLsizei height, GLsizei samples)
    {
        glGenFramebuffers(1, &_frame);
        glGenRenderbuffers(1, &_colors);
        glBindFramebuffer(GL_DRAW_FRAMEBUFFER, _frame);
        glBindRenderbuffer(GL_RENDERBUFFER, _colors);
        glRenderbufferStorageMultisample(GL_RENDERBUFFER, samples, GL_RGBA8, width, height);
        glFramebufferRenderbuffer(GL_DRAW_FRAMEBUFFER, GL_COLOR_ATTACHMENT0, GL_RENDERBUFFER,
                                  _colors);
    }
    ~HostFrame()
    {
        glBindFramebuffer(GL_FRAMEBUFFER, 0);
        glDeleteFramebuffers(1, &_frame);
        glDeleteRenderbuffers(1, &_colors);
    }
    HostFrame(HostFrame const &) = delete;
    HostFrame &operator=(HostFrame const &) = delete;

    GLint name() const { return static_cast<GLint>(_frame); }

  private:
    GLuint _frame = 0, _colors = 0;
};

struct FrameImage : testing::Test
{
    OffscreenContext context{3, 2};

    void SetUp() override
    {
        OSG_NEEDS_CONTEXT(context);
        ASSERT_TRUE(context.makeCurrent());
        fill(0, 0, 3, 2, 1, 0);
        fill(0, 1, 1, 1, 0, 1);
    }
    void TearDown() override
    {
        if(!context.missing().empty())
            return;
        EXPECT_EQ(glGetError(), GLenum(GL_NO_ERROR));
        context.release();
    }
};

TEST_F(FrameImage, IsReadWithoutPaddingAndTheTopRowFirst)
{
    EXPECT_EQ(read_frame(3, 2), context.readPixels());
    EXPECT_THAT(read_frame(2, 2), ElementsAre(0, 0, 255, 255, 0, 0, 255, 0, 0, 255, 0, 0));
}

TEST_F(FrameImage, TheSettingsOfTheHostChangeNothingAndStay)
{
    std::vector<UInt8> const expected = context.readPixels();
    GLuint buffer = 0;
    glGenBuffers(1, &buffer);
    glBindBuffer(GL_PIXEL_PACK_BUFFER, buffer);
    glBufferData(GL_PIXEL_PACK_BUFFER, 1024, nullptr, GL_STREAM_READ);
    glPixelStorei(GL_PACK_ALIGNMENT, 8);
    glPixelStorei(GL_PACK_ROW_LENGTH, 7);
    glPixelTransferf(GL_RED_SCALE, 0.5f);
    glReadBuffer(GL_NONE);
    EXPECT_EQ(read_frame(3, 2), expected);
    EXPECT_EQ(integer(GL_PIXEL_PACK_BUFFER_BINDING), static_cast<GLint>(buffer));
    EXPECT_EQ(integer(GL_PACK_ALIGNMENT), 8);
    EXPECT_EQ(integer(GL_PACK_ROW_LENGTH), 7);
    GLfloat scale = 0;
    glGetFloatv(GL_RED_SCALE, &scale);
    EXPECT_EQ(scale, 0.5f);
    EXPECT_EQ(integer(GL_READ_BUFFER), GL_NONE);
    glBindBuffer(GL_PIXEL_PACK_BUFFER, 0);
    glDeleteBuffers(1, &buffer);
}

TEST_F(FrameImage, WhatIsDrawnIsReadAndNotWhatIsBoundForReading)
{
    GLint const readBefore = integer(GL_READ_FRAMEBUFFER_BINDING);
    HostFrame const frame(3, 2, 0);
    fill(0, 0, 3, 2, 0, 1);
    EXPECT_THAT(read_frame(1, 1), ElementsAre(0, 0, 255));
    EXPECT_EQ(integer(GL_DRAW_FRAMEBUFFER_BINDING), frame.name());
    EXPECT_EQ(integer(GL_READ_FRAMEBUFFER_BINDING), readBefore);
}

TEST_F(FrameImage, SeveralSamplesBecomeOneColour)
{
    GLint const readBefore = integer(GL_READ_FRAMEBUFFER_BINDING);
    GLint const renderBuffer = integer(GL_RENDERBUFFER_BINDING);
    HostFrame const frame(4, 4, 4);
    ASSERT_EQ(glCheckFramebufferStatus(GL_DRAW_FRAMEBUFFER), GLenum(GL_FRAMEBUFFER_COMPLETE));
    ASSERT_GT(integer(GL_SAMPLES), 1);
    fill(0, 0, 4, 4, 0, 0);
    glBindRenderbuffer(GL_RENDERBUFFER, static_cast<GLuint>(renderBuffer));
    // The edge of the triangle goes through pixels.
    glViewport(0, 0, 4, 4);
    glColor3f(1, 1, 1);
    glBegin(GL_TRIANGLES);
    glVertex2f(-1, -1);
    glVertex2f(1, -1);
    glVertex2f(-1, 1);
    glEnd();
    std::vector<UInt8> const pixels = read_frame(4, 4);
    ASSERT_EQ(pixels.size(), 4u * 4 * 3);
    EXPECT_EQ(pixels[3 * 12], 255); // left bottom
    EXPECT_EQ(pixels[3 * 3], 0);    // right top
    EXPECT_GT(pixels[3 * 0], 0);    // the edge
    EXPECT_LT(pixels[3 * 0], 255);
    EXPECT_EQ(integer(GL_DRAW_FRAMEBUFFER_BINDING), frame.name());
    EXPECT_EQ(integer(GL_READ_FRAMEBUFFER_BINDING), readBefore);
    EXPECT_EQ(integer(GL_RENDERBUFFER_BINDING), renderBuffer);
}

TEST_F(FrameImage, WhereThereIsNoFrameBufferItIsEmptyAndSaysWhy)
{
    LogCapture log;
    EXPECT_THAT(read_frame(0, 2), ElementsAre());
    EXPECT_THAT(log.lines(), ElementsAre());
    glBindFramebuffer(GL_FRAMEBUFFER, 0); // there is no window
    EXPECT_THAT(read_frame(3, 2), ElementsAre());
    EXPECT_THAT(log.lines(), ElementsAre("read_frame: there is no frame buffer, nothing is read"));
}

TEST(FrameImageWithoutAContext, IsEmptyAndSaysWhy)
{
    LogCapture log;
    EXPECT_THAT(read_frame(3, 2), ElementsAre());
    EXPECT_THAT(log.lines(),
                ElementsAre("read_frame: no OpenGL context is current, nothing is read"));
}

TEST(ImageOfPixels, HasTheBottomRowFirst)
{
    std::vector<UInt8> const pixels = {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12};
    UnrecordedRefPtr<Image> const image(image_of(pixels, 2, 2));
    ASSERT_NE(image, nullptr);
    EXPECT_EQ(image->getWidth(), 2u);
    EXPECT_EQ(image->getHeight(), 2u);
    EXPECT_EQ(image->getChannels(), 3u);
    EXPECT_THAT(std::vector<UInt8>(image->getMFPixel()->begin(), image->getMFPixel()->end()),
                ElementsAre(7, 8, 9, 10, 11, 12, 1, 2, 3, 4, 5, 6));
}

TEST(ImageOfPixels, IsNoneWhereTheSizeIsAnother)
{
    LogCapture log;
    EXPECT_EQ(image_of({1, 2, 3}, 1, 2), nullptr);
    EXPECT_EQ(image_of({}, 0, 5), nullptr);
    EXPECT_THAT(log.lines(), ElementsAre("image_of: 3 bytes are no picture of 1 by 2 pixels",
                                         "image_of: 0 bytes are no picture of 0 by 5 pixels"));
}
} // namespace
} // namespace OSG::Test
