#include "OSGPointLight.h"

namespace OSG
{
PointLight::~PointLight() = default;

void PointLight::addTo(LightValues &values, Matrix const &toEye) const
{
    Pnt3f const position = toEye * getPosition();
    values.position = Vec4f(position[0], position[1], position[2], 1.f);
    values.attenuation = getAttenuation();
}
} // namespace OSG
