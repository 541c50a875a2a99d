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

void move_points(GeoVectorProperty *property, Matrix const &matrix)
{
    auto *const points = dynamic_cast<PointArray *>(property);
    if(points == nullptr)
        return;
    for(Pnt3f &point : points->editValues())
        matrix.multFull(point, point);
}

template <class Array>
void turn_vectors(GeoVectorProperty *property, Matrix const &matrix)
{
    auto *const array = dynamic_cast<Array *>(property);
    if(array == nullptr)
        return;
    for(auto &value : array->editValues())
    {
        Vec3f vector = matrix * Vec3f(value[0], value[1], value[2]);
        vector.normalize();
        for(UInt32 i = 0; i < 3; ++i)
            value[i] = vector[i];
    }
}
} // namespace

TransitPtr<Geometry> baked_geometry(Geometry const &geometry, Matrix const &matrix,
                                    VectorArrays const &vectors)
{
    // By type: a name would be looked up among all types for each geometry.
    ContainerTypeList const shared{&Material::getClassType()};
    TransitPtr<Geometry> baked = dynamic_transit_cast<Geometry>(deepClone(&geometry, shared));
    move_points(baked->getPositions(), matrix);
    turn_vectors<VectorArray3>(baked->getNormals(), matrix);
    if(vectors.colors)
        turn_vectors<ColorArray>(baked->getColors(), matrix);
    if(vectors.secondaryColors)
        turn_vectors<ColorArray>(baked->getSecondaryColors(), matrix);
    for(UInt16 unit = 0; unit < 4; ++unit)
    {
        if(vectors.texCoords[unit])
            turn_vectors<VectorArray3>(baked->getProperty(Geometry::TexCoordsSlot + unit), matrix);
    }
    return baked;
}
} // namespace OSG
