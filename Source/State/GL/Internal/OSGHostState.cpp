#include "OSGHostState.h"

#include <algorithm>

#include "OSGGLContext.h"

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

void load_identity(GLenum stack)
{
    glMatrixMode(stack);
    glLoadIdentity();
}
} // namespace

HostState::HostState()
{
    if(!has_room_on_stacks())
        return;
    readFeatures();
    _units.resize(static_cast<std::size_t>(
        std::max(std::min(integer(GL_MAX_TEXTURE_COORDS), integer(GL_MAX_TEXTURE_UNITS)), 1)));
    keep();
    initialise();
    _isKept = true;
}

void HostState::readFeatures()
{
    int const version = epoxy_gl_version();
    _hasVertexArrays = version >= 30 || epoxy_has_gl_extension("GL_ARB_vertex_array_object");
    _hasFrameBuffers = has_frame_buffers();
    _hasSamplers = version >= 33 || epoxy_has_gl_extension("GL_ARB_sampler_objects");
    _hasPipelines = version >= 41 || epoxy_has_gl_extension("GL_ARB_separate_shader_objects");
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
    if(_hasFrameBuffers)
    {
        glBindFramebuffer(GL_DRAW_FRAMEBUFFER, static_cast<GLuint>(_drawFrameBuffer));
        glBindFramebuffer(GL_READ_FRAMEBUFFER, static_cast<GLuint>(_readFrameBuffer));
        glBindRenderbuffer(GL_RENDERBUFFER, static_cast<GLuint>(_renderBuffer));
    }
}

// The stacks of attributes put the settings back.
void HostState::readPixels(UInt32 width, UInt32 height, UInt8 *pixels)
{
    glBindBuffer(GL_PIXEL_PACK_BUFFER, 0);
    for(GLenum const store : {GL_PACK_SWAP_BYTES, GL_PACK_LSB_FIRST, GL_PACK_ROW_LENGTH,
                              GL_PACK_SKIP_ROWS, GL_PACK_SKIP_PIXELS})
        glPixelStorei(store, 0);
    glPixelStorei(GL_PACK_ALIGNMENT, 1);
    glReadPixels(0, 0, static_cast<GLsizei>(width), static_cast<GLsizei>(height), GL_RGB,
                 GL_UNSIGNED_BYTE, pixels);
}

// --- the initial state ---

void HostState::initialise() const
{
    glUseProgram(0);
    if(_hasPipelines)
        glBindProgramPipeline(0);
    for(GLenum const feature : {GL_ALPHA_TEST,
                                GL_BLEND,
                                GL_COLOR_LOGIC_OP,
                                GL_COLOR_MATERIAL,
                                GL_COLOR_SUM,
                                GL_CULL_FACE,
                                GL_DEPTH_TEST,
                                GL_DITHER,
                                GL_FOG,
                                GL_LIGHTING,
                                GL_LINE_SMOOTH,
                                GL_LINE_STIPPLE,
                                GL_MULTISAMPLE,
                                GL_NORMALIZE,
                                GL_POINT_SMOOTH,
                                GL_POINT_SPRITE,
                                GL_RESCALE_NORMAL,
                                GL_POLYGON_SMOOTH,
                                GL_POLYGON_STIPPLE,
                                GL_POLYGON_OFFSET_FILL,
                                GL_STENCIL_TEST,
                                GL_POLYGON_OFFSET_LINE,
                                GL_POLYGON_OFFSET_POINT,
                                GL_INDEX_LOGIC_OP})
        glDisable(feature);
    for(GLenum const extension : {GL_VERTEX_PROGRAM_ARB, GL_FRAGMENT_PROGRAM_ARB})
    {
        char const *const name = extension == GL_VERTEX_PROGRAM_ARB ? "GL_ARB_vertex_program"
                                                                    : "GL_ARB_fragment_program";
        if(epoxy_has_gl_extension(name))
            glDisable(extension);
    }
    if(epoxy_gl_version() >= 30 || epoxy_has_gl_extension("GL_ARB_framebuffer_sRGB"))
        glDisable(GL_FRAMEBUFFER_SRGB);
    for(GLint i = 0, planes = integer(GL_MAX_CLIP_PLANES); i < planes; ++i)
        glDisable(GL_CLIP_PLANE0 + static_cast<GLenum>(i));
    for(GLint i = 0, lights = integer(GL_MAX_LIGHTS); i < lights; ++i)
        glDisable(GL_LIGHT0 + static_cast<GLenum>(i));
    glAlphaFunc(GL_ALWAYS, 0);
    glBlendEquation(GL_FUNC_ADD);
    glBlendColor(0, 0, 0, 0);
    glColorMask(GL_TRUE, GL_TRUE, GL_TRUE, GL_TRUE);
    glDepthFunc(GL_LESS);
    glDepthMask(GL_TRUE);
    glDepthRange(0, 1);
    glFrontFace(GL_CCW);
    glPolygonMode(GL_FRONT_AND_BACK, GL_FILL);
    glLineWidth(1);
    glPointSize(1);
    glShadeModel(GL_SMOOTH);
    glLightModeli(GL_LIGHT_MODEL_COLOR_CONTROL, GL_SINGLE_COLOR);
    glLightModeli(GL_LIGHT_MODEL_LOCAL_VIEWER, 0);
    glNormal3f(0, 0, 1);
    for(GLenum const transfer : {GL_RED_SCALE, GL_GREEN_SCALE, GL_BLUE_SCALE, GL_ALPHA_SCALE})
        glPixelTransferf(transfer, 1);
    for(GLenum const transfer : {GL_RED_BIAS, GL_GREEN_BIAS, GL_BLUE_BIAS, GL_ALPHA_BIAS})
        glPixelTransferf(transfer, 0);
    glPixelTransferi(GL_MAP_COLOR, GL_FALSE);
    initialiseUnits();
    initialiseArrays();
    load_identity(GL_PROJECTION);
    load_identity(GL_MODELVIEW);
}

