#pragma once

/// \file
/// Builders of matrices for cameras.

#include "OSGBaseApi.h"
#include "OSGMatrix.h"

namespace OSG
{
/// Camera to world for a camera at `from` that looks at `at`: the columns are its x, y and z axes
/// and its position, z pointing from `at` towards `from`, y as near to `up` as it can be.
/// Returns true on failure: where `from` and `at` coincide, or `up` has no length or is parallel to
/// the view (each within 1e-6), or a number is none, or `from` - `at` is none that single precision
/// holds. `result` then stays as it was. Any finite length of `up` will do.
OSG_BASE_API bool MatrixLookAt(Matrix &result, Pnt3f from, Pnt3f at, Vec3f up);
} // namespace OSG
