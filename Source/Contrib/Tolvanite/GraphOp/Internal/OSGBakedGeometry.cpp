#include "OSGBakedGeometry.h"

#include "OSGDeepClone.h"
#include "OSGMaterial.h"
#include "OSGTypedGeoProperties.h"

namespace OSG
{
namespace
{
using PointArray = TypedGeoVectorProperty<GeoPnt3fPropertyDesc>;
using VectorArray3 = TypedGeoVectorProperty<GeoVec3fPropertyDesc>;
using ColorArray = TypedGeoVectorProperty<GeoColor3fPropertyDesc>;

// Calls `visitPoints` or `visitVectors` with the values of each array that a move changes.
template <class VisitPoints, class VisitVectors>
void visit_arrays(Geometry &geometry, VectorArrays const &vectors, VisitPoints visitPoints,
                  VisitVectors visitVectors)
{
    if(auto *const points = dynamic_cast<PointArray *>(geometry.getPositions()))
        visitPoints(points->editValues());
    if(auto *const normals = dynamic_cast<VectorArray3 *>(geometry.getNormals()))
        visitVectors(normals->editValues());
    auto *const colors = dynamic_cast<ColorArray *>(geometry.getColors());
    if(vectors.colors && colors != nullptr)
        visitVectors(colors->editValues());
    auto *const secondary = dynamic_cast<ColorArray *>(geometry.getSecondaryColors());
    if(vectors.secondaryColors && secondary != nullptr)
        visitVectors(secondary->editValues());
    for(UInt16 unit = 0; unit < 4; ++unit)
    {
        auto *const texCoords =
            dynamic_cast<VectorArray3 *>(geometry.getProperty(Geometry::TexCoordsSlot + unit));
        if(vectors.texCoords[unit] && texCoords != nullptr)
            visitVectors(texCoords->editValues());
    }
}
} // namespace

TransitPtr<Geometry> baked_geometry(Geometry const &geometry, Matrix const &matrix,
                                    VectorArrays const &vectors)
{
    // Given by type, because a name would be looked up among all types for each geometry.
    ContainerTypeList const shared{&Material::getClassType()};
    TransitPtr<Geometry> baked = dynamic_transit_cast<Geometry>(deepClone(&geometry, shared));
    bake_in_place(*baked, matrix, vectors);
    return baked;
}

void open_arrays_to_bake(Geometry &geometry, VectorArrays const &vectors)
{
    auto const open = [](auto &) {};
    visit_arrays(geometry, vectors, open, open);
}

void bake_in_place(Geometry &geometry, Matrix const &matrix, VectorArrays const &vectors)
{
    auto const move = [&matrix](auto &points)
    {
        for(Pnt3f &point : points)
            matrix.multFull(point, point);
    };
    auto const turn = [&matrix](auto &values)
    {
        for(auto &value : values)
        {
            Vec3f vector = matrix * Vec3f(value[0], value[1], value[2]);
            vector.normalize();
            for(UInt32 i = 0; i < 3; ++i)
                value[i] = vector[i];
        }
    };
    visit_arrays(geometry, vectors, move, turn);
}
} // namespace OSG
