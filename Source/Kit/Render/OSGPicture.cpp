#include "OSGPicture.h"


#include <epoxy/gl.h>

#include "OSGOffscreenContext.h"

namespace OSG
{
namespace
{
/// Keeps a context current while it lives.
class CurrentContext
{
  public:
    explicit CurrentContext(OffscreenContext &context)
        : _context(context)
        , _isCurrent(context.makeCurrent())
    {
    }
    ~CurrentContext()
    {
        if(_isCurrent)
            _context.release();
    }
    CurrentContext(CurrentContext const &) = delete;
    CurrentContext &operator=(CurrentContext const &) = delete;

    bool isCurrent() const { return _isCurrent; }

  private:
    OffscreenContext &_context;
    bool _isCurrent;
};

void clear_picture(Color3f const &background)
{
    glClearColor(background[0], background[1], background[2], 1);
    glClearDepth(1);
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
}

} // namespace

Picture draw_picture(OffscreenContext &context, Node *, PictureView const &,
                     Color3f const &background)
{
    Picture picture;
    CurrentContext const current(context);
    if(!current.isCurrent())
    {
        picture.missing = context.missing().empty() ? "the OpenGL context is in use elsewhere"
                                                    : context.missing();
        return picture;
    }
    clear_picture(background);
    picture.pixels = context.readPixels();
    if(glGetError() == GL_OUT_OF_MEMORY)
        return {.missing = "out of memory"};
    return picture;
}
} // namespace OSG
