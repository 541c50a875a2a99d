#pragma once

#include "OSGGeometry.h"
#include "OSGRefCountPtr.h"

using ShapePtr = OSG::UnrecordedRefPtr<OSG::Geometry>;

/// The axis-aligned box between two corners.
ShapePtr make_box(OSG::Pnt3f const &low, OSG::Pnt3f const &high);

/// An upright cylinder with a lid, whose base is around the origin.
ShapePtr make_cylinder(float radius, float height);
