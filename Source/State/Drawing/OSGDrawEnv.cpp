#include "OSGDrawEnv.h"

#include <cmath>

namespace OSG
{
void DrawEnv::setView(Matrix const &cameraToWorld, Matrix const &viewing, Matrix const &projection,
                      PixelBounds const &pixels)
{
    setView(cameraToWorld, Matrix4d(viewing), projection, pixels);
}

void DrawEnv::setView(Matrix const &cameraToWorld, Matrix4d const &viewing,
                      Matrix const &projection, PixelBounds const &pixels)
{
    _cameraToWorld = cameraToWorld;
    _viewing = Matrix(viewing);
    _exactViewing = viewing;
    _projection = projection;
    _worldToScreen = projection * _viewing;
    _pixels = pixels;
}

bool DrawEnv::isOrthographic() const
{
    constexpr Real32 Epsilon = 1e-6f;
    return std::abs(_projection[2][3]) < Epsilon && std::abs(_projection[3][3] - 1) < Epsilon;
}
} // namespace OSG
