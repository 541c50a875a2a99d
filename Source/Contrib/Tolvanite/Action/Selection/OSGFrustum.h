#pragma once

/// \file
/// The volume of every selection.

#include <array>

#include "OSGContribTolvaniteApi.h"
#include "OSGFrustumVolume.h"
#include "OSGMatrix.h"
#include "OSGVector.h"

namespace OSG
{
/// Convex solid of six sides, given by its eight corners. It need not be a pyramid: a box that
/// sweeps a walking person is a frustum like the one below a mouse pointer.
///
/// The corners are the data and the planes are derived from them, so that moving eight points
/// carries the solid through any matrix, one that projects or scales unevenly included.
///
///        7--------6      near: 0 nlb  1 nrb  2 nrt  3 nlt
///       /|       /|      far:  4 flb  5 frb  6 frt  7 flt
///      / |      / |
///     3--------2  |      Either face starts left at the bottom and runs counter-clockwise
///     |  4-----|--5      as seen from the near side, from where the drawing looks.
///     | /      | /       Corners in mirrored order turn all six normals outwards.
///     |/       |/
///     0--------1
///
/// A plain value: it owns nothing, never allocates and never fails. Degenerate corners give the
/// degenerate planes that `Plane` makes of them.
class OSG_CONTRIBTOLVANITE_API Frustum
{
  public:
    // --- creation ---
    /// All corners at the origin.
    Frustum();
    Frustum(Frustum const &other);
    /// The corners in the order of their indices.
    Frustum(Pnt3f const &nlb, Pnt3f const &nrb, Pnt3f const &nrt, Pnt3f const &nlt,
            Pnt3f const &flb, Pnt3f const &frb, Pnt3f const &frt, Pnt3f const &flt);
    /// Reads eight points in the order of their indices; the array is not kept.
    Frustum(Pnt3f const *corners);
    Frustum &operator=(Frustum const &other);
    ~Frustum();

    // --- corners ---
    Pnt3f const &nlb() const { return _corners[0]; }
    Pnt3f const &nrb() const { return _corners[1]; }
    Pnt3f const &nrt() const { return _corners[2]; }
    Pnt3f const &nlt() const { return _corners[3]; }
    Pnt3f const &flb() const { return _corners[4]; }
    Pnt3f const &frb() const { return _corners[5]; }
    Pnt3f const &frt() const { return _corners[6]; }
    Pnt3f const &flt() const { return _corners[7]; }

    /// Carries the corners through `m`, each multiplied by the reciprocal of its own w. A corner
    /// whose w is exactly 0 stays undivided, with one warning in the log.
    void multFull(Matrix const &m);

    /// The planes near, far, left, right, top, bottom; unit normals that point into the solid.
    /// Three corners define each, the fourth of a warped face has no say.
    FrustumVolume Volume() const;

  private:
    std::array<Pnt3f, 8> _corners;
};
} // namespace OSG
