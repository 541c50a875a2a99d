#pragma once

/// \file
/// What tests ask the OpenGL driver.

#include <array>

#include <epoxy/gl.h>

namespace OSG::Test
{
using ViewportNumbers = std::array<GLint, 4>; ///< x, y, width, height

inline ViewportNumbers driver_viewport()
{
    ViewportNumbers numbers = {};
    glGetIntegerv(GL_VIEWPORT, numbers.data());
    return numbers;
}
} // namespace OSG::Test
