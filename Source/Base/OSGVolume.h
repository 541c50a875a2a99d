#pragma once

/// \file
/// Base of the bounding and culling volumes.

#include "OSGBaseApi.h"
#include "OSGMatrix.h"
#include "OSGMemManager.h"

namespace OSG
{
/// Four flags, and the operations of every volume.
///  - valid:    the bounds are up to date. A fresh volume is valid.
///  - empty:    it holds no point. It intersects no other volume and extends none.
///  - infinite: it holds all points. It is never culled, and extensions do not change it.
///  - static:   the host has set it. Updates and extensions do not change it.
class OSG_BASE_API Volume : public MemObject
{
  public:
    virtual ~Volume();

    bool isValid() const { return _valid; }
    void setValid(bool valid = true) { _valid = valid; }
    bool isEmpty() const { return _empty; }
    /// An empty volume is not infinite.
    void setEmpty(bool empty = true)
    {
        _empty = empty;
        _infinite = _infinite && !empty;
    }
    bool isInfinite() const { return _infinite; }
    /// An infinite volume is valid and not empty.
    void setInfinite(bool infinite = true)
    {
        _infinite = infinite;
        _empty = _empty && !infinite;
        _valid = _valid || infinite;
    }
    bool isStatic() const { return _static; }
    void setStatic(bool fixed = true) { _static = fixed; }
    /// Infinite or static: extensions do not change it.
    bool isFixed() const { return _infinite || _static; }

    virtual void getCenter(Pnt3f &center) const = 0;
    /// The axis-aligned box around the volume. For an empty volume both corners are the origin.
    virtual void getBounds(Pnt3f &min, Pnt3f &max) const = 0;
    /// False only where the two volumes have no point in common. It may also be true for volumes
    /// that have no common point.
    virtual bool intersect(Volume const &other) const = 0;
    /// Grows the volume by a point, or by the bounds of a volume.
    virtual void extendBy(Pnt3f const &point) = 0;
    virtual void extendBy(Volume const &other) = 0;
    /// Transforms the volume by `matrix`.
    virtual void transform(Matrix const &matrix) = 0;

  protected:
    explicit Volume(bool empty)
        : _empty(empty)
    {
    }
    Volume(Volume const &) = default;
    Volume &operator=(Volume const &) = default;

  private:
    bool _valid = true;
    bool _empty;
    bool _infinite = false;
    bool _static = false;
};
} // namespace OSG
