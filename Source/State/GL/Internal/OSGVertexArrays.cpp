#include "OSGVertexArrays.h"

#include <bit>

#include <epoxy/gl.h>

namespace OSG
{
namespace
{
void switch_array(GLenum array, bool isOn)
{
    if(isOn)
        glEnableClientState(array);
    else
        glDisableClientState(array);
}

void const *buffer_offset(UInt32 bytes)
{
    return reinterpret_cast<void const *>(static_cast<std::uintptr_t>(bytes));
}
} // namespace

void VertexArrays::bind(MeshPage const &page, StateTracker::VertexUse const &use)
{
    if(_page == &page && _use == use)
        return;
    enable(use);
    point(page);
    _page = &page;
}

void VertexArrays::enable(StateTracker::VertexUse const &use)
{
    if(!_hasPositions)
        glEnableClientState(GL_VERTEX_ARRAY);
    _hasPositions = true;
    if(use.normals != _use.normals)
        switch_array(GL_NORMAL_ARRAY, use.normals);
    if(use.colors != _use.colors)
        switch_array(GL_COLOR_ARRAY, use.colors);
    for(UInt32 changed = use.texCoords ^ _use.texCoords; changed != 0; changed &= changed - 1)
    {
        UInt32 const unit = static_cast<UInt32>(std::countr_zero(changed));
        glClientActiveTexture(GL_TEXTURE0 + unit);
        switch_array(GL_TEXTURE_COORD_ARRAY, (use.texCoords >> unit & 1) != 0);
    }
    _use = use;
}

void VertexArrays::point(MeshPage const &page)
{
    VertexLayout const layout = page.layout();
    GLsizei const stride = static_cast<GLsizei>(layout.stride());
    glBindBuffer(GL_ARRAY_BUFFER, page.vertexBuffer());
    glBindBuffer(GL_ELEMENT_ARRAY_BUFFER, page.indexBuffer());
    glVertexPointer(3, GL_FLOAT, stride, buffer_offset(0));
    if(_use.normals)
        glNormalPointer(GL_FLOAT, stride, buffer_offset(layout.normalOffset()));
    if(_use.colors)
        glColorPointer(4, GL_FLOAT, stride, buffer_offset(layout.colorOffset()));
    for(UInt32 units = _use.texCoords; units != 0; units &= units - 1)
    {
        glClientActiveTexture(GL_TEXTURE0 + static_cast<GLenum>(std::countr_zero(units)));
        glTexCoordPointer(4, GL_FLOAT, stride, buffer_offset(layout.texCoordOffset()));
    }
}
} // namespace OSG
