#pragma once

/// \file
/// Geometries for tests from plain lists.

#include <vector>

#include "OSGGeometry.h"
#include "OSGGeometryView.h"
#include "OSGTypedGeoProperties.h"

namespace OSG::Test
{
using GeometryPtr = UnrecordedRefPtr<Geometry>;

/// What a geometry is made of. An empty index leaves its slot without one.
struct GeometryParts
{
    std::vector<UInt32> types;
    std::vector<UInt32> lengths;
    std::vector<Pnt3f> positions;
    std::vector<Vec3f> normals = {};
    std::vector<UInt32> index = {}; ///< of the positions
    std::vector<UInt32> normalIndex = {};
};

template <class Property, class Values>
UnrecordedRefPtr<Property> make_property(Values const &values)
{
    UnrecordedRefPtr<Property> property(Property::create());
    for(auto const &value : values)
        property->editValues().push_back(static_cast<typename Property::Element>(value));
    return property;
}

inline GeometryPtr make_geometry(GeometryParts const &parts)
{
    GeometryPtr geometry(Geometry::create());
    geometry->setTypes(make_property<GeoUInt8Property>(parts.types));
    geometry->setLengths(make_property<GeoUInt32Property>(parts.lengths));
    geometry->setPositions(make_property<GeoPnt3fProperty>(parts.positions));
    if(!parts.normals.empty())
        geometry->setNormals(make_property<GeoVec3fProperty>(parts.normals));
    if(!parts.index.empty())
        geometry->setIndex(make_property<GeoUInt32Property>(parts.index), Geometry::PositionsSlot);
    if(!parts.normalIndex.empty())
        geometry->setIndex(make_property<GeoUInt32Property>(parts.normalIndex),
                           Geometry::NormalsSlot);
    return geometry;
}

/// One primitive over all positions.
inline GeometryParts one_primitive(PrimitiveType type, std::vector<Pnt3f> positions,
                                   std::vector<Vec3f> normals = {})
{
    UInt32 const length = static_cast<UInt32>(positions.size());
    return {{type}, {length}, std::move(positions), std::move(normals)};
}
} // namespace OSG::Test
