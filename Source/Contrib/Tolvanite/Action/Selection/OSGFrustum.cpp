#include "OSGFrustum.h"

#include <algorithm>

namespace OSG
{
Frustum::Frustum() = default;

Frustum::Frustum(Frustum const &other) = default;

Frustum::Frustum(Pnt3f const &nlb, Pnt3f const &nrb, Pnt3f const &nrt, Pnt3f const &nlt,
                 Pnt3f const &flb, Pnt3f const &frb, Pnt3f const &frt, Pnt3f const &flt)
    : _corners{nlb, nrb, nrt, nlt, flb, frb, frt, flt}
{
}

Frustum::Frustum(Pnt3f const *corners) { std::copy_n(corners, _corners.size(), _corners.begin()); }

Frustum &Frustum::operator=(Frustum const &other) = default;

Frustum::~Frustum() = default;

void Frustum::multFull(Matrix const &m)
{
    for(Pnt3f &corner : _corners)
        m.multFull(corner, corner);
}

FrustumVolume Frustum::Volume() const
{
    return FrustumVolume(Plane(nlb(), nlt(), nrb()), Plane(frb(), frt(), flb()),
                         Plane(flb(), flt(), nlb()), Plane(nrb(), nrt(), frb()),
                         Plane(frt(), nrt(), flt()), Plane(nlb(), nrb(), flb()));
}
} // namespace OSG
