#pragma once

/// \file
/// What a context is set to, by name, so that a test can see what differs.

#include <map>
#include <string>
#include <vector>

#include <epoxy/gl.h>

namespace OSG::Test
{
using ContextState = std::map<std::string, std::vector<double>>;

namespace ContextStateParts
{
#define OSG_GL_NAME(name)                                                                          \
    {                                                                                              \
#name, name                                                                                \
    }
struct Name
{
    char const *text;
    GLenum value;
};

/// Switches; glIsEnabled knows client states as well.
inline Name const Switches[] = {OSG_GL_NAME(GL_ALPHA_TEST),
                                OSG_GL_NAME(GL_BLEND),
                                OSG_GL_NAME(GL_COLOR_LOGIC_OP),
                                OSG_GL_NAME(GL_COLOR_MATERIAL),
                                OSG_GL_NAME(GL_COLOR_SUM),
                                OSG_GL_NAME(GL_CULL_FACE),
                                OSG_GL_NAME(GL_DEPTH_TEST),
                                OSG_GL_NAME(GL_DITHER),
                                OSG_GL_NAME(GL_FOG),
                                OSG_GL_NAME(GL_LIGHTING),
                                OSG_GL_NAME(GL_LIGHT0),
                                OSG_GL_NAME(GL_LIGHT1),
                                OSG_GL_NAME(GL_LIGHT7),
                                OSG_GL_NAME(GL_LINE_SMOOTH),
                                OSG_GL_NAME(GL_LINE_STIPPLE),
                                OSG_GL_NAME(GL_MULTISAMPLE),
                                OSG_GL_NAME(GL_NORMALIZE),
                                OSG_GL_NAME(GL_POINT_SMOOTH),
                                OSG_GL_NAME(GL_POINT_SPRITE),
                                OSG_GL_NAME(GL_POLYGON_OFFSET_FILL),
                                OSG_GL_NAME(GL_POLYGON_SMOOTH),
                                OSG_GL_NAME(GL_POLYGON_STIPPLE),
                                OSG_GL_NAME(GL_RESCALE_NORMAL),
                                OSG_GL_NAME(GL_SCISSOR_TEST),
                                OSG_GL_NAME(GL_STENCIL_TEST),
                                OSG_GL_NAME(GL_CLIP_PLANE0),
                                OSG_GL_NAME(GL_CLIP_PLANE5),
                                OSG_GL_NAME(GL_FRAMEBUFFER_SRGB),
                                OSG_GL_NAME(GL_PRIMITIVE_RESTART),
                                OSG_GL_NAME(GL_RASTERIZER_DISCARD),
                                OSG_GL_NAME(GL_DEPTH_CLAMP),
                                OSG_GL_NAME(GL_PRIMITIVE_RESTART_FIXED_INDEX),
                                OSG_GL_NAME(GL_VERTEX_PROGRAM_ARB),
                                OSG_GL_NAME(GL_FRAGMENT_PROGRAM_ARB),
                                OSG_GL_NAME(GL_VERTEX_ARRAY),
                                OSG_GL_NAME(GL_NORMAL_ARRAY),
                                OSG_GL_NAME(GL_COLOR_ARRAY),
                                OSG_GL_NAME(GL_EDGE_FLAG_ARRAY),
                                OSG_GL_NAME(GL_FOG_COORD_ARRAY),
                                OSG_GL_NAME(GL_SECONDARY_COLOR_ARRAY)};

/// Values of up to 16 numbers.
inline Name const Values[] = {OSG_GL_NAME(GL_VIEWPORT),
                              OSG_GL_NAME(GL_CLAMP_VERTEX_COLOR),
                              OSG_GL_NAME(GL_CLIP_ORIGIN),
                              OSG_GL_NAME(GL_CLIP_DEPTH_MODE),
                              OSG_GL_NAME(GL_POINT_DISTANCE_ATTENUATION),
                              OSG_GL_NAME(GL_SCISSOR_BOX),
                              OSG_GL_NAME(GL_MATRIX_MODE),
                              OSG_GL_NAME(GL_MODELVIEW_MATRIX),
                              OSG_GL_NAME(GL_PROJECTION_MATRIX),
                              OSG_GL_NAME(GL_MODELVIEW_STACK_DEPTH),
                              OSG_GL_NAME(GL_PROJECTION_STACK_DEPTH),
                              OSG_GL_NAME(GL_ATTRIB_STACK_DEPTH),
                              OSG_GL_NAME(GL_CLIENT_ATTRIB_STACK_DEPTH),
                              OSG_GL_NAME(GL_DRAW_FRAMEBUFFER_BINDING),
                              OSG_GL_NAME(GL_READ_FRAMEBUFFER_BINDING),
                              OSG_GL_NAME(GL_RENDERBUFFER_BINDING),
                              OSG_GL_NAME(GL_ARRAY_BUFFER_BINDING),
                              OSG_GL_NAME(GL_ELEMENT_ARRAY_BUFFER_BINDING),
                              OSG_GL_NAME(GL_PIXEL_PACK_BUFFER_BINDING),
                              OSG_GL_NAME(GL_PIXEL_UNPACK_BUFFER_BINDING),
                              OSG_GL_NAME(GL_VERTEX_ARRAY_BINDING),
                              OSG_GL_NAME(GL_CURRENT_PROGRAM),
                              OSG_GL_NAME(GL_ACTIVE_TEXTURE),
                              OSG_GL_NAME(GL_CLIENT_ACTIVE_TEXTURE),
                              OSG_GL_NAME(GL_UNPACK_ALIGNMENT),
                              OSG_GL_NAME(GL_UNPACK_ROW_LENGTH),
                              OSG_GL_NAME(GL_UNPACK_SKIP_ROWS),
                              OSG_GL_NAME(GL_UNPACK_SKIP_PIXELS),
                              OSG_GL_NAME(GL_PACK_ALIGNMENT),
                              OSG_GL_NAME(GL_PACK_ROW_LENGTH),
                              OSG_GL_NAME(GL_CURRENT_COLOR),
                              OSG_GL_NAME(GL_CURRENT_NORMAL),
                              OSG_GL_NAME(GL_CURRENT_TEXTURE_COORDS),
                              OSG_GL_NAME(GL_ALPHA_TEST_FUNC),
                              OSG_GL_NAME(GL_ALPHA_TEST_REF),
                              OSG_GL_NAME(GL_BLEND_SRC),
                              OSG_GL_NAME(GL_BLEND_DST),
                              OSG_GL_NAME(GL_BLEND_EQUATION),
                              OSG_GL_NAME(GL_BLEND_COLOR),
                              OSG_GL_NAME(GL_COLOR_WRITEMASK),
                              OSG_GL_NAME(GL_DEPTH_FUNC),
                              OSG_GL_NAME(GL_DEPTH_WRITEMASK),
                              OSG_GL_NAME(GL_DEPTH_RANGE),
                              OSG_GL_NAME(GL_COLOR_CLEAR_VALUE),
                              OSG_GL_NAME(GL_DEPTH_CLEAR_VALUE),
                              OSG_GL_NAME(GL_FRONT_FACE),
                              OSG_GL_NAME(GL_CULL_FACE_MODE),
                              OSG_GL_NAME(GL_POLYGON_MODE),
                              OSG_GL_NAME(GL_LINE_WIDTH),
                              OSG_GL_NAME(GL_POINT_SIZE),
                              OSG_GL_NAME(GL_SHADE_MODEL),
                              OSG_GL_NAME(GL_LIGHT_MODEL_AMBIENT),
                              OSG_GL_NAME(GL_LIGHT_MODEL_TWO_SIDE),
                              OSG_GL_NAME(GL_LIGHT_MODEL_LOCAL_VIEWER),
                              OSG_GL_NAME(GL_LIGHT_MODEL_COLOR_CONTROL),
                              OSG_GL_NAME(GL_COLOR_MATERIAL_FACE),
                              OSG_GL_NAME(GL_COLOR_MATERIAL_PARAMETER),
                              OSG_GL_NAME(GL_RED_SCALE),
                              OSG_GL_NAME(GL_RED_BIAS),
                              OSG_GL_NAME(GL_MAP_COLOR),
                              OSG_GL_NAME(GL_VERTEX_ARRAY_SIZE),
                              OSG_GL_NAME(GL_VERTEX_ARRAY_TYPE),
                              OSG_GL_NAME(GL_VERTEX_ARRAY_STRIDE),
                              OSG_GL_NAME(GL_NORMAL_ARRAY_STRIDE)};

/// Of each texture unit.
inline Name const UnitSwitches[] = {
    OSG_GL_NAME(GL_TEXTURE_1D),         OSG_GL_NAME(GL_TEXTURE_2D),
    OSG_GL_NAME(GL_TEXTURE_3D),         OSG_GL_NAME(GL_TEXTURE_CUBE_MAP),
    OSG_GL_NAME(GL_TEXTURE_GEN_S),      OSG_GL_NAME(GL_TEXTURE_GEN_T),
    OSG_GL_NAME(GL_TEXTURE_GEN_R),      OSG_GL_NAME(GL_TEXTURE_GEN_Q),
    OSG_GL_NAME(GL_TEXTURE_COORD_ARRAY)};
inline Name const UnitValues[] = {
    OSG_GL_NAME(GL_TEXTURE_BINDING_2D), OSG_GL_NAME(GL_TEXTURE_MATRIX),
    OSG_GL_NAME(GL_TEXTURE_STACK_DEPTH), OSG_GL_NAME(GL_SAMPLER_BINDING)};
#undef OSG_GL_NAME

inline std::vector<double> value_of(GLenum name)
{
    double values16[16] = {};
    glGetDoublev(name, values16);
    return std::vector<double>(values16, values16 + 16);
}
} // namespace ContextStateParts

/// Leaves the context as it was, but for the active units, which it puts back.
inline ContextState read_context_state()
{
    using namespace ContextStateParts;
    ContextState state;
    for(Name const &name : Switches)
        state[name.text] = {double(glIsEnabled(name.value))};
    for(Name const &name : Values)
        state[name.text] = value_of(name.value);
    GLenum const active = static_cast<GLenum>(state["GL_ACTIVE_TEXTURE"][0]);
    GLenum const clientActive = static_cast<GLenum>(state["GL_CLIENT_ACTIVE_TEXTURE"][0]);
    for(GLenum unit = 0; unit < 8; ++unit)
    {
        std::string const prefix = std::to_string(unit) + ' ';
        glActiveTexture(GL_TEXTURE0 + unit);
        glClientActiveTexture(GL_TEXTURE0 + unit);
        for(Name const &name : UnitSwitches)
            state[prefix + name.text] = {double(glIsEnabled(name.value))};
        for(Name const &name : UnitValues)
            state[prefix + name.text] = value_of(name.value);
        GLint mode = 0;
        glGetTexEnviv(GL_TEXTURE_ENV, GL_TEXTURE_ENV_MODE, &mode);
        state[prefix + "environment"] = {double(mode)};
        glGetTexGeniv(GL_S, GL_TEXTURE_GEN_MODE, &mode);
        state[prefix + "generator"] = {double(mode)};
    }
    glActiveTexture(active);
    glClientActiveTexture(clientActive);
    for(GLenum light : {GL_LIGHT0, GL_LIGHT1})
    {
        GLfloat position[4];
        GLfloat diffuse[4];
        glGetLightfv(light, GL_POSITION, position);
        glGetLightfv(light, GL_DIFFUSE, diffuse);
        state["position " + std::to_string(light)].assign(position, position + 4);
        state["diffuse " + std::to_string(light)].assign(diffuse, diffuse + 4);
    }
    for(GLenum color : {GL_AMBIENT, GL_DIFFUSE, GL_SPECULAR, GL_EMISSION})
    {
        GLfloat material[4];
        glGetMaterialfv(GL_BACK, color, material);
        state["material " + std::to_string(color)].assign(material, material + 4);
    }
    for(GLuint attribute = 0; attribute < 16; ++attribute)
    {
        GLint isOn = 0;
        glGetVertexAttribiv(attribute, GL_VERTEX_ATTRIB_ARRAY_ENABLED, &isOn);
        state["attribute " + std::to_string(attribute)] = {double(isOn)};
    }
    return state;
}

/// The names of what differs.
inline std::vector<std::string> differences(ContextState const &a, ContextState const &b)
{
    std::vector<std::string> names;
    for(auto const &[name, value] : a)
    {
        if(value != b.at(name))
            names.push_back(name);
    }
    return names;
}
} // namespace OSG::Test