void HostState::initialiseUnits() const
{
    // From the last to the first, which is then the active one.
    for(std::size_t i = _units.size(); i-- > 0;)
    {
        glActiveTexture(GL_TEXTURE0 + static_cast<GLenum>(i));
        load_identity(GL_TEXTURE);
        for(GLenum const feature :
            {GL_TEXTURE_1D, GL_TEXTURE_2D, GL_TEXTURE_3D, GL_TEXTURE_CUBE_MAP, GL_TEXTURE_GEN_S,
             GL_TEXTURE_GEN_T, GL_TEXTURE_GEN_R, GL_TEXTURE_GEN_Q})
            glDisable(feature);
        glTexEnvf(GL_TEXTURE_FILTER_CONTROL, GL_TEXTURE_LOD_BIAS, 0);
        glTexEnvi(GL_TEXTURE_ENV, GL_TEXTURE_ENV_MODE, GL_MODULATE);
        GLfloat const black[] = {0, 0, 0, 0};
        glTexEnvfv(GL_TEXTURE_ENV, GL_TEXTURE_ENV_COLOR, black);
        if(_hasSamplers)
            glBindSampler(static_cast<GLuint>(i), 0);
    }
}

void HostState::initialiseArrays() const
{
    for(GLenum const array : {GL_VERTEX_ARRAY, GL_NORMAL_ARRAY, GL_COLOR_ARRAY, GL_INDEX_ARRAY,
                              GL_EDGE_FLAG_ARRAY, GL_SECONDARY_COLOR_ARRAY, GL_FOG_COORD_ARRAY})
        glDisableClientState(array);
    for(std::size_t i = _units.size(); i-- > 0;)
    {
        glClientActiveTexture(GL_TEXTURE0 + static_cast<GLenum>(i));
        glDisableClientState(GL_TEXTURE_COORD_ARRAY);
    }
    for(GLint i = 0, attributes = integer(GL_MAX_VERTEX_ATTRIBS); i < attributes; ++i)
        glDisableVertexAttribArray(static_cast<GLuint>(i));
    glBindBuffer(GL_PIXEL_UNPACK_BUFFER, 0);
    for(GLenum const store : {GL_UNPACK_SWAP_BYTES, GL_UNPACK_LSB_FIRST, GL_UNPACK_ROW_LENGTH,
                              GL_UNPACK_SKIP_ROWS, GL_UNPACK_SKIP_PIXELS, GL_UNPACK_SKIP_IMAGES})
        glPixelStorei(store, 0);
    glPixelStorei(GL_UNPACK_ALIGNMENT, 1);
    if(epoxy_gl_version() >= 31)
        glDisable(GL_PRIMITIVE_RESTART);
}
} // namespace OSG
