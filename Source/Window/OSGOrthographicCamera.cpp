#include "OSGOrthographicCamera.h"

#include <cmath>

namespace OSG
{
OrthographicCamera::~OrthographicCamera() = default;

void OrthographicCamera::getProjection(Matrix &result, UInt32 width, UInt32 height) const
{
    result.setIdentity();
    Real64 const size = getVerticalSize();
    Real64 const near = getNear();
    Real64 const far = getFar();
    bool const valid = width > 0 && height > 0 && size > 0 && std::isfinite(size) && near < far &&
                       std::isfinite(near) && std::isfinite(far);
    if(!valid)
        return;
    Real64 const depth = far - near;
    result[0][0] = static_cast<Real32>(2 / size * height / width);
    result[1][1] = static_cast<Real32>(2 / size);
    result[2][2] = static_cast<Real32>(-2 / depth);
    result[3][2] = static_cast<Real32>(-(far + near) / depth);
}
} // namespace OSG
