#include "OSGFrameImage.h"

#include <algorithm>

#include <epoxy/gl.h>

#include "OSGGLContext.h"
#include "OSGHostState.h"
#include "OSGLog.h"
#include "OSGPixelReading.h"
#include "OSGPixelRows.h"

namespace OSG
{
namespace
{
constexpr UInt32 Channels = 3;

GLuint bound(GLenum name)
{
    GLint value = 0;
    glGetIntegerv(name, &value);
    return static_cast<GLuint>(value);
}

/// The buffer of colours that reading takes, which belongs to the frame buffer.
class ChosenBuffer
{
  public:
    explicit ChosenBuffer(GLenum buffer)
        : _former(bound(GL_READ_BUFFER))
    {
        glReadBuffer(buffer);
    }
    ~ChosenBuffer() { glReadBuffer(_former); }
    ChosenBuffer(ChosenBuffer const &) = delete;
    ChosenBuffer &operator=(ChosenBuffer const &) = delete;

  private:
    GLenum _former;
};

/// A frame buffer of one sample a pixel, which lives for one reading.
class ResolvedFrame
{
  public:
    ResolvedFrame(GLenum format, UInt32 width, UInt32 height)
    {
        glGenFramebuffers(1, &_frameBuffer);
        glGenRenderbuffers(1, &_colors);
        glBindFramebuffer(GL_DRAW_FRAMEBUFFER, _frameBuffer);
        glBindRenderbuffer(GL_RENDERBUFFER, _colors);
        glRenderbufferStorage(GL_RENDERBUFFER, format, static_cast<GLsizei>(width),
                              static_cast<GLsizei>(height));
        glFramebufferRenderbuffer(GL_DRAW_FRAMEBUFFER, GL_COLOR_ATTACHMENT0, GL_RENDERBUFFER,
                                  _colors);
    }
    ~ResolvedFrame()
    {
        glDeleteFramebuffers(1, &_frameBuffer);
        glDeleteRenderbuffers(1, &_colors);
    }
    ResolvedFrame(ResolvedFrame const &) = delete;
    ResolvedFrame &operator=(ResolvedFrame const &) = delete;

    GLuint name() const { return _frameBuffer; }

  private:
    GLuint _frameBuffer = 0, _colors = 0;
};

/// Of a window or of a frame buffer object: where the host has drawn last.
GLenum drawn_buffer()
{
    GLenum const buffer = bound(GL_DRAW_BUFFER);
    return buffer == GL_FRONT_AND_BACK ? GLenum(GL_FRONT) : buffer;
}

bool has_samples() { return bound(GL_SAMPLE_BUFFERS) != 0; }

// OpenGL reads several samples a pixel of a window, but not of a frame buffer object: there they
// are copied first.
void read_resolved(UInt32 width, UInt32 height, UInt8 *pixels)
{
    auto const w = static_cast<GLint>(width);
    auto const h = static_cast<GLint>(height);
    // Drivers before OpenGL 4.4 copy between equal formats alone.
    ResolvedFrame const resolved(bound(GL_ALPHA_BITS) != 0 ? GL_RGBA8 : GL_RGB8, width, height);
    glDisable(GL_SCISSOR_TEST);
    glBlitFramebuffer(0, 0, w, h, 0, 0, w, h, GL_COLOR_BUFFER_BIT, GL_NEAREST);
    glBindFramebuffer(GL_READ_FRAMEBUFFER, resolved.name());
    read_pixels(width, height, pixels);
}

// Null, or why nothing can be read. Called in OpenGL's initial state.
char const *read_drawn(UInt32 width, UInt32 height, UInt8 *pixels)
{
    bool const hasFrameBuffers = has_frame_buffers();
    GLuint const frameBuffer = hasFrameBuffers ? bound(GL_DRAW_FRAMEBUFFER_BINDING) : 0;
    if(hasFrameBuffers)
    {
        glBindFramebuffer(GL_READ_FRAMEBUFFER, frameBuffer);
        if(glCheckFramebufferStatus(GL_READ_FRAMEBUFFER) != GL_FRAMEBUFFER_COMPLETE)
            return "there is no frame buffer";
    }
    GLenum const buffer = drawn_buffer();
    if(buffer == GL_NONE)
        return "nothing is drawn into the frame buffer";
    ChosenBuffer const chosen(buffer);
    if(frameBuffer != 0 && has_samples())
    {
        read_resolved(width, height, pixels);
        glBindFramebuffer(GL_READ_FRAMEBUFFER, frameBuffer);
    }
    else
        read_pixels(width, height, pixels);
    return nullptr;
}
} // namespace

std::vector<UInt8> read_frame(UInt32 width, UInt32 height)
{
    if(width == 0 || height == 0)
        return {};
    char const *reason = gl_refusal();
    std::vector<UInt8> pixels;
    if(reason == nullptr)
    {
        HostState const host;
        pixels.resize(host.isKept() ? std::size_t(Channels) * width * height : 0);
        reason = host.isKept() ? read_drawn(width, height, pixels.data())
                               : "the stacks of attributes are full";
    }
    if(reason != nullptr)
    {
        OSG_LOG_WARNING("read_frame: %s, nothing is read\n", reason);
        return {};
    }
    flip_rows(pixels, height);
    return pixels;
}

TransitPtr<Image> image_of(std::vector<UInt8> const &pixels, UInt32 width, UInt32 height)
{
    if(pixels.empty() || pixels.size() != UInt64(Channels) * width * height)
    {
        OSG_LOG_WARNING("image_of: %zu bytes are no picture of %u by %u pixels\n", pixels.size(),
                        width, height);
        return TransitPtr<Image>();
    }
    TransitPtr<Image> image = Image::create();
    image->set(width, height, Channels, nullptr);
    auto &rows = *image->editMFPixel();
    auto const row = static_cast<std::ptrdiff_t>(Channels) * width;
    for(std::ptrdiff_t y = 0; y < height; ++y)
        std::copy_n(pixels.end() - row * (y + 1), row, rows.begin() + row * y);
    return image;
}
} // namespace OSG
