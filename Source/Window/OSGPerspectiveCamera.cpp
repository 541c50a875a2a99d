#include "OSGPerspectiveCamera.h"

#include <cmath>
#include <numbers>

namespace OSG
{
PerspectiveCamera::~PerspectiveCamera() = default;

void PerspectiveCamera::getProjection(Matrix &result, UInt32 width, UInt32 height) const
{
    result.setIdentity();
    Real64 const opening = getFov();
    Real64 const near = getNear();
    Real64 const far = getFar();
    bool const valid = width > 0 && height > 0 && opening > 0 && opening < std::numbers::pi &&
                       near > 0 && near < far && std::isfinite(far);
    if(!valid)
        return;
    Real64 const scale = 1 / std::tan(opening / 2);
    Real64 const depth = far - near;
    result[0][0] = static_cast<Real32>(scale * height / width);
    result[1][1] = static_cast<Real32>(scale);
    result[2][2] = static_cast<Real32>(-(far + near) / depth);
    result[2][3] = -1.f;
    result[3][2] = static_cast<Real32>(-2 * far * near / depth);
    result[3][3] = 0.f;
}
} // namespace OSG
