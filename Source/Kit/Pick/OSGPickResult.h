#pragma once

/// \file
/// What lies under the pointer, as a host shows it to its user.

#include <optional>
#include <string>
#include <vector>

#include "OSGNodePath.h"
#include "OSGPickSelector.h"

namespace OSG
{
/// The foremost place of one node on one path.
struct PickResult
{
    NodePath path = {};
    std::string name = {}; ///< of the node, or of its core; empty where neither has one
    /// What a GeoToEntityAttachment of the node, or of its core, says of the primitive. 0 where
    /// there is none.
    UInt64 entity = 0;
    Int32 primitive = -1; ///< index among the triangles, lines or primitives of the geometry
    SelectionFunctor::SelectionType kind = SelectionFunctor::SelectTriangles;
    Pnt3f point = {};   ///< in the space of the root
    Vec3f normal = {};  ///< there, of length 1; zero where the geometry has none
    Real64 depth = 0;   ///< of the point, from the near side of the region's solid
    std::optional<Real32> eyeDistance = {}; ///< of the point; none for a region without a view

    Node *getNode() const { return path.getNode(); }
};

/// All that a region meets, by ascending depth: a result for each path, its foremost one. Equal
/// depths are in the order of SelectionFunctor. Of `settings` the kinds and `enclosed` are looked
/// at.
///
/// For a triangle that lies wholly inside, the point is its foremost corner.
OSG_TOLVANITEKIT_API std::vector<PickResult> pick_results(PickSelector &selector,
                                                          PickRegion const &region,
                                                          PickSettings const &settings = {});

/// Goes through what lies under the pointer, one thing at a time: "select other".
class PickCycle
{
  public:
    PickCycle() = default;
    /// Stands on the first result.
    explicit PickCycle(std::vector<PickResult> results)
        : _results(std::move(results))
    {
    }

    bool isEmpty() const { return _results.empty(); }
    std::vector<PickResult> const &getResults() const { return _results; }
    /// Null where there is none.
    PickResult const *current() const { return isEmpty() ? nullptr : &_results[_at]; }
    /// Steps to the one behind; from the last to the first.
    PickResult const *next() { return step(1); }
    /// Steps to the one in front; from the first to the last.
    PickResult const *previous() { return step(_results.size() - 1); }

  private:
    PickResult const *step(std::size_t by)
    {
        if(!isEmpty())
            _at = (_at + by) % _results.size();
        return current();
    }

    std::vector<PickResult> _results;
    std::size_t _at = 0;
};
} // namespace OSG
