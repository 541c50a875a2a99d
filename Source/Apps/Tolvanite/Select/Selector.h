#pragma once

#include <deque>
#include <optional>

#include "SelectionSettings.h"
#include "VolumeOptions.h"

namespace Tool
{
/// The hits of one selection.
struct Selection
{
    /// Null where no part of the scene is in the view. Valid until the selector's next selection.
    std::deque<OSG::SelectionFunctor::HitT> const *hits = nullptr;
    std::optional<OSG::Pnt3f> eye; ///< the eye of the view; none for a volume without a view
    double seconds = 0;
    bool isIndexed = false; ///< at least one geometry was answered through its index
};

/// Makes selections in one scene, whose volumes are up to date, one after the other.
class Selector
{
  public:
    Selector(OSG::Node *root, bool usesIndex);

    Selection select(SelectionSettings const &settings, VolumeChoice const &choice);

  private:
    OSG::SceneBounds _bounds;
    OSG::PickSelector _selector;
};
} // namespace Tool
