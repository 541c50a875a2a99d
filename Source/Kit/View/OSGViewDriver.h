#pragma once

#include <optional>
#include <utility>

#include <boost/function.hpp>

#include "OSGSceneView.h"
#include "OSGStandardView.h"
#include "OSGViewHistory.h"

namespace OSG
{
/// Takes a SceneView from view to view as the menus of a viewer do: the whole scene, a standard
/// view, the view before. It goes there by a short way, which ends where the user moves the view.
///
///     driver.look(StandardView::Top);
///     ...
///     driver.update(seconds, !adapter.isDragging()); // once per frame, after EventAdapter::frame()
///     if(driver.isOnWay())
///         askForAnotherFrame();
class OSG_TOLVANITEKIT_API ViewDriver
{
  public:
    /// How long a way takes if nobody says otherwise.
    static constexpr Real64 DefaultWaySeconds = 0.25;

    /// Keeps a reference to the view, which has to outlive the driver.
    explicit ViewDriver(SceneView &view);

    /// 0 jumps. A number below 0 and NaN count as 0.
    void setWaySeconds(Real64 seconds) { _waySeconds = seconds > 0 ? seconds : 0; }
    /// Called when the driver has moved the view, for a recorder (InputRecorder::takePoseOfHost).
    void setMoved(boost::function<void()> moved) { _moved = std::move(moved); }
    /// The axis that points upwards in standard views: Y at first.
    void setSceneUp(SceneUp sceneUp) { _sceneUp = sceneUp; }
    SceneUp getSceneUp() const { return _sceneUp; }

    /// How much of the window's width, about its middle, panels leave free: what is fitted is shown
    /// there. 0, and more than the window has, stand for all of it.
    void setFreeWidth(UInt32 pixels) { _freeWidth = pixels; }
    /// The whole scene, in the direction of a view, within the free width.
    WindowView fitted(WindowView const &view) const;

    // --- where to go; a view that is none, see is_view, changes nothing ---
    void goTo(WindowView const &view);
    /// Is there at once.
    void jumpTo(WindowView const &view);
    /// Shows the whole scene, or a box of it, in the direction of the view. An empty box changes
    /// nothing.
    void fit();
    void fit(BoxVolume const &box);
    /// Shows the whole scene from there.
    void look(StandardView standard);
    /// Shows the same at the depth of what is looked at, without perspective or with it.
    void setOrthographic(bool isOrthographic);
    bool isOrthographic() const;
    /// See zoom_at. Without a point, what lies at `pixel` as deep as what is looked at stays there.
    void zoomAt(Pnt2f const &pixel, std::optional<Pnt3f> const &point, Real32 magnification);

    /// The views in which the user has rested.
    bool canUndo() const { return _history.canUndo(); }
    bool canRedo() const { return _history.canRedo(); }
    void undo();
    void redo();
    /// Forgets them: there is another scene.
    void forget();

    /// Goes on. `seconds` are those of any clock that does not go back; `isResting` says that no
    /// drag is under way, so that a view that has not changed since the last call is one of the
    /// history.
    void update(Real64 seconds, bool isResting);
    bool isOnWay() const { return _way.has_value(); }

  private:
    struct Way
    {
        WindowView from;
        WindowView to;
        std::optional<Real64> begin = {}; // unset until the next update
        bool isInHistory = false;
    };
    WindowView target() const;
    bool show(WindowView const &view);
    template <class Extent>
    WindowView fittedTo(WindowView const &view, Extent const &extent) const;
    void goInHistory(std::optional<WindowView> const &view);

    SceneView &_view;
    boost::function<void()> _moved;
    ViewHistory _history;
    std::optional<Way> _way;
    std::optional<WindowView> _last;    // as the last update left it
    std::optional<WindowView> _arrived; // where undo or redo led; an engine may have rounded it
    Real64 _waySeconds = DefaultWaySeconds;
    SceneUp _sceneUp = SceneUp::Y;
    UInt32 _freeWidth = 0;
};
} // namespace OSG
