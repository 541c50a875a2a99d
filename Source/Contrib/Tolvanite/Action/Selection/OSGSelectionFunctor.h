#pragma once

/// \file
/// Keeps the hits of a selection. Base of the handler sets that a SelectionAction calls.

#include <deque>
#include <functional>
#include <vector>

#include <boost/noncopyable.hpp>

#include "OSGContribTolvaniteApi.h"
#include "OSGMatrix.h"
#include "OSGMemManager.h"
#include "OSGSelectionClipping.h"
#include "OSGSelectionRecords.h"

namespace OSG
{
class Node;
class SelectionAction;

/// The settings of a selection and its results. The base class has no handlers: a walk with it
/// visits everything and records nothing.
///
/// A functor is made with an action, becomes its actor, and must outlive its walks. The destructor
/// does not detach the functor from the action. The results are available until the next walk
/// starts.
class OSG_CONTRIBTOLVANITE_API SelectionFunctor : public MemObject, private boost::noncopyable
{
  public:
    // --- types ---
    /// Kinds of primitives, as bits of a mask.
    enum SelectionType : UInt32
    {
        SelectTriangles = 1,
        SelectLines = 2,
        SelectPoints = 4
    };

    /// The plane of the frustum that distances are measured from, inwards. Larger distances are
    /// farther from the near plane, or farther from the far plane and so closer to the near end.
    enum PlaneType : Int32
    {
        NearPlane = 0,
        FarPlane = 1,
        LeftPlane = 2,
        RightPlane = 3,
        TopPlane = 4,
        BottomPlane = 5
    };

    /// Lists of results. AllHits is sorted by distance. Among hits of equal distance, nearest hits
    /// come before farthest hits. Nearest hits of equal distance are in the reverse order of the
    /// walk, farthest hits in the order of the walk. In FrontHits and BackHits, hits of equal
    /// distance are in the same order as in AllHits.
    enum HitType : Int32
    {
        AllHits = 0,   ///< every hit, by ascending distance
        FrontHits = 1, ///< for each node its hit of smallest distance, ascending
        BackHits = 2   ///< for each node its hit of largest distance, descending
    };

    struct HitT
    {
        UInt32 selectionType = 0; ///< the functor's whole mask, not the kind of the hit primitive
        Pnt3f point;              ///< in the space of the walked root; see hasPoint
        Vec3f normal;             ///< in the geometry's space
        Node *node = nullptr;     ///< the node that shows the geometry; not counted
        Int32 index = -1;         ///< index of the primitive; -1 where the hit names none
        /// Whether `point` lies on the primitive `index`. Otherwise `point` was never set or
        /// belongs to a triangle that is farther away. This is so for a nearest triangle that lies
        /// wholly inside, and for selections that look for no places.
        bool hasPoint = false;
        /// From the reference plane, in the geometry's space. Distances below transforms of
        /// different scales are not comparable, although the lists are sorted by them.
        Real32 distance = 0.f;
        Matrix matrix;                         ///< from the geometry's space to the root's
        std::vector<Node *> visitSubTreeNodes; ///< `VisitSubTree` nodes on the path; not counted
    };

    // --- creation ---
    /// Becomes the actor of `action`, which must not be null and is not owned. `selectionType` is a
    /// mask of `SelectionType`.
    SelectionFunctor(SelectionAction *action, UInt32 selectionType, PlaneType planeType);
    /// Fails at once, because there is no action to become the actor of. It exists because it is
    /// part of the interface.
    SelectionFunctor();
    virtual ~SelectionFunctor();

    // --- settings; a change applies from the next geometry on ---
    SelectionAction *getAction() const { return _action; }
    /// Serves `action` from now on. The handlers that were registered with the former action stay
    /// there.
    void setAction(SelectionAction *action);
    UInt32 getSelectionType() const { return _selectionType; }
    void setSelectionType(UInt32 selectionType) { _selectionType = selectionType; }
    PlaneType getPlaneType() const { return _planeType; }
    void setPlaneType(PlaneType planeType) { _planeType = planeType; }
    /// Whether a `MultiSwitch` in the mode ShowChoices that has no choices shows all children
    /// (true, the default) or none.
    bool getContinueOnEmptyMultiSwitchChoices() const { return _continueOnEmptyMultiSwitchChoices; }
    void setContinueOnEmptyMultiSwitchChoices(bool continues)
    {
        _continueOnEmptyMultiSwitchChoices = continues;
    }
    /// Asked at each node that is hit, with the action that stands there, before the hits are
    /// recorded. Where it returns false they are not.
    using Filter = std::function<bool(SelectionAction const &)>;
    /// Empty by default, which keeps all hits.
    void setFilter(Filter filter) { _filter = std::move(filter); }

    // --- results ---
    /// The list of `type`; AllHits for an unknown value. Must not be called during a walk.
    ///
    /// A list is made when it is first asked for, and kept until the next walk starts. The call
    /// writes to the functor although it is const: one functor belongs to one thread. Without
    /// memory it throws std::bad_alloc, and may be called again.
    std::deque<HitT> const &hits(HitType type) const;
    /// Clears the three lists. Called by the action.
    void start();
    /// From now on the lists hold the recorded hits in order. Called by the action.
    void stop();

  protected:
    /// Makes this the actor of its action. Derived classes also register their handlers here.
    /// Without an action nothing happens.
    virtual void init();

    /// The reference plane in the space of the node that `action`, or the functor's own action,
    /// visits. An unknown plane type stands for the near plane.
    Plane const &get_plane() const;
    Plane const &get_plane(SelectionAction const &action) const;

    bool passesFilter(SelectionAction const &action) const { return !_filter || _filter(action); }

    /// Hits of the geometry that is visited are recorded here. start() empties it.
    SelectionRecords &records() { return _records; }

    // --- tests of points, segments and polygons against a polytope; see SelectionClipping ---
    using Segment = SelectionClipping::Segment;
    using SegmentList = SelectionClipping::SegmentList;
    using ClipResult = SelectionClipping::ClipResult;
    using enum SelectionClipping::ClipResult;

    bool coarse_intersect(Pnt3f *points, int nPoints, Plane const *planes, int nPlanes) const
    {
        return SelectionClipping::coarse_intersect(points, nPoints, planes, nPlanes);
    }
    bool containement(Pnt3f *points, int nPoints, Plane const *planes, int nPlanes) const
    {
        return SelectionClipping::containement(points, nPoints, planes, nPlanes);
    }
    bool line_intersect(Pnt3f *segment, Plane const *planes, int nPlanes) const
    {
        return SelectionClipping::line_intersect(segment, planes, nPlanes);
    }
    void clip_polygon_at_polytop(SegmentList &polygon, Plane const *planes, int nPlanes) const
    {
        SelectionClipping::clip_polygon_at_polytop(polygon, planes, nPlanes);
    }
    ClipResult segment_half_space_intersect(Segment &segment, Plane const &plane) const
    {
        return SelectionClipping::segment_half_space_intersect(segment, plane);
    }

  private:
    /// A list, and whether it has been made since the walk ended.
    struct Results
    {
        std::deque<HitT> hits;
        bool isMade = false;

        void clear();
    };

    SelectionRecords::Order orderOf(HitType type) const;
    void fill(HitT &hit, UInt32 place) const;

    SelectionAction *_action;
    UInt32 _selectionType;
    PlaneType _planeType;
    SelectionRecords _records;
    Filter _filter;
    mutable Results _results[3]; // by type
    bool _isStopped = false;
    bool _continueOnEmptyMultiSwitchChoices = true;
};
} // namespace OSG
