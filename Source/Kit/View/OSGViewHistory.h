#pragma once

#include <optional>
#include <vector>

#include "OSGTolvaniteKitApi.h"
#include "OSGWindowView.h"

namespace OSG
{
/// The views that a user has been at, to go back to and forth again.
///
///     history.add(view);                      // when a move has ended, not in each frame
///     if(auto const before = history.undo())
///         view = *before;
class OSG_TOLVANITEKIT_API ViewHistory
{
  public:
    static constexpr std::size_t DefaultLimit = 100;

    /// Keeps that many views, the current one included; the oldest goes first. 0 counts as 1.
    explicit ViewHistory(std::size_t limit = DefaultLimit);

    /// The user is at this view now. Views that were undone are forgotten. Nothing changes where
    /// the view equals the current one, or where is_view is false for it.
    void add(WindowView const &view);
    /// The view before the current one, which is then the current one. No value at the first.
    std::optional<WindowView> undo();
    /// The view that was undone last. No value if there is none.
    std::optional<WindowView> redo();
    bool canUndo() const { return _current > 1; }
    bool canRedo() const { return _current < _views.size(); }
    /// No value before the first view.
    std::optional<WindowView> getCurrent() const;
    void clear();

  private:
    std::vector<WindowView> _views;
    std::size_t _limit;
    std::size_t _current = 0; // number of views up to the current one
};
} // namespace OSG
