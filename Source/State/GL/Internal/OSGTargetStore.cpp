#include "OSGTargetStore.h"

#include <algorithm>

#include <epoxy/gl.h>

#include "OSGGLContext.h"

namespace OSG
{
namespace
{
bool has_size(UInt32 width, UInt32 height)
{
    GLint most = 0;
    glGetIntegerv(GL_MAX_RENDERBUFFER_SIZE, &most);
    UInt32 const side = static_cast<UInt32>(std::max(most, 0));
    return width <= side && height <= side;
}

/// Puts back what was bound, unless it is told to leave things.
class FormerBinding
{
  public:
    FormerBinding()
    {
        glGetIntegerv(GL_DRAW_FRAMEBUFFER_BINDING, &_draw);
        glGetIntegerv(GL_READ_FRAMEBUFFER_BINDING, &_read);
        glGetIntegerv(GL_RENDERBUFFER_BINDING, &_buffer);
    }
    ~FormerBinding()
    {
        glBindRenderbuffer(GL_RENDERBUFFER, static_cast<GLuint>(_buffer));
        if(_isLeft)
            return;
        glBindFramebuffer(GL_DRAW_FRAMEBUFFER, static_cast<GLuint>(_draw));
        glBindFramebuffer(GL_READ_FRAMEBUFFER, static_cast<GLuint>(_read));
    }
    FormerBinding(FormerBinding const &) = delete;
    FormerBinding &operator=(FormerBinding const &) = delete;

    void leaveFrameBuffer() { _isLeft = true; }

  private:
    GLint _draw = 0, _read = 0, _buffer = 0;
    bool _isLeft = false;
};
} // namespace

char const *TargetStore::bind(void const *owner, UInt32 width, UInt32 height)
{
    if(!has_frame_buffers())
        return "the driver has no frame buffer objects";
    if(width == 0 || height == 0)
        return "the frame buffer has no pixels";
    if(!has_size(width, height))
        return "the frame buffer is larger than the driver's";
    FormerBinding former;
    std::lock_guard const lock(_mutex);
    // forget() runs in destructors, where memory may not run out.
    _forgotten.reserve(_forgotten.size() + _targets.size() + 1);
    Target &target = _targets[owner];
    if(target.width != width || target.height != height)
    {
        free(target);
        target = Target();
        char const *const reason = make(target, width, height);
        if(reason != nullptr)
        {
            free(target);
            _targets.erase(owner);
            return reason;
        }
    }
    glBindFramebuffer(GL_FRAMEBUFFER, target.frameBuffer);
    former.leaveFrameBuffer();
    return nullptr;
}

char const *TargetStore::make(Target &target, UInt32 width, UInt32 height)
{
    glGenFramebuffers(1, &target.frameBuffer);
    glGenRenderbuffers(2, target.buffers);
    glBindFramebuffer(GL_FRAMEBUFFER, target.frameBuffer);
    GLenum const formats[] = {GL_RGBA8, GL_DEPTH_COMPONENT24};
    GLenum const attachments[] = {GL_COLOR_ATTACHMENT0, GL_DEPTH_ATTACHMENT};
    for(int i = 0; i < 2; ++i)
    {
        glBindRenderbuffer(GL_RENDERBUFFER, target.buffers[i]);
        glRenderbufferStorage(GL_RENDERBUFFER, formats[i], static_cast<GLsizei>(width),
                              static_cast<GLsizei>(height));
        glFramebufferRenderbuffer(GL_FRAMEBUFFER, attachments[i], GL_RENDERBUFFER,
                                  target.buffers[i]);
    }
    target.width = width;
    target.height = height;
    bool const isComplete = glCheckFramebufferStatus(GL_FRAMEBUFFER) == GL_FRAMEBUFFER_COMPLETE;
    return isComplete ? nullptr : "the driver has no such frame buffer";
}

void TargetStore::free(Target const &target)
{
    glDeleteFramebuffers(1, &target.frameBuffer);
    glDeleteRenderbuffers(2, target.buffers);
}

void TargetStore::forget(void const *owner)
{
    std::lock_guard const lock(_mutex);
    auto const at = _targets.find(owner);
    if(at == _targets.end())
        return;
    _forgotten.push_back(at->second);
    _targets.erase(at);
}

void TargetStore::collect()
{
    std::lock_guard const lock(_mutex);
    for(Target const &target : _forgotten)
        free(target);
    _forgotten.clear();
}

void TargetStore::release()
{
    collect();
    for(auto const &[owner, target] : _targets)
        free(target);
    abandon();
}

void TargetStore::abandon()
{
    std::lock_guard const lock(_mutex);
    _targets.clear();
    _forgotten.clear();
}
} // namespace OSG
