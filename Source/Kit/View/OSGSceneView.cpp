#include "OSGSceneView.h"

#include <limits>

#include "OSGBeaconPose.h"
#include "OSGGroup.h"
#include "OSGMakeNode.h"
#include "OSGOrthographicCamera.h"
#include "OSGOverlayDepths.h"
#include "OSGPerspectiveCamera.h"
#include "OSGPictureView.h"
#include "OSGSolidBackground.h"
#include "OSGTransform.h"
#include "OSGViewFit.h"
#include "OSGViewportView.h"

namespace OSG
{
namespace
{
UnrecordedRefPtr<Node> new_beacon()
{
    UnrecordedRefPtr<Transform> const transform(Transform::create());
    return UnrecordedRefPtr<Node>(make_node(transform));
}

WindowView const FirstView{{0, 0, 1}, {0, 0, 0}, {0, 1, 0}, DefaultFieldOfView, 1, 1};
} // namespace

SceneView::SceneView()
    : _beacon(new_beacon())
    , _nothing(make_node(UnrecordedRefPtr<Group>(Group::create())))
    , _perspective(PerspectiveCamera::create())
    , _orthographic(OrthographicCamera::create())
    , _background(SolidBackground::create())
    , _viewport(EnhPassiveViewport::create())
    , _action(RenderAction::create())
    , _onTop(ViewLayer::Behind::Nothing)
    , _view(FirstView)
{
    _perspective->setBeacon(_beacon);
    _orthographic->setBeacon(_beacon);
    _background->setColor(Color3f(1, 1, 1));
    _viewport->setBackground(_background);
    _viewport->setCamera(_perspective);
    _viewport->setRoot(_nothing);
    _action->setHeadlight(true);
    _sharpEdges.drawBy(*_edges.getRenderAction());
    setMultisampled(true);
    _navigator.setViewport(_viewport);
    setSize(1, 1);
    setView(FirstView);
}

SceneView::~SceneView() = default;

void SceneView::setScene(Node *scene)
{
    _viewport->setRoot(scene != nullptr ? scene : _nothing.get());
}

Node *SceneView::getScene() const
{
    Node *const root = _viewport->getRoot();
    return root != _nothing ? root : nullptr;
}

void SceneView::setSize(UInt32 width, UInt32 height)
{
    constexpr UInt32 Largest = std::numeric_limits<UInt16>::max();
    if(width == 0 || height == 0 || width > Largest || height > Largest)
        return;
    _view.width = width;
    _view.height = height;
    _viewport->setLeft(0);
    _viewport->setBottom(0);
    _viewport->setRight(static_cast<Real32>(width - 1));
    _viewport->setTop(static_cast<Real32>(height - 1));
}

WindowView SceneView::getView() const
{
    WindowView view = _view;
    NavigatorEngine *const engine = _navigator.getEngine();
    if(engine == nullptr)
        return view;
    engine->getMatrix(); // some engines bring the pose up to date here alone
    view.from = engine->getFrom();
    view.at = engine->getAt();
    view.up = engine->getUp();
    if(view.orthographicHeight)
        view.orthographicHeight = static_cast<Real32>(_heightByDistance * distance() * zoom());
    return view;
}

bool SceneView::setView(WindowView const &view)
{
    if(!is_view(view))
        return false;
    UInt32 const width = _view.width;
    UInt32 const height = _view.height;
    _view = view;
    _view.width = width;
    _view.height = height;
    if(NavigatorEngine *const engine = _navigator.getEngine())
        engine->set(view.from, view.at, view.up);
    if(view.orthographicHeight)
        _heightByDistance = Real64(*view.orthographicHeight) / distance();
    _shownHeight = 0;
    _viewport->setCamera(view.orthographicHeight ? static_cast<Camera *>(_orthographic)
                                                 : _perspective);
    update();
    return true;
}

void SceneView::fit() { setView(OSG::fit(getView(), getBounds())); }

void SceneView::setEngine(NavigatorEngine *engine)
{
    WindowView const view = getView();
    _navigator.setEngine(engine);
    setView(view);
}

void SceneView::setBackground(Color3f const &color) { _background->setColor(color); }

void SceneView::setSections(SectionPlanes const &sections)
{
    _sections = sections;
    _action->editDrawEnv().setSections(_sections.getPlanes());
}

// --- how the scene is drawn, and what besides ---

namespace
{
template <class Change>
void change_look(RenderAction &action, Change change)
{
    DrawLook look = action.getDrawEnv().getLook();
    change(look);
    action.editDrawEnv().setLook(look);
}
} // namespace

void SceneView::setStyle(DrawStyle style)
{
    change_look(*_action, [style](DrawLook &look) { look.style = style; });
}

void SceneView::setLineColor(Color3f const &color)
{
    change_look(*_action, [&color](DrawLook &look) { look.lineColor = color; });
}

void SceneView::setMultisampled(bool isOn)
{
    for(RenderAction *action : {_action.get(), _edges.getRenderAction(), _overlay.getRenderAction(),
                                _onTop.getRenderAction()})
        change_look(*action, [isOn](DrawLook &look) { look.isMultisampled = isOn; });
}

void SceneView::setOverlay(Node *root)
{
    _overlay.setRoot(root);
    pushFacesBack();
}

void SceneView::setOverlayOnTop(Node *root) { _onTop.setRoot(root); }

void SceneView::showEdges(Color3f const &color)
{
    change_look(*_edges.getRenderAction(),
                [&color](DrawLook &look)
                {
                    look.style = DrawStyle::OneColor;
                    look.lineColor = color;
                });
    _showsEdges = true;
    pushFacesBack();
}

void SceneView::hideEdges()
{
    _showsEdges = false;
    _edges.setRoot(nullptr);
    pushFacesBack();
}

void SceneView::pushFacesBack()
{
    bool const isWanted = _showsEdges || getOverlay() != nullptr;
    change_look(*_action, [isWanted](DrawLook &look) { look.pushesFacesBack = isWanted; });
}

// Edges are hidden and cut as the scene is. A table of appearances is copied when it has changed.
void SceneView::drawEdges()
{
    RenderAction &action = *_edges.getRenderAction();
    AppearanceTable const &looks = _action->getAppearances();
    if(action.getAppearances().getNumber() != looks.getNumber())
        action.editAppearances() = looks;
    std::vector<Plane> const &sections = _action->getDrawEnv().getSections();
    if(action.getDrawEnv().getSections() != sections)
        action.editDrawEnv().setSections(sections);
    _edges.getViewport()->setTravMask(_viewport->getTravMask());
    _edges.setRoot(getScene());
    _edges.draw(_viewport->getCamera());
    _isComplete = _sharpEdges.build();
}

void SceneView::draw()
{
    update();
    Camera *const camera = _viewport->getCamera();
    _viewport->render(_action);
    _isComplete = true;
    if(_showsEdges)
        drawEdges();
    _overlay.draw(camera);
    _onTop.draw(camera);
}

Real64 SceneView::distance() const
{
    NavigatorEngine *const engine = _navigator.getEngine();
    Real64 const known = engine != nullptr ? engine->getDistance() : 0;
    if(known > 0)
        return known;
    // Engines that look at nothing have no distance.
    return engine != nullptr ? (engine->getAt() - engine->getFrom()).length()
                             : (_view.at - _view.from).length();
}

Real64 SceneView::zoom() const
{
    bool const isShown = _view.orthographicHeight && _shownHeight > 0;
    return isShown ? Real64(_orthographic->getVerticalSize()) / _shownHeight : 1;
}

ViewDepths SceneView::depths() const
{
    Matrix const camera = _beacon->getToWorld();
    ViewDepths depths = picture_depths(getBounds(), camera);
    for(ViewLayer const *layer : {&_overlay, &_onTop})
    {
        if(Node *const root = layer->getRoot())
            depths = with_overlay(depths, bounds_of(root), getView(), camera);
    }
    return depths;
}

void SceneView::update()
{
    WindowView const view = getView();
    _heightByDistance *= zoom();
    // The pose is the engine's to the bit, as the navigator sets it: both would write it in turn.
    if(NavigatorEngine *const engine = _navigator.getEngine())
    {
        pose_beacon(_viewport->getCamera(), engine->getMatrix());
        show_projection(*_viewport, view);
    }
    else
        show_view(*_viewport, view);
    _shownHeight = _orthographic->getVerticalSize();
    ViewDepths const shown = depths();
    if(!shown.isVisible())
        return;
    // Equal values are not written again: each edit asks for another frame.
    Camera &camera = *_viewport->getCamera();
    Real32 const nearSide = static_cast<Real32>(shown.nearSide);
    Real32 const farSide = static_cast<Real32>(shown.farSide);
    if(camera.getNear() != nearSide)
        camera.setNear(nearSide);
    if(camera.getFar() != farSide)
        camera.setFar(farSide);
}
} // namespace OSG
