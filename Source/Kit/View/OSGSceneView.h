#pragma once

#include "OSGEnhPassiveViewport.h"
#include "OSGNavigator.h"
#include "OSGRenderAction.h"
#include "OSGSceneBounds.h"
#include "OSGSectionPlanes.h"
#include "OSGTolvaniteKitApi.h"
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
    /// For what replaces materials, hides and cuts, and for traversal masks.
    RenderAction *getRenderAction() const { return _action; }
    EnhPassiveViewport *getViewport() const { return _viewport; }
    void setBackground(Color3f const &color);
    /// Cuts the scene open, for drawing; a ScenePicker cuts its regions alike.
    void setSections(SectionPlanes const &sections);
    SectionPlanes const &getSections() const { return _sections; }

    /// Puts the camera where the engine looks, with near and far by the bounds. To be called once
    /// per frame before the viewport is asked or drawn.
    void update();
    /// Draws the scene over the OpenGL viewport of the current context. Calls update()
    /// first. Before its context ends a host calls GLObjectStore::releaseCurrent() in it.
    void draw();

  private:
    Real64 distance() const; // from the eye to what is looked at
    Real64 zoom() const; // by which an engine has scaled the camera's picture since it was shown

    UnrecordedRefPtr<Node> _beacon;
    UnrecordedRefPtr<Node> _nothing; // stands for no scene: a viewport without a root is a mistake
    UnrecordedRefPtr<PerspectiveCamera> _perspective;
    UnrecordedRefPtr<OrthographicCamera> _orthographic;
    UnrecordedRefPtr<SolidBackground> _background;
    UnrecordedRefPtr<EnhPassiveViewport> _viewport;
    UnrecordedRefPtr<RenderAction> _action;
    Navigator _navigator;
    SectionPlanes _sections;
    WindowView _view;             // as it was set last
    Real64 _heightByDistance = 1; // without perspective
    Real32 _shownHeight = 0;      // that of the camera when it was shown, without perspective
};
} // namespace OSG
