#include <numbers>

#include "FrameDrawer.h"
#include "OSGChangeList.h"
#include "OSGMatrixUtility.h"
#include "OSGOffscreenContext.h"
#include "OSGPerspectiveCamera.h"
#include "OSGRenderAction.h"
#include "OSGSolidBackground.h"
#include "OSGThread.h"
#include "OSGViewport.h"

namespace OSG::Bench
{
namespace
{
class OurDrawer : public FrameDrawer
{
  public:
    explicit OurDrawer(Node *root)
        : _context(FrameWidth, FrameHeight)
        , _root(root)
    {
        _beacon->setCore(_place);
        _camera->setBeacon(_beacon);
        _background->setColor(Color3f(1, 1, 1));
        _viewport->setRight(static_cast<Real32>(FrameWidth - 1));
        _viewport->setTop(static_cast<Real32>(FrameHeight - 1));
        _viewport->setCamera(_camera);
        _viewport->setBackground(_background);
        _viewport->setRoot(root);
        _action->setHeadlight(true);
    }

    char const *missing() const override { return _context.missing().c_str(); }
    void makeCurrent() override { static_cast<void>(_context.makeCurrent()); }
    void release() override { _context.release(); }
    void draw(FrameView const &view) override
    {
        Matrix place;
        MatrixLookAt(place, view.from, view.at, Vec3f(0, 1, 0));
        _place->setMatrix(place);
        _camera->setFov(view.fieldOfView * std::numbers::pi_v<Real32> / 180);
        _camera->setNear(view.near);
        _camera->setFar(view.far);
        commit();
        _viewport->render(_action);
        finish_drawing();
    }
    void moveBox(Real32 height) override
    {
        findBox();
        Matrix matrix = _start;
        matrix[3][1] += height;
        static_cast<Transform &>(*_box->getCore()).setMatrix(matrix);
        commit();
    }
    void showBox(bool isShown) override
    {
        findBox();
        _box->setTravMask(isShown ? ~0u : 0u);
        commit();
    }

  private:
    void findBox()
    {
        if(_box != nullptr)
            return;
        _box = _root;
        for(UInt32 child : WayToMovingBox)
            _box = _box->getChild(child);
        _start = dynamic_cast<Transform &>(*_box->getCore()).getMatrix();
    }
    static void commit() { Thread::getCurrentChangeList()->commitChanges(); }

    OffscreenContext _context;
    UnrecordedRefPtr<Node> const _root;
    UnrecordedRefPtr<Node> const _beacon{Node::create()};
    UnrecordedRefPtr<Transform> const _place{Transform::create()};
    UnrecordedRefPtr<PerspectiveCamera> const _camera{PerspectiveCamera::create()};
    UnrecordedRefPtr<SolidBackground> const _background{SolidBackground::create()};
    UnrecordedRefPtr<Viewport> const _viewport{Viewport::create()};
    UnrecordedRefPtr<RenderAction> const _action{RenderAction::create()};
    Node *_box = nullptr;
    Matrix _start;
};
} // namespace

std::unique_ptr<FrameDrawer> make_our_drawer(Node *root)
{
    return std::make_unique<OurDrawer>(root);
}
} // namespace OSG::Bench
