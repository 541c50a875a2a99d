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
/// Convex solid with six sides, given by its eight corners. It need not be a truncated pyramid: the
/// box around a walking person is a frustum as well as the volume behind a pixel.
///
/// The corners are stored and the planes are computed from them. Transforming the eight corners
/// therefore transforms the solid by any matrix, also by one that projects or scales unevenly.
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
/// It is a plain value: it owns nothing, never allocates and never fails. Degenerate corners give
/// degenerate planes, see Plane.
class OSG_CONTRIBTOLVANITE_API Frustum
{
  public:
    // --- creation ---
    /// All corners at the origin.
    Frustum();
    Frustum(Frustum const &other);
    /// Takes the corners in the order of their indices.
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

    /// Transforms the corners by `m`. Each is multiplied by the reciprocal of its own w. A corner
    /// whose w is exactly 0 is not divided, and a warning is logged.
    void multFull(Matrix const &m);

    /// The planes near, far, left, right, top, bottom, with unit normals that point into the solid.
    /// Three corners define each plane; the fourth corner of a face that is not flat is ignored.
    FrustumVolume Volume() const;

  private:
    std::array<Pnt3f, 8> _corners;
};
} // namespace OSG
