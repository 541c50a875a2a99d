#pragma once

/// \file
/// What keeps the hits of a selection: base of the handler sets that a SelectionAction calls.

#include <deque>
#include <vector>

#include <boost/noncopyable.hpp>

#include "OSGContribTolvaniteApi.h"
#include "OSGMatrix.h"
#include "OSGMemManager.h"
#include "OSGSelectionClipping.h"

namespace OSG
{
class Node;
class SelectionAction;

/// Settings of a selection and its results. As it stands it is an actor without handlers: a walk
/// passes through everything and records nothing.
///
/// A functor is built over an action, becomes its actor, and outlives each of its walks. It does
/// not detach itself at its end. Results stay readable until the next walk starts.
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

    /// The side of the frustum that distances are measured from, inwards: from the near plane a
    /// larger distance lies deeper, from the far plane closer to the near end.
    enum PlaneType : Int32
    {
        NearPlane = 0,
        FarPlane = 1,
        LeftPlane = 2,
        RightPlane = 3,
        TopPlane = 4,
        BottomPlane = 5
    };

    /// Lists of results. AllHits is sorted by distance alone and stable: of equal distances the
    /// nearest hits come first, those of the geometry that was walked last before the others, then
    /// the farthest hits in the order of the walk. FrontHits and BackHits keep the order that their
    /// hits have in AllHits wherever distances are equal.
    enum HitType : Int32
    {
        AllHits = 0,   ///< every hit, by ascending distance
        FrontHits = 1, ///< for each node its hit of smallest distance, ascending
        BackHits = 2   ///< for each node its hit of largest distance, descending
    };

    struct HitT
    {
        UInt32 selectionType = 0; ///< the functor's whole mask, not the kind of this primitive
        Pnt3f point;              ///< in the space of the traversal's root, see hasPoint
        Vec3f normal;             ///< in the geometry's space
        Node *node = nullptr;     ///< shows the geometry; not counted
        Int32 index = -1;         ///< running number of the primitive; -1 where the hit names none
        /// Whether `point` lies on the primitive that `index` names. Otherwise nobody set it, or a
        /// triangle that is farther away: the nearest triangle lies wholly inside, or the selection
        /// looks for no places.
        bool hasPoint = false;
        /// From the reference plane, in the geometry's space: not comparable across scales, though
        /// the lists compare it as it stands.
        Real32 distance = 0.f;
        Matrix matrix;                         ///< from the geometry's space to that of the root
        std::vector<Node *> visitSubTreeNodes; ///< path of `VisitSubTree` nodes; not counted
    };

    // --- creation ---
    /// Becomes the actor of `action`, which is not null and not owned. `selectionType` is a mask of
    /// `SelectionType`.
    SelectionFunctor(SelectionAction *action, UInt32 selectionType, PlaneType planeType);
    /// Serves no action and therefore cannot become an actor: it fails at once. Kept because it is
    /// part of the interface.
    SelectionFunctor();
    virtual ~SelectionFunctor();

    // --- settings; they count from the next geometry on ---
    SelectionAction *getAction() const { return _action; }
    /// Serves `action` from now on; what it registered on the former one stays there.
    void setAction(SelectionAction *action);
    UInt32 getSelectionType() const { return _selectionType; }
    void setSelectionType(UInt32 selectionType) { _selectionType = selectionType; }
    PlaneType getPlaneType() const { return _planeType; }
    void setPlaneType(PlaneType planeType) { _planeType = planeType; }
    /// Whether a `MultiSwitch` that shows its choices but has none shows all children (true by
    /// default) or none.
    bool getContinueOnEmptyMultiSwitchChoices() const { return _continueOnEmptyMultiSwitchChoices; }
    void setContinueOnEmptyMultiSwitchChoices(bool continues)
    {
        _continueOnEmptyMultiSwitchChoices = continues;
    }

    // --- results ---
    /// Any value that is no `HitType` gives AllHits. Not to be read during a walk.
    std::deque<HitT> const &hits(HitType type) const;
    /// Clears the three lists. Called by the action.
    void start();
    /// Makes the three lists from what was found. Called by the action.
    void stop();

  protected:
    /// Makes this the actor of its action. Derived classes also register their handlers, or do
    /// nothing without an action.
    virtual void init();

    /// The reference plane in the space of the node that `action`, or the functor's own action,
    /// visits. A type that names no plane means the near one.
    Plane const &get_plane() const;
    Plane const &get_plane(SelectionAction const &action) const;

    /// Records a hit as the first or the last one found.
    void addFirstHit(HitT &&hit) { _allHits.push_front(std::move(hit)); }
    void addLastHit(HitT &&hit) { _allHits.push_back(std::move(hit)); }

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
    SelectionAction *_action;
    UInt32 _selectionType;
    PlaneType _planeType;
    std::deque<HitT> _allHits;
    std::deque<HitT> _frontHits;
    std::deque<HitT> _backHits;
    bool _continueOnEmptyMultiSwitchChoices = true;
};
} // namespace OSG
