#include "OSGSolidBackground.h"

#include <cmath>

#include <epoxy/gl.h>

namespace OSG
{
SolidBackground::~SolidBackground() = default;

void SolidBackground::clear()
{
    Color3f color = getColor();
    for(std::size_t i = 0; i < 3; ++i)
        color[i] = std::isnan(color[i]) ? 0.f : color[i];
    glClearColor(color[0], color[1], color[2], 1);
    glClearDepth(1);
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
}
} // namespace OSG
