#include "OSGPicture.h"

#include <algorithm>
#include <limits>
#include <numbers>

#include <epoxy/gl.h>

#include "OSGEnhPassiveViewport.h"
#include "OSGOffscreenContext.h"
#include "OSGOrthographicCamera.h"
#include "OSGPerspectiveCamera.h"
#include "OSGRenderAction.h"
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

void clear_picture(Color3f const &background)
{
    glClearColor(background[0], background[1], background[2], 1);
    glClearDepth(1);
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
}

// The viewport of OpenGL stands where the context has put it, over the whole picture.
void draw_scene(Node *root, PictureView const &view, RenderAction &action)
{
    UnrecordedRefPtr<Node> const beacon = make_beacon(view.camera);
    CameraPtr const camera = make_lens(view);
    camera->setBeacon(beacon);
    camera->setNear(single(view.depths.nearSide));
    camera->setFar(single(view.depths.farSide));
    UnrecordedRefPtr<EnhPassiveViewport> const viewport(EnhPassiveViewport::create());
    viewport->setCamera(camera);
    viewport->setBackground(UnrecordedRefPtr<Background>(Background::create()));
    viewport->setRoot(root);
    action.setHeadlight(true);
    viewport->render(&action);
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
    clear_picture(background);
    UnrecordedRefPtr<RenderAction> const action(RenderAction::create());
    if(root != nullptr && view.depths.isVisible())
        draw_scene(root, view, *action);
    picture.pixels = context.readPixels();
    if(glGetError() == GL_OUT_OF_MEMORY)
        return {.missing = "out of memory"};
    return picture;
}
} // namespace OSG
