#include "OSGInitialState.h"

#include <epoxy/gl.h>

namespace OSG
{
namespace
{
constexpr GLenum Switches[] = {GL_ALPHA_TEST,
                               GL_BLEND,
                               GL_COLOR_LOGIC_OP,
                               GL_COLOR_MATERIAL,
                               GL_COLOR_SUM,
                               GL_CULL_FACE,
                               GL_DEPTH_TEST,
                               GL_DITHER,
                               GL_FOG,
                               GL_INDEX_LOGIC_OP,
                               GL_LIGHTING,
                               GL_LINE_SMOOTH,
                               GL_LINE_STIPPLE,
                               GL_MULTISAMPLE,
                               GL_NORMALIZE,
                               GL_POINT_SMOOTH,
                               GL_POINT_SPRITE,
                               GL_POLYGON_SMOOTH,
                               GL_POLYGON_STIPPLE,
                               GL_POLYGON_OFFSET_FILL,
                               GL_POLYGON_OFFSET_LINE,
                               GL_RESCALE_NORMAL,
                               GL_POLYGON_OFFSET_POINT,
                               GL_STENCIL_TEST};

// What versions after 2.1 and extensions have brought.
struct LaterSwitch
{
    char const *extension; // null for none that brings the switch earlier
    int version;
    GLenum name;
};
constexpr LaterSwitch LaterSwitches[] = {{nullptr, 30, GL_RASTERIZER_DISCARD},
                                         {nullptr, 30, GL_FRAMEBUFFER_SRGB},
                                         {nullptr, 31, GL_PRIMITIVE_RESTART},
                                         {nullptr, 32, GL_DEPTH_CLAMP},
                                         {nullptr, 43, GL_PRIMITIVE_RESTART_FIXED_INDEX},
                                         {"GL_ARB_vertex_program", 99, GL_VERTEX_PROGRAM_ARB},
                                         {"GL_ARB_fragment_program", 99, GL_FRAGMENT_PROGRAM_ARB}};

// As many as the driver has, from `first` on.
void disable_row(GLenum first, GLenum limit)
{
    GLint count = 0;
    glGetIntegerv(limit, &count);
    for(GLint i = 0; i < count; ++i)
        glDisable(first + static_cast<GLenum>(i));
}

void set_switches()
{
    for(GLenum const name : Switches)
        glDisable(name);
    int const version = epoxy_gl_version();
    for(LaterSwitch const &later : LaterSwitches)
    {
        if(version >= later.version ||
           (later.extension != nullptr && epoxy_has_gl_extension(later.extension)))
            glDisable(later.name);
    }
    disable_row(GL_CLIP_PLANE0, GL_MAX_CLIP_PLANES);
    disable_row(GL_LIGHT0, GL_MAX_LIGHTS);
}

void set_programs()
{
    glUseProgram(0);
    if(epoxy_gl_version() >= 41 || epoxy_has_gl_extension("GL_ARB_separate_shader_objects"))
        glBindProgramPipeline(0);
}

void set_vertices()
{
    glFrontFace(GL_CCW);
    glShadeModel(GL_SMOOTH);
    glLightModeli(GL_LIGHT_MODEL_COLOR_CONTROL, GL_SINGLE_COLOR);
    glLightModeli(GL_LIGHT_MODEL_LOCAL_VIEWER, 0);
    glNormal3f(0, 0, 1);
    if(epoxy_gl_version() >= 30)
        glClampColor(GL_CLAMP_VERTEX_COLOR, GL_TRUE);
    if(epoxy_gl_version() >= 45)
        glClipControl(GL_LOWER_LEFT, GL_NEGATIVE_ONE_TO_ONE);
    for(GLenum const stack : {GL_PROJECTION, GL_MODELVIEW})
    {
        glMatrixMode(stack);
        glLoadIdentity();
    }
}

void set_fragments()
{
    glAlphaFunc(GL_ALWAYS, 0);
    glBlendEquation(GL_FUNC_ADD);
    glBlendColor(0, 0, 0, 0);
    glColorMask(GL_TRUE, GL_TRUE, GL_TRUE, GL_TRUE);
    glDepthFunc(GL_LESS);
    glDepthMask(GL_TRUE);
    glDepthRange(0, 1);
    glPolygonMode(GL_FRONT_AND_BACK, GL_FILL);
    glLineWidth(1);
    glPointSize(1);
    GLfloat const noAttenuation[] = {1, 0, 0};
    glPointParameterfv(GL_POINT_DISTANCE_ATTENUATION, noAttenuation);
}

void set_units(UInt32 units)
{
    bool const hasSamplers =
        epoxy_gl_version() >= 33 || epoxy_has_gl_extension("GL_ARB_sampler_objects");
    // From the last to the first, which is then the active one.
    for(UInt32 i = units; i-- > 0;)
    {
        glActiveTexture(GL_TEXTURE0 + i);
        glMatrixMode(GL_TEXTURE);
        glLoadIdentity();
        for(GLenum const name :
            {GL_TEXTURE_1D, GL_TEXTURE_2D, GL_TEXTURE_3D, GL_TEXTURE_CUBE_MAP, GL_TEXTURE_GEN_S,
             GL_TEXTURE_GEN_T, GL_TEXTURE_GEN_R, GL_TEXTURE_GEN_Q})
            glDisable(name);
        glTexEnvf(GL_TEXTURE_FILTER_CONTROL, GL_TEXTURE_LOD_BIAS, 0);
        glTexEnvi(GL_TEXTURE_ENV, GL_TEXTURE_ENV_MODE, GL_MODULATE);
        GLfloat const black[] = {0, 0, 0, 0};
        glTexEnvfv(GL_TEXTURE_ENV, GL_TEXTURE_ENV_COLOR, black);
        if(hasSamplers)
            glBindSampler(i, 0);
    }
}

void set_arrays(UInt32 units)
{
    for(GLenum const array : {GL_VERTEX_ARRAY, GL_NORMAL_ARRAY, GL_COLOR_ARRAY, GL_INDEX_ARRAY,
                              GL_EDGE_FLAG_ARRAY, GL_SECONDARY_COLOR_ARRAY, GL_FOG_COORD_ARRAY})
        glDisableClientState(array);
    for(UInt32 i = units; i-- > 0;)
    {
        glClientActiveTexture(GL_TEXTURE0 + i);
        glDisableClientState(GL_TEXTURE_COORD_ARRAY);
    }
    GLint attributes = 0;
    glGetIntegerv(GL_MAX_VERTEX_ATTRIBS, &attributes);
    for(GLint i = 0; i < attributes; ++i)
        glDisableVertexAttribArray(static_cast<GLuint>(i));
}

void set_pixels()
{
    glBindBuffer(GL_PIXEL_UNPACK_BUFFER, 0);
    for(GLenum const store : {GL_UNPACK_SWAP_BYTES, GL_UNPACK_LSB_FIRST, GL_UNPACK_ROW_LENGTH,
                              GL_UNPACK_SKIP_ROWS, GL_UNPACK_SKIP_PIXELS, GL_UNPACK_SKIP_IMAGES})
        glPixelStorei(store, 0);
    glPixelStorei(GL_UNPACK_ALIGNMENT, 1);
    for(GLenum const transfer : {GL_RED_SCALE, GL_GREEN_SCALE, GL_BLUE_SCALE, GL_ALPHA_SCALE})
        glPixelTransferf(transfer, 1);
    for(GLenum const transfer : {GL_RED_BIAS, GL_GREEN_BIAS, GL_BLUE_BIAS, GL_ALPHA_BIAS})
        glPixelTransferf(transfer, 0);
    glPixelTransferi(GL_MAP_COLOR, GL_FALSE);
}
} // namespace

void set_initial_state(UInt32 units)
{
    set_programs();
    set_switches();
    set_units(units);
    set_vertices();
    set_fragments();
    set_arrays(units);
    set_pixels();
}
} // namespace OSG
