#pragma once

#include "GeometryBuilders.h"
#include "MarkerView.h"
#include "OSGConstSizeTransform.h"

namespace OSG::Test
{
/// A square of two units in the plane z = 0 of a space that keeps its size, whose origin `place`
/// gives.
struct Marker
{
    explicit Marker(Matrix const &place, Real32 distance)
    {
        core->setMatrix(place);
        core->setDistance(distance);
    }

    UnrecordedRefPtr<ConstSizeTransform> core{ConstSizeTransform::create()};
    NodePtr leaf = make_node(make_geometry(
        one_primitive(QuadsPrimitive, {{-1, -1, 0}, {1, -1, 0}, {1, 1, 0}, {-1, 1, 0}})));
    NodePtr node = make_node(core, {leaf});
    NodePtr root = make_group({node});
};
} // namespace OSG::Test
