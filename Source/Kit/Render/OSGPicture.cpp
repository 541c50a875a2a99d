#include "OSGPicture.h"

#include <algorithm>
#include <limits>
#include <numbers>

#include <epoxy/gl.h>

#include "OSGEnhPassiveViewport.h"
#include "OSGGLContext.h"
#include "OSGOffscreenContext.h"
#include "OSGOrthographicCamera.h"
#include "OSGPerspectiveCamera.h"
#include "OSGRenderAction.h"
#include "OSGShownTriangles.h"
#include "OSGSolidBackground.h"
#include "OSGTransform.h"

namespace OSG
{
namespace
{
using CameraPtr = UnrecordedRefPtr<Camera>;

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

Real32 single(Real64 value)
{
    return static_cast<Real32>(std::min<Real64>(value, std::numeric_limits<Real32>::max()));
}

CameraPtr make_lens(PictureView const &view)
{
    if(view.orthographicHeight)
    {
        UnrecordedRefPtr<OrthographicCamera> const camera(OrthographicCamera::create());
        camera->setVerticalSize(*view.orthographicHeight);
        return CameraPtr(camera.get());
    }
    UnrecordedRefPtr<PerspectiveCamera> const camera(PerspectiveCamera::create());
    camera->setFov(static_cast<Real32>(view.fieldOfView * std::numbers::pi / 180));
    return CameraPtr(camera.get());
}

UnrecordedRefPtr<Node> make_beacon(Matrix const &matrix)
{
    UnrecordedRefPtr<Transform> const place(Transform::create());
    place->setMatrix(matrix);
    UnrecordedRefPtr<Node> beacon(Node::create());
    beacon->setCore(place);
    return beacon;
}

/// The camera and the background of a picture, and what holds them.
struct Scenery
{
    Scenery(PictureView const &view, Color3f const &color)
        : beacon(make_beacon(view.camera))
        , camera(make_lens(view))
    {
        camera->setBeacon(beacon);
        camera->setNear(single(view.depths.nearSide));
        camera->setFar(single(view.depths.farSide));
        background->setColor(color);
    }

    UnrecordedRefPtr<Node> beacon;
    CameraPtr camera;
    UnrecordedRefPtr<SolidBackground> background{SolidBackground::create()};
};

// The viewport of OpenGL stands where the context has put it, over the whole picture.
void draw_scene(Node *root, Scenery const &scenery)
{
    UnrecordedRefPtr<EnhPassiveViewport> const viewport(EnhPassiveViewport::create());
    viewport->setCamera(scenery.camera);
    viewport->setBackground(scenery.background);
    viewport->setRoot(root);
    UnrecordedRefPtr<RenderAction> const action(RenderAction::create());
    action->setHeadlight(true);
    viewport->render(action);
}
} // namespace

namespace
{
// Errors wait in a row; a context that is lost would report one for ever.
bool is_out_of_memory()
{
    constexpr int MostErrors = 16;
    for(int i = 0; i < MostErrors; ++i)
    {
        GLenum const error = glGetError();
        if(error == GL_NO_ERROR || error == GL_OUT_OF_MEMORY)
            return error == GL_OUT_OF_MEMORY;
    }
    return false;
}
} // namespace

Picture draw_picture(OffscreenContext &context, Node *root, PictureView const &view,
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
    if(char const *const reason = gl_refusal())
        return {.missing = reason};
    Scenery const scenery(view, background);
    if(root != nullptr && view.depths.isVisible())
        draw_scene(root, scenery);
    else
        scenery.background->clear();
    picture.pixels = context.readPixels();
    if(is_out_of_memory())
        return {.missing = "out of memory"};
    picture.triangles =
        count_shown_triangles(root, *scenery.camera, context.getWidth(), context.getHeight());
    return picture;
}
} // namespace OSG
