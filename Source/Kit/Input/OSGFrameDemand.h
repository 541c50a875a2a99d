#pragma once

#include "OSGSceneEdits.h"
#include "OSGSelectionSet.h"
#include "OSGShownView.h"
#include "OSGTolvaniteKitApi.h"

namespace OSG
{
class Viewport;

/// Says whether a viewport has to be drawn again, so that an idle host draws nothing.
///
///     selection.addObserver(&demand); // and removeObserver before the demand ends
///     ...
///     adapter.frame();
///     Thread::getCurrentChangeList()->commitChanges();
///     if(hover.update(*viewport))
///         demand.request();
///     if(demand.take(*viewport))
///         window->render(action);
///
/// It sees by itself when the camera's pose or projection, the size of the viewport, its root,
/// camera or background become others, and when an edit of a node, a core, a geometry, a material
/// or an image is committed, in whatever scene. Everything else the host tells by request(): what
/// it hovers over, a band, a table of the render action, the colour of a background.
class OSG_TOLVANITEKIT_API FrameDemand : public SelectionSet::Observer
{
  public:
    FrameDemand() = default;
    ~FrameDemand() override;

    /// The next take() is true.
    void request() { _isRequested = true; }
    /// Whether the viewport has to be drawn now. True at the first call; then once for all that has
    /// changed since the last call that was true.
    bool take(Viewport const &viewport);

    void selectionChanged(SelectionSet const &set, SelectionSet::Change const &change) override;

  private:
    SceneEdits _edits{SceneEdits::Watched::Everything};
    ShownView _shown;
    bool _isRequested = false;
};
} // namespace OSG
