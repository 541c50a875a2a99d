#include "OSGOffscreenContext.h"

#include <algorithm>

#include <epoxy/gl.h>

#include "OSGEglContext.h"
#include "OSGGLContext.h"
#include "OSGGLObjectStore.h"
#include "OSGPixelReading.h"
#include "OSGPixelRows.h"

namespace OSG
{
namespace
{
std::string text_of_size(UInt32 width, UInt32 height)
{
    return std::to_string(width) + 'x' + std::to_string(height);
}

// Empty where the driver can draw so large a picture.
std::string refusal_of_size(UInt32 width, UInt32 height)
{
    if(width < 1 || height < 1)
        return "a size of " + text_of_size(width, height) + " has no pixels";
    GLint area[2] = {};
    GLint side = 0;
    glGetIntegerv(GL_MAX_VIEWPORT_DIMS, area);
    glGetIntegerv(GL_MAX_RENDERBUFFER_SIZE, &side);
    UInt32 const widest = static_cast<UInt32>(std::clamp(area[0], 0, side));
    UInt32 const highest = static_cast<UInt32>(std::clamp(area[1], 0, side));
    if(width <= widest && height <= highest)
        return {};
    return "a size of " + text_of_size(width, height) + " is beyond the driver's " +
           text_of_size(widest, highest);
}

// Attaches a new render buffer to the frame buffer that is bound, and leaves it bound.
void attach_buffer(GLenum format, GLenum attachment, UInt32 width, UInt32 height)
{
    GLuint buffer = 0;
    glGenRenderbuffers(1, &buffer);
    glBindRenderbuffer(GL_RENDERBUFFER, buffer);
    glRenderbufferStorage(GL_RENDERBUFFER, format, static_cast<GLsizei>(width),
                          static_cast<GLsizei>(height));
    glFramebufferRenderbuffer(GL_FRAMEBUFFER, attachment, GL_RENDERBUFFER, buffer);
}

GLint depth_bits()
{
    GLint bits = 0;
    glGetRenderbufferParameteriv(GL_RENDERBUFFER, GL_RENDERBUFFER_DEPTH_SIZE, &bits);
    return bits;
}

// Empty where the frame buffer that was just made can be drawn into.
std::string refusal_of_frame_buffer(UInt32 width, UInt32 height)
{
    constexpr GLint FewestDepthBits = 24;
    // Mesa says that a buffer is incomplete where there is no memory for it.
    GLenum const status = glCheckFramebufferStatus(GL_FRAMEBUFFER);
    if(glGetError() != GL_NO_ERROR || status != GL_FRAMEBUFFER_COMPLETE)
        return "the driver has no frame buffer of " + text_of_size(width, height) +
               ", or no memory for it";
    if(depth_bits() < FewestDepthBits)
        return "the driver has no depth of 24 bits";
    return {};
}
} // namespace

OffscreenContext::OffscreenContext(UInt32 width, UInt32 height)
    : _context(std::make_unique<EglContext>())
    , _width(width)
    , _height(height)
    , _missing(_context->missing())
{
    if(!_missing.empty())
        return;
    if(!_context->makeCurrent())
    {
        _missing = "the OpenGL context cannot be used";
        return;
    }
    _renderer = reinterpret_cast<char const *>(glGetString(GL_RENDERER));
    _missing = makePicture();
    _context->release();
}

// The frame buffer goes with the context, which shares it with no other one. What scenes have in
// the context is kept for it elsewhere.
OffscreenContext::~OffscreenContext()
{
    if(!_missing.empty() || !_context->makeCurrent())
        return;
    GLObjectStore::releaseCurrent();
    _context->release();
}

std::string OffscreenContext::makePicture()
{
    if(!has_frame_buffers())
        return "the driver has no frame buffer objects";
    std::string reason = refusal_of_size(_width, _height);
    if(!reason.empty())
        return reason;
    glGenFramebuffers(1, &_frameBuffer);
    glBindFramebuffer(GL_FRAMEBUFFER, _frameBuffer);
    attach_buffer(GL_RGB8, GL_COLOR_ATTACHMENT0, _width, _height);
    attach_buffer(GL_DEPTH_COMPONENT24, GL_DEPTH_ATTACHMENT, _width, _height);
    return refusal_of_frame_buffer(_width, _height);
}

bool OffscreenContext::makeCurrent()
{
    if(!_missing.empty() || !_context->makeCurrent())
        return false;
    glBindFramebuffer(GL_FRAMEBUFFER, _frameBuffer);
    glViewport(0, 0, static_cast<GLsizei>(_width), static_cast<GLsizei>(_height));
    return true;
}

void OffscreenContext::release()
{
    if(_missing.empty())
        _context->release();
}

std::vector<UInt8> OffscreenContext::readPixels() const
{
    if(!_missing.empty())
        return {};
    std::vector<UInt8> pixels(std::size_t(3) * _width * _height);
    glPushClientAttrib(GL_CLIENT_PIXEL_STORE_BIT);
    glBindFramebuffer(GL_FRAMEBUFFER, _frameBuffer);
    read_pixels(_width, _height, pixels.data());
    glPopClientAttrib();
    flip_rows(pixels, _height);
    return pixels;
}
} // namespace OSG
