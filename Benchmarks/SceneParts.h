#pragma once

/// \file
/// What the scenes of benchmarks are made of.

#include <array>
#include <vector>

#include "OSGGeometry.h"
#include "OSGGroup.h"
#include "OSGNode.h"
#include "OSGTypedGeoProperties.h"

namespace OSG::Bench
{
using NodePtr = UnrecordedRefPtr<Node>;
using Positions = std::vector<Pnt3f>;
using Index = std::vector<UInt32>;

/// A property with these values.
template <class Property>
UnrecordedRefPtr<Property> property_of(auto const &values)
{
    UnrecordedRefPtr<Property> property(Property::create());
    property->editValues().assign(values.begin(), values.end());
    return property;
}

inline NodePtr node_of(NodeCore *core)
{
    NodePtr node(Node::create());
    node->setCore(core);
    return node;
}

inline NodePtr group() { return node_of(UnrecordedRefPtr<Group>(Group::create())); }

/// A geometry of triangles with one index.
inline NodePtr shape(Positions const &positions, Index const &index)
{
    UnrecordedRefPtr<Geometry> const geometry(Geometry::create());
    geometry->setTypes(property_of<GeoUInt8Property>(std::array<UInt8, 1>{4}));
    geometry->setLengths(
        property_of<GeoUInt32Property>(std::array{static_cast<UInt32>(index.size())}));
    geometry->setPositions(property_of<GeoPnt3fProperty>(positions));
    geometry->setIndex(property_of<GeoUInt32Property>(index), Geometry::PositionsSlot);
    return node_of(geometry);
}
} // namespace OSG::Bench
