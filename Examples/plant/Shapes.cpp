#include "Shapes.h"

#include <cmath>
#include <initializer_list>

#include "OSGGeometryView.h"
#include "OSGTypedGeoProperties.h"

namespace
{
/// Collects polygons with their normals. Every corner is a separate vertex.
class ShapeMaker
{
  public:
    void add(OSG::Vec3f const &normal, std::initializer_list<OSG::Pnt3f> corners)
    {
        for(OSG::Pnt3f const &corner : corners)
            addCorner(normal, corner);
        endPolygon(static_cast<OSG::UInt32>(corners.size()));
    }
    void addCorner(OSG::Vec3f const &normal, OSG::Pnt3f const &corner)
    {
        _positions->editValues().push_back(corner);
        _normals->editValues().push_back(normal);
    }
    void endPolygon(OSG::UInt32 corners)
    {
        _types->push_back(OSG::PolygonPrimitive);
        _lengths->push_back(corners);
    }

    ShapePtr finish()
    {
        ShapePtr shape(OSG::Geometry::create());
        shape->setTypes(_types);
        shape->setLengths(_lengths);
        shape->setPositions(_positions);
        shape->setNormals(_normals);
        return shape;
    }

  private:
    OSG::UnrecordedRefPtr<OSG::GeoUInt8Property> _types{OSG::GeoUInt8Property::create()};
    OSG::UnrecordedRefPtr<OSG::GeoUInt32Property> _lengths{OSG::GeoUInt32Property::create()};
    OSG::UnrecordedRefPtr<OSG::GeoPnt3fProperty> _positions{OSG::GeoPnt3fProperty::create()};
    OSG::UnrecordedRefPtr<OSG::GeoVec3fProperty> _normals{OSG::GeoVec3fProperty::create()};
};

constexpr int Sides = 16;

OSG::Vec3f side_direction(int side)
{
    double const angle = 2 * 3.14159265358979 * side / Sides;
    return OSG::Vec3f(static_cast<float>(std::cos(angle)), 0, static_cast<float>(-std::sin(angle)));
}
} // namespace

ShapePtr make_box(OSG::Pnt3f const &low, OSG::Pnt3f const &high)
{
    float const x0 = low[0];
    float const y0 = low[1];
    float const z0 = low[2];
    float const x1 = high[0];
    float const y1 = high[1];
    float const z1 = high[2];
    ShapeMaker maker;
    maker.add({0, 0, 1}, {{x0, y0, z1}, {x1, y0, z1}, {x1, y1, z1}, {x0, y1, z1}});
    maker.add({0, 0, -1}, {{x1, y0, z0}, {x0, y0, z0}, {x0, y1, z0}, {x1, y1, z0}});
    maker.add({1, 0, 0}, {{x1, y0, z1}, {x1, y0, z0}, {x1, y1, z0}, {x1, y1, z1}});
    maker.add({-1, 0, 0}, {{x0, y0, z0}, {x0, y0, z1}, {x0, y1, z1}, {x0, y1, z0}});
    maker.add({0, 1, 0}, {{x0, y1, z1}, {x1, y1, z1}, {x1, y1, z0}, {x0, y1, z0}});
    maker.add({0, -1, 0}, {{x0, y0, z0}, {x1, y0, z0}, {x1, y0, z1}, {x0, y0, z1}});
    return maker.finish();
}

ShapePtr make_cylinder(float radius, float height)
{
    OSG::Vec3f const up(0, height, 0);
    OSG::Pnt3f const ground(0, 0, 0);
    ShapeMaker maker;
    for(int side = 0; side < Sides; ++side)
    {
        OSG::Vec3f const here = side_direction(side);
        OSG::Vec3f const next = side_direction(side + 1);
        OSG::Pnt3f const from = ground + here * radius;
        OSG::Pnt3f const to = ground + next * radius;
        maker.addCorner(here, from);
        maker.addCorner(next, to);
        maker.addCorner(next, to + up);
        maker.addCorner(here, from + up);
        maker.endPolygon(4);
    }
    for(int side = 0; side < Sides; ++side)
        maker.addCorner({0, 1, 0}, ground + side_direction(side) * radius + up);
    maker.endPolygon(Sides);
    return maker.finish();
}
