#pragma once

#include <deque>
#include <memory>
#include <optional>

#include "OSGNode.h"
#include "OSGSelectionAction.h"
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
    ~Selector();
    Selector(Selector const &) = delete;
    Selector &operator=(Selector const &) = delete;

    Selection select(SelectionSettings const &settings, VolumeChoice const &choice);

  private:
    struct Functors;

    OSG::Node *_root;
    OSG::SceneBounds _bounds;
    std::unique_ptr<Functors> _functors;
};
} // namespace Tool
