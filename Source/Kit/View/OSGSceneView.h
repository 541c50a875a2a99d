#pragma once

#include "OSGEnhPassiveViewport.h"
#include "OSGNavigator.h"
#include "OSGRenderAction.h"
#include "OSGSceneBounds.h"
#include "OSGSectionPlanes.h"
#include "OSGSharpEdges.h"
#include "OSGTolvaniteKitApi.h"
#include "OSGViewDepths.h"
#include "OSGViewLayer.h"
#include "OSGWindowView.h"

namespace OSG
{
class OrthographicCamera;
class PerspectiveCamera;
class SolidBackground;

/// A scene, a camera, an engine that moves it and the viewport that draws it, put together for a
/// window that a host owns. The host passes the size of the window in pixels, and events to the
/// navigator, best through an EventAdapter; it calls draw() in its own context, with its OpenGL
/// viewport set.
///
///     OSG::SceneView view;
///     view.setScene(scene);
///     view.setSize(width, height);
///     view.fit();
///     view.setEngine(engine);
///     ... once per frame:
///     view.getNavigator().updateCameraTransformation(); // or EventAdapter::frame()
///     view.update();
///     Thread::getCurrentChangeList()->commitChanges();
///     if(demand.take(*view.getViewport())) // a FrameDemand
///         view.draw();
///
/// All of it is used by one thread, that of the window.
class OSG_TOLVANITEKIT_API SceneView
{
  public:
    /// No scene, a window of 1 by 1 pixels, a camera at (0, 0, 1) that looks at the origin, a white
    /// background and a light at the eye.
    SceneView();
    ~SceneView();
    SceneView(SceneView const &) = delete;
    SceneView &operator=(SceneView const &) = delete;

    /// Keeps a reference. The view stays; null shows the background alone.
    void setScene(Node *scene);
    Node *getScene() const;
    /// Where the scene lies. Its volumes are up to date afterwards.
    SceneBounds getBounds() const { return bounds_of(getScene()); }

    /// Of the window in pixels. A size of 0, and one beyond 65,535, changes nothing.
    void setSize(UInt32 width, UInt32 height);
    /// Where the engine looks now. Without perspective the height goes with the engine's distance,
    /// so that its zoom works in both projections.
    WindowView getView() const;
    /// Moves the engine and the camera. The size of the window stays. False, and nothing changed,
    /// where is_view is false for the view.
    bool setView(WindowView const &view);
    /// Shows the whole scene in the direction of the view.
    void fit();

    /// The engine of the navigator takes its pose from the view; see NavigatorEngine.
    void setEngine(NavigatorEngine *engine);
    Navigator &getNavigator() { return _navigator; }
    /// For what replaces materials, hides and cuts.
    RenderAction *getRenderAction() const { return _action; }
    EnhPassiveViewport *getViewport() const { return _viewport; }
    void setBackground(Color3f const &color);
    /// Cuts the scene open, for drawing; a ScenePicker cuts its regions alike.
    void setSections(SectionPlanes const &sections);
    SectionPlanes const &getSections() const { return _sections; }

    // --- how the scene is drawn; a host that draws on demand asks for a frame ---
    void setStyle(DrawStyle style);
    DrawStyle getStyle() const { return _action->getDrawEnv().getLook().style; }
    /// Of wires over shading, black at first.
    void setLineColor(Color3f const &color);
    /// Whether edges are smooth where the frame buffer has several samples a pixel (true).
    void setMultisampled(bool isOn);

    /// Draws the sharp edges of what is shown over it, in `color`, whatever the style is. They are
    /// found step by step by draw(): see SharpEdges.
    void showEdges(Color3f const &color = Color3f(0, 0, 0));
    void hideEdges();
    bool hasEdges() const { return _showsEdges; }
    /// Whether the last draw() has shown all that there is. Where it has not, the host draws
    /// again when it has time: edges are still looked for.
    bool isComplete() const { return _isComplete; }

    // --- what is drawn besides the scene ---
    /// Draws what is below `root` with the camera of the view after the scene, in front of what
    /// lies deeper and behind the rest. It is drawn as it is: neither shown in the style of the
    /// scene nor cut by its sections, neither picked nor walked into nor part of the bounds. Near
    /// and far leave room for it. Faces of the scene lie a little deeper meanwhile, so that an
    /// overlay in them is seen. Keeps a reference; null for none.
    void setOverlay(Node *root);
    Node *getOverlay() const { return _overlay.getRoot(); }
    /// The same for what is seen through everything. It is drawn last.
    void setOverlayOnTop(Node *root);
    Node *getOverlayOnTop() const { return _onTop.getRoot(); }

    /// Puts the camera where the engine looks, with near and far by the bounds. To be called once
    /// per frame before the viewport is asked or drawn.
    void update();
    /// Draws the scene and the overlays over the OpenGL viewport of the current context. Calls
    /// update() first. Before its context ends a host calls GLObjectStore::releaseCurrent() in it.
    void draw();

  private:
    Real64 distance() const; // from the eye to what is looked at
    Real64 zoom() const; // by which an engine has scaled the camera's picture since it was shown
    ViewDepths depths() const;
    void pushFacesBack();
    void drawEdges();

    UnrecordedRefPtr<Node> _beacon;
    UnrecordedRefPtr<Node> _nothing; // stands for no scene: a viewport without a root is a mistake
    UnrecordedRefPtr<PerspectiveCamera> _perspective;
    UnrecordedRefPtr<OrthographicCamera> _orthographic;
    UnrecordedRefPtr<SolidBackground> _background;
    UnrecordedRefPtr<EnhPassiveViewport> _viewport;
    UnrecordedRefPtr<RenderAction> _action;
    ViewLayer _edges;
    ViewLayer _overlay;
    ViewLayer _onTop;
    SharpEdges _sharpEdges;
    bool _showsEdges = false;
    bool _isComplete = true;
    Navigator _navigator;
    SectionPlanes _sections;
    WindowView _view;             // as it was set last
    Real64 _heightByDistance = 1; // without perspective
    Real32 _shownHeight = 0;      // that of the camera when it was shown, without perspective
};
} // namespace OSG
