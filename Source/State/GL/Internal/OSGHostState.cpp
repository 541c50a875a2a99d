#include "OSGHostState.h"

#include <algorithm>

#include "OSGGLContext.h"
#include "OSGInitialState.h"

namespace OSG
{
namespace
{
GLint integer(GLenum name)
{
    GLint value = 0;
    glGetIntegerv(name, &value);
    return value;
}

bool is_full(GLenum depth, GLenum most)
{
    GLint const limit = integer(most);
    return limit > 0 && integer(depth) >= limit; // 0: the driver does not say
}

bool has_room_on_stacks()
{
    return !is_full(GL_ATTRIB_STACK_DEPTH, GL_MAX_ATTRIB_STACK_DEPTH) &&
           !is_full(GL_CLIENT_ATTRIB_STACK_DEPTH, GL_MAX_CLIENT_ATTRIB_STACK_DEPTH);
}

constexpr int FirstWithClampedColors = 30;
constexpr int FirstWithClipControl = 45;
} // namespace

HostState::HostState()
{
    if(!has_room_on_stacks())
        return;
    readFeatures();
    _units.resize(static_cast<std::size_t>(
        std::max(std::min(integer(GL_MAX_TEXTURE_COORDS), integer(GL_MAX_TEXTURE_UNITS)), 1)));
    keep();
    set_initial_state(static_cast<UInt32>(_units.size()));
    _isKept = true;
}

void HostState::readFeatures()
{
    _version = epoxy_gl_version();
    _hasVertexArrays = _version >= 30 || epoxy_has_gl_extension("GL_ARB_vertex_array_object");
    _hasFrameBuffers = has_frame_buffers();
    _hasSamplers = _version >= 33 || epoxy_has_gl_extension("GL_ARB_sampler_objects");
    _hasPipelines = _version >= 41 || epoxy_has_gl_extension("GL_ARB_separate_shader_objects");
}

// Most of the state goes with the stacks of attributes. The rest is read by name.
void HostState::keep()
{
    if(_hasFrameBuffers)
    {
        _drawFrameBuffer = integer(GL_DRAW_FRAMEBUFFER_BINDING);
        _readFrameBuffer = integer(GL_READ_FRAMEBUFFER_BINDING);
        _renderBuffer = integer(GL_RENDERBUFFER_BINDING);
    }
    _program = integer(GL_CURRENT_PROGRAM);
    if(_hasPipelines)
        _pipeline = integer(GL_PROGRAM_PIPELINE_BINDING);
    if(_version >= FirstWithClampedColors)
    {
        _discards = glIsEnabled(GL_RASTERIZER_DISCARD);
        _clampsColors = integer(GL_CLAMP_VERTEX_COLOR);
    }
    if(_version >= FirstWithClipControl)
    {
        _clipOrigin = integer(GL_CLIP_ORIGIN);
        _clipDepth = integer(GL_CLIP_DEPTH_MODE);
    }
    _arrayBuffer = integer(GL_ARRAY_BUFFER_BINDING);
    _unpackBuffer = integer(GL_PIXEL_UNPACK_BUFFER_BINDING);
    _packBuffer = integer(GL_PIXEL_PACK_BUFFER_BINDING);
    // The arrays and the buffer of indices belong to the vertex array object.
    if(_hasVertexArrays)
    {
        _vertexArray = integer(GL_VERTEX_ARRAY_BINDING);
        glBindVertexArray(0);
    }
    _elementBuffer = integer(GL_ELEMENT_ARRAY_BUFFER_BINDING);
    glPushAttrib(GL_ALL_ATTRIB_BITS);
    glPushClientAttrib(GL_CLIENT_ALL_ATTRIB_BITS);
    glGetFloatv(GL_PROJECTION_MATRIX, _projection);
    glGetFloatv(GL_MODELVIEW_MATRIX, _modelView);
    keepUnits();
}

void HostState::keepUnits()
{
    for(std::size_t i = 0; i < _units.size(); ++i)
    {
        glActiveTexture(GL_TEXTURE0 + static_cast<GLenum>(i));
        glGetFloatv(GL_TEXTURE_MATRIX, _units[i].matrix);
        if(_hasSamplers)
            _units[i].sampler = integer(GL_SAMPLER_BINDING);
    }
}

void HostState::putBackUnits() const
{
    for(std::size_t i = 0; i < _units.size(); ++i)
    {
        GLuint const unit = static_cast<GLuint>(i);
        glActiveTexture(GL_TEXTURE0 + unit);
        glMatrixMode(GL_TEXTURE);
        glLoadMatrixf(_units[i].matrix);
        if(_hasSamplers)
            glBindSampler(unit, static_cast<GLuint>(_units[i].sampler));
    }
}

HostState::~HostState()
{
    if(!_isKept)
        return;
    // The draw buffer that comes back with the attributes is one of the host's frame buffer.
    if(_hasFrameBuffers)
    {
        glBindFramebuffer(GL_DRAW_FRAMEBUFFER, static_cast<GLuint>(_drawFrameBuffer));
        glBindFramebuffer(GL_READ_FRAMEBUFFER, static_cast<GLuint>(_readFrameBuffer));
        glBindRenderbuffer(GL_RENDERBUFFER, static_cast<GLuint>(_renderBuffer));
    }
    putBackUnits();
    glMatrixMode(GL_PROJECTION);
    glLoadMatrixf(_projection);
    glMatrixMode(GL_MODELVIEW);
    glLoadMatrixf(_modelView);
    glPopClientAttrib();
    glPopAttrib();
    glBindBuffer(GL_ELEMENT_ARRAY_BUFFER, static_cast<GLuint>(_elementBuffer));
    if(_hasVertexArrays)
        glBindVertexArray(static_cast<GLuint>(_vertexArray));
    glBindBuffer(GL_ARRAY_BUFFER, static_cast<GLuint>(_arrayBuffer));
    glBindBuffer(GL_PIXEL_UNPACK_BUFFER, static_cast<GLuint>(_unpackBuffer));
    glBindBuffer(GL_PIXEL_PACK_BUFFER, static_cast<GLuint>(_packBuffer));
    glUseProgram(static_cast<GLuint>(_program));
    if(_hasPipelines)
        glBindProgramPipeline(static_cast<GLuint>(_pipeline));
    if(_version >= FirstWithClampedColors)
    {
        if(_discards != GL_FALSE)
            glEnable(GL_RASTERIZER_DISCARD);
        glClampColor(GL_CLAMP_VERTEX_COLOR, static_cast<GLenum>(_clampsColors));
    }
    if(_version >= FirstWithClipControl)
        glClipControl(static_cast<GLenum>(_clipOrigin), static_cast<GLenum>(_clipDepth));
}
} // namespace OSG
