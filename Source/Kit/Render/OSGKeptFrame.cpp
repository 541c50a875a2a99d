#include "OSGKeptFrame.h"

#include <epoxy/gl.h>

namespace OSG
{
namespace
{
/// What is set while pixels are copied and put back, and restored afterwards.
class CopyState
{
  public:
    explicit CopyState(UInt32 texture)
    {
        glPushAttrib(GL_ALL_ATTRIB_BITS);
        glActiveTexture(GL_TEXTURE0);
        glBindTexture(GL_TEXTURE_2D, texture);
    }
    CopyState(CopyState const &) = delete;
    CopyState &operator=(CopyState const &) = delete;
    ~CopyState() { glPopAttrib(); }
};

void forget_errors()
{
    while(glGetError() != GL_NO_ERROR)
    {
    }
}

// A quad over the whole viewport, in clip coordinates.
void draw_quad()
{
    glMatrixMode(GL_PROJECTION);
    glPushMatrix();
    glLoadIdentity();
    glMatrixMode(GL_MODELVIEW);
    glPushMatrix();
    glLoadIdentity();
    glMatrixMode(GL_TEXTURE);
    glPushMatrix();
    glLoadIdentity();
    glBegin(GL_QUADS);
    constexpr float Corners[4][2] = {{0, 0}, {1, 0}, {1, 1}, {0, 1}};
    for(auto const &[x, y] : Corners)
    {
        glTexCoord2f(x, y);
        glVertex2f(2 * x - 1, 2 * y - 1);
    }
    glEnd();
    glPopMatrix();
    glMatrixMode(GL_MODELVIEW);
    glPopMatrix();
    glMatrixMode(GL_PROJECTION);
    glPopMatrix();
}
} // namespace

void KeptFrame::keep(UInt32 width, UInt32 height)
{
    if(_texture == 0)
        glGenTextures(1, &_texture);
    CopyState const state(_texture);
    auto const w = static_cast<GLsizei>(width);
    auto const h = static_cast<GLsizei>(height);
    if(width == _width && height == _height)
    {
        glCopyTexSubImage2D(GL_TEXTURE_2D, 0, 0, 0, 0, 0, w, h);
        return;
    }
    forget_errors();
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_NEAREST);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_NEAREST);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_S, GL_CLAMP_TO_EDGE);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_T, GL_CLAMP_TO_EDGE);
    glCopyTexImage2D(GL_TEXTURE_2D, 0, GL_RGB8, 0, 0, w, h, 0);
    bool const isKept = glGetError() == GL_NO_ERROR;
    _width = isKept ? width : 0;
    _height = isKept ? height : 0;
}

bool KeptFrame::show(UInt32 width, UInt32 height)
{
    if(_texture == 0 || width == 0 || width != _width || height != _height)
        return false;
    CopyState const state(_texture);
    glViewport(0, 0, static_cast<GLsizei>(width), static_cast<GLsizei>(height));
    for(GLenum const capability :
        {GL_DEPTH_TEST, GL_LIGHTING, GL_BLEND, GL_ALPHA_TEST, GL_CULL_FACE, GL_SCISSOR_TEST,
         GL_STENCIL_TEST, GL_FOG, GL_DITHER, GL_TEXTURE_GEN_S, GL_TEXTURE_GEN_T})
        glDisable(capability);
    for(GLenum plane = GL_CLIP_PLANE0; plane < GL_CLIP_PLANE0 + 6; ++plane)
        glDisable(plane);
    glEnable(GL_TEXTURE_2D);
    glTexEnvi(GL_TEXTURE_ENV, GL_TEXTURE_ENV_MODE, GL_REPLACE);
    glPolygonMode(GL_FRONT_AND_BACK, GL_FILL);
    glColorMask(GL_TRUE, GL_TRUE, GL_TRUE, GL_TRUE);
    glUseProgram(0);
    draw_quad();
    return true;
}

void KeptFrame::release()
{
    if(_texture != 0)
        glDeleteTextures(1, &_texture);
    _texture = 0;
    _width = 0;
    _height = 0;
}
} // namespace OSG
