#pragma once

#include "OSGGeometry.h"
#include "OSGRefCountPtr.h"

using ShapePtr = OSG::UnrecordedRefPtr<OSG::Geometry>;

/// The box between two corners.
ShapePtr make_box(OSG::Pnt3f const &low, OSG::Pnt3f const &high);

/// An upright cylinder on the ground at the origin, with a lid.
ShapePtr make_cylinder(float radius, float height);
