#include "OSGPixelReading.h"

#include <epoxy/gl.h>

namespace OSG
{
void read_pixels(UInt32 width, UInt32 height, UInt8 *pixels)
{
    glBindBuffer(GL_PIXEL_PACK_BUFFER, 0);
    for(GLenum const setting : {GL_PACK_SWAP_BYTES, GL_PACK_LSB_FIRST, GL_PACK_ROW_LENGTH,
                                GL_PACK_SKIP_ROWS, GL_PACK_SKIP_PIXELS})
        glPixelStorei(setting, 0);
    glPixelStorei(GL_PACK_ALIGNMENT, 1);
    glReadPixels(0, 0, static_cast<GLsizei>(width), static_cast<GLsizei>(height), GL_RGB,
                 GL_UNSIGNED_BYTE, pixels);
}
} // namespace OSG
