#pragma once

/// \file
/// The traversal that finds where a ray first meets a triangle.

#include <limits>
#include <vector>

#include "OSGAction.h"
#include "OSGLine.h"
#include "OSGMatrix.h"

namespace OSG
{
/// Casts a ray into a scene and keeps the nearest hit, of triangles from both sides and from
/// distance 0 on; of equal distances the first in the order of the walk stays.
///
///     UnrecordedRefPtr<IntersectAction> ray(IntersectAction::create());
///     ray->setLine(line, 1e30f); // in the space of the root that is walked
///     ray->apply(root);
///     if(ray->didHit())
///         use(ray->getHitPoint());
///
/// The action knows no core. Whoever knows one registers functions for its type, which serve the
/// types derived from it as well: a geometry offers its nearest triangle by setHit(), a transform
/// carries the ray into the space below by pushSpace() and popSpace(), another tree is added by
/// addNode(). A core type without functions is passed through.
///
/// Volumes of nodes are used as they are. A volume that is out of date culls nothing.
class OSG_SYSTEM_API IntersectAction : public Action
{
  public:
    static constexpr Real32 NoLimit = std::numeric_limits<Real32>::infinity();

    // --- creation ---
    static TransitPtr<IntersectAction> create();
    static char const *getClassname() { return "IntersectAction"; }

    // --- functions that every action made from now on begins with ---
    /// A type gets the functions of the nearest type, itself or above it, that has any.
    static void registerEnterDefault(FieldContainerType const &type, Functor const &function,
                                     HandlerPromise promise = HandlerPromise::Nothing);
    static void registerLeaveDefault(FieldContainerType const &type, Functor const &function,
                                     HandlerPromise promise = HandlerPromise::Nothing);

    // --- the ray; during a walk that of the current space ---
    /// A point at `maxDist` still counts. Hits stay as they are.
    void setLine(Line const &line, Real32 maxDist = NoLimit);
    Line const &getLine() const { return _line; }
    Real32 getMaxDist() const { return static_cast<Real32>(_maxDistance); }
    /// Multiplies the maximum and the best distance, for functions that put a longer or shorter
    /// ray in place by themselves.
    void scale(Real32 factor);

    // --- the result, in the space of the root ---
    bool didHit() const { return _hitNode != nullptr; }
    /// The rest is without meaning where there was no hit.
    Real32 getHitDistance() const { return static_cast<Real32>(_hitDistance); }
    Pnt3f getHitPoint() const { return _line.getPoint(getHitDistance()); }
    /// That of the triangle's plane, of length 1, on the side that sees its corners run
    /// counter-clockwise in the geometry's own space.
    Vec3f const &getHitNormal() const { return _hitNormal; }
    /// The node that shows the geometry; not counted.
    Node *getHitObject() const { return _hitNode; }
    /// Running number of the triangle in its geometry.
    Int32 getHitTriangle() const { return _hitTriangle; }

    // --- for the functions, during a walk ---
    /// Whether the ray certainly passes the box of the current node. Both are in the space of the
    /// node's parent. A box that is not up to date is never passed. A function that begins with it,
    /// and skips the node then, is GatedByBox.
    bool passesVolume() const;
    /// Enters the space that `toParent` leads out of. False, and nothing changed, where there is
    /// none: the matrix has no inverse (which is logged) or leaves the ray no direction.
    bool pushSpace(Matrix const &toParent);
    /// Leaves it; the ray is again exactly what it was, and a hit made meanwhile is carried along.
    void popSpace();
    /// Offers a hit at `distance` in the current space, of triangle `triangle` of the current node.
    /// Taken where it is not beyond the maximum and nearer than the best so far.
    bool setHit(Real64 distance, Int32 triangle, Vec3f const &normal);
    /// setHit() refuses hits beyond this distance.
    Real64 getReach() const;

  protected:
    IntersectAction();
    IntersectAction(IntersectAction const &) = default;
    ~IntersectAction() override;

    /// Forgets the last hit.
    ResultE start() override;
    ResultE stop(ResultE result) override;
    /// The ray is that of the root again, and nothing is hit.
    void cancel() override;

    FunctorStore *getDefaultEnterFunctors() override;
    FunctorStore *getDefaultLeaveFunctors() override;
    void findMissed(BoxLanes const *boxes, std::size_t count, UInt8 *missed) const override;

  private:
    void forgetHit();

    struct Space
    {
        Matrix4d toLocal; // from the space outside
        Real64 scale;     // local units per unit outside
        Line line;        // the ray outside, and what went with it
        Real64 maxDistance;
        Real64 hitDistance;
        UInt32 hits;
    };

    Line _line;
    Line _rootLine;
    Real64 _maxDistance = NoLimit;
    Real64 _rootMaxDistance = NoLimit;
    std::vector<Space> _spaces;

    Real64 _hitDistance = 0;
    Vec3f _hitNormal;
    Node *_hitNode = nullptr;
    Int32 _hitTriangle = -1;
    UInt32 _hits = 0; // taken so far
};
} // namespace OSG
