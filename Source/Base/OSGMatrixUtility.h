#pragma once

/// \file
/// Builders of matrices for cameras.

#include "OSGBaseApi.h"
#include "OSGMatrix.h"

namespace OSG
{
/// Makes the matrix from camera space to world space for a camera at `from` that looks at `at`. Its
/// columns are the x, y and z axes of the camera and its position. The z axis points from `at` to
/// `from`, the y axis is as close to `up` as possible. `up` may have any finite length. Returns
/// true on failure: where `from` and `at` coincide, `up` is zero or parallel to the view (each
/// within 1e-6), a number is NaN or infinite, or `from` - `at` overflows. `result` does not change
/// then.
OSG_BASE_API bool MatrixLookAt(Matrix &result, Pnt3f from, Pnt3f at, Vec3f up);
} // namespace OSG
