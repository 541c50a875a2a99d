#include "OSGDrawEnv.h"

namespace OSG
{
void DrawEnv::setView(Matrix const &cameraToWorld, Matrix const &viewing, Matrix const &projection,
                      PixelBounds const &pixels)
{
    _cameraToWorld = cameraToWorld;
    _viewing = viewing;
    _projection = projection;
    _worldToScreen = projection * viewing;
    _pixels = pixels;
}

bool DrawEnv::isOrthographic() const
{
    return _projection[0][3] == 0 && _projection[1][3] == 0 && _projection[2][3] == 0;
}
} // namespace OSG
