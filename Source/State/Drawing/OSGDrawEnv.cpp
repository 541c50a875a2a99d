#include "OSGDrawEnv.h"

#include <cmath>

#include "OSGFinite.h"
#include "OSGLog.h"

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

void DrawEnv::setSections(std::span<Plane const> planes)
{
    _sections.clear();
    for(Plane const &plane : planes)
    {
        Vec3f const &normal = plane.getNormal();
        bool const isPlane = is_finite(normal) && is_finite(plane.getDistanceFromOrigin()) &&
                             normal != Vec3f(0, 0, 0);
        if(isPlane && _sections.size() == MostSections)
        {
            OSG_LOG_WARNING("DrawEnv: there are at most %u section planes, the others are left "
                            "out\n",
                            static_cast<unsigned>(MostSections));
            return;
        }
        if(isPlane)
            _sections.push_back(plane);
    }
}

// A plane goes by the inverse transpose of what carries points.
std::vector<Vector<Real64, 4>> DrawEnv::getSectionsInEye() const
{
    std::vector<Vector<Real64, 4>> result;
    Matrix4d toWorld;
    if(_sections.empty() || !toWorld.invertFrom(_exactViewing))
        return result;
    for(Plane const &plane : _sections)
    {
        Vec3f const &normal = plane.getNormal();
        Vector<Real64, 4> const inWorld(normal[0], normal[1], normal[2],
                                        -Real64(plane.getDistanceFromOrigin()));
        result.emplace_back(toWorld[0].dot(inWorld), toWorld[1].dot(inWorld),
                            toWorld[2].dot(inWorld), toWorld[3].dot(inWorld));
    }
    return result;
}

bool DrawEnv::isOrthographic() const
{
    constexpr Real32 Epsilon = 1e-6f;
    return std::abs(_projection[2][3]) < Epsilon && std::abs(_projection[3][3] - 1) < Epsilon;
}
} // namespace OSG
