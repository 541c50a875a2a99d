#pragma once

/// \file
/// Which boxes of an index a search enters, see walk_boxes.

#include <algorithm>
#include <limits>

#include "OSGBoxWalk.h"
#include "OSGIndexedExtremes.h"

namespace OSG::SelectionSearch::Indexed
{
/// What widens the distances of boxes, for primitives that are clipped.
struct Margins
{
    Real32 contained; ///< where the box lies wholly inside
    Real32 crossing;  ///< where it does not; infinite where corners may lie anywhere
};

inline constexpr Real32 Infinite = std::numeric_limits<Real32>::infinity();

/// Asks `choose(child, grades)` for each box that is not outside the volume. It sets the box's key
/// and says whether the box is wanted.
template <class Choose>
void choose_boxes(BoxNode const &node, BoxPlanes const &planes, UInt32 state, BoxChoices &choices,
                  Choose choose)
{
    BoxGrades grades;
    grade_boxes(node, planes, state, grades);
    choices.wanted &= ~grades.outside;
    for(UInt32 rest = choices.wanted; rest != 0; rest &= rest - 1)
    {
        UInt32 const child = static_cast<UInt32>(__builtin_ctz(rest));
        choices.state[child] = grades.crossed[child];
        if(!choose(child, grades))
            choices.wanted &= ~(1u << child);
    }
}

/// Chooses boxes that may hold a nearer (farther) corner than `best`, the nearest first.
template <class Best>
class ExtremeBoxes
{
  public:
    /// `other` is the key of a further place at which crossing primitives may have a corner.
    ExtremeBoxes(BoxPlanes const &planes, Best const &best, Margins const &margins, Real32 other)
        : _planes(planes)
        , _best(best)
        , _margins(margins)
        , _other(other)
    {
    }

    void test(BoxNode const &node, UInt32 state, BoxChoices &choices)
    {
        choose_boxes(node, _planes, state, choices,
                     [&](UInt32 child, BoxGrades const &grades)
                     {
                         Real32 const key =
                             Best::key(grades.nearest[child], grades.farthest[child]);
                         choices.key[child] = grades.crossed[child] == 0
                                                  ? key - _margins.contained
                                                  : std::min(key, _other) - _margins.crossing;
                         return wants(choices.key[child], node.last[child]);
                     });
    }
    bool wants(Real32 key, UInt32 last)
    {
        bool const isWanted = _best.wants(key, last);
        _hasRefused = _hasRefused || !isWanted;
        return isWanted;
    }
    /// Whether it has turned down a box that was not outside.
    bool hasRefused() const { return _hasRefused; }

  private:
    BoxPlanes const &_planes;
    Best const &_best;
    Margins _margins;
    Real32 _other;
    bool _hasRefused = false;
};

/// Chooses boxes that cross the volume's border, and so may hold a crossing triangle before
/// triangle `end` with a nearer corner than `best`.
class CrossingBoxes
{
  public:
    CrossingBoxes(BoxPlanes const &planes, NearBest const &best, Real32 margin, Real32 other,
                  UInt32 end)
        : _planes(planes)
        , _best(best)
        , _margin(margin)
        , _other(other)
        , _end(end)
    {
    }

    void test(BoxNode const &node, UInt32 state, BoxChoices &choices) const
    {
        choose_boxes(node, _planes, state, choices,
                     [&](UInt32 child, BoxGrades const &grades)
                     {
                         choices.key[child] = std::min(grades.nearest[child], _other) - _margin;
                         return grades.crossed[child] != 0 && node.first[child] < _end &&
                                wants(choices.key[child], node.last[child]);
                     });
    }
    bool wants(Real32 key, UInt32 last) const { return _best.wants(key, last); }

  private:
    BoxPlanes const &_planes;
    NearBest const &_best;
    Real32 _margin;
    Real32 _other;
    UInt32 _end;
};

/// Chooses boxes that may hold a contained triangle before `first` with a corner nearer than
/// `limit`; those that begin with the first triangles first.
class FirstBoxes
{
  public:
    FirstBoxes(BoxPlanes const &planes, Real32 limit, UInt32 const &first)
        : _planes(planes)
        , _limit(limit)
        , _first(first)
    {
    }

    void test(BoxNode const &node, UInt32 state, BoxChoices &choices) const
    {
        choose_boxes(node, _planes, state, choices,
                     [&](UInt32 child, BoxGrades const &grades)
                     {
                         choices.key[child] = static_cast<Real32>(node.first[child]);
                         return grades.nearest[child] < _limit && node.first[child] < _first;
                     });
    }
    // The key is rounded, which keeps the order.
    bool wants(Real32 key, UInt32) const { return key <= static_cast<Real32>(_first); }

  private:
    BoxPlanes const &_planes;
    Real32 _limit;
    UInt32 const &_first;
};

/// Chooses all boxes that are not outside, those that cross few planes first. A contained one
/// decides.
class AnyBoxes
{
  public:
    explicit AnyBoxes(BoxPlanes const &planes)
        : _planes(planes)
    {
    }

    void test(BoxNode const &node, UInt32 state, BoxChoices &choices)
    {
        choose_boxes(node, _planes, state, choices,
                     [&](UInt32 child, BoxGrades const &grades)
                     {
                         UInt32 const crossed = grades.crossed[child];
                         choices.key[child] = static_cast<Real32>(__builtin_popcount(crossed));
                         isFound = isFound || crossed == 0;
                         return true;
                     });
    }
    bool wants(Real32, UInt32) const { return !isFound; }

    bool isFound = false;

  private:
    BoxPlanes const &_planes;
};
} // namespace OSG::SelectionSearch::Indexed
