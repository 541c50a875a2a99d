#pragma once

/// \file
/// Matrices of cores that depend on the viewer. Each takes a matrix `toEye` from the core's outer
/// space to the eye and gives that of its inner space.

#include "OSGNodeCore.h"
#include "SlowView.h"

namespace OSG::Test
{
/// +z towards the eye, or against the view where there is no perspective; +y as the camera has it.
Matrix4d billboard_matrix(Matrix4d const &toEye, SlowView const &view);
/// The directions of the outer space, and a unit of one pixel.
Matrix4d pixel_sized_matrix(Matrix4d const &toEye, SlowView const &view);
/// `distance` over the pixels of a unit, both axes of normalised coordinates spanning 2. The
/// matrices above count twice.
Matrix4d constant_sized_matrix(Matrix4d const &toEye, Matrix4d const &own, Real64 distance,
                               SlowView const &view);
} // namespace OSG::Test
