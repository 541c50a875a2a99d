#include "OSGDirectionalLight.h"

namespace OSG
{
DirectionalLight::~DirectionalLight() = default;

void DirectionalLight::addTo(LightValues &values, Matrix const &toEye) const
{
    Vec3f const direction = toEye * getDirection();
    values.position = Vec4f(direction[0], direction[1], direction[2], 0.f);
}
} // namespace OSG
