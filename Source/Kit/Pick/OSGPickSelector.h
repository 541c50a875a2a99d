#pragma once

#include <deque>
#include <memory>

#include "OSGNode.h"
#include "OSGPickRegion.h"
#include "OSGSelectionFunctor.h"

namespace OSG
{
class AppearanceTable;

/// What a pick looks for in its region.
struct PickSettings
{
    UInt32 kinds = SelectionFunctor::SelectTriangles;
    /// The side of the region's solid that distances count from. For a lasso near or far.
    SelectionFunctor::PlaneType plane = SelectionFunctor::NearPlane;
    SelectionFunctor::HitType hits = SelectionFunctor::FrontHits;
    /// Only which nodes are hit, without places and distances; see FastSelectionFunctor.
    bool fast = false;
    /// Only nodes that are hit and whose own geometry lies wholly inside; see is_enclosed. A node
    /// is judged on each path to it.
    bool enclosed = false;
    /// Only what this table lets be drawn: that of the action that draws the picture. Null for all.
    /// It has to stay while the selector selects.
    AppearanceTable const *appearances = nullptr;
};

/// Selects in one scene, one region after the other. A solid is searched by SimpleSelectionFunctor
/// or FastSelectionFunctor, and the answers are theirs. In other regions the answers are of the
/// same form, and geometries are searched without their indices. There the point of a hit is in the
/// region, and a triangle that lies wholly in the region has no nearest point, as in a solid.
///
/// An edit of the scene is followed by Node::updateVolume before the next selection. A selector
/// belongs to one thread.
class OSG_TOLVANITEKIT_API PickSelector
{
  public:
    /// `root` is not counted: the host keeps it alive. Without `usesIndex` each primitive of a
    /// solid's geometries is looked at.
    explicit PickSelector(Node *root, bool usesIndex = true);
    ~PickSelector();
    PickSelector(PickSelector const &) = delete;
    PickSelector &operator=(PickSelector const &) = delete;

    Node *getRoot() const { return _root; }

    /// The hits. Valid until the next selection.
    std::deque<SelectionFunctor::HitT> const &select(PickRegion const &region,
                                                     PickSettings const &settings);
    /// Whether the last selection answered at least one geometry through its index.
    bool wasIndexed() const { return _wasIndexed; }

  private:
    struct Functors;

    Node *_root;
    std::unique_ptr<Functors> _functors;
    bool _wasIndexed = false;
};
} // namespace OSG
