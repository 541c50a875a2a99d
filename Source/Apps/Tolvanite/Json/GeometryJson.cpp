#include "GeometryJson.h"

#include "MaterialJson.h"
#include "OSGGeometry.h"

namespace Tool
{
namespace
{
using OSG::GeoIntegralProperty;
using OSG::Geometry;
using OSG::GeoVectorProperty;

// Writes the integers of a property as an array, which is empty where there is no property.
void write_numbers(JsonWriter &json, GeoIntegralProperty const *property)
{
    OSG::IntegralArray const numbers =
        property != nullptr ? property->getArray() : OSG::IntegralArray();
    json.array(numbers, numbers.size());
}

void write_index(JsonWriter &json, char const *name, GeoIntegralProperty const *index,
                 Arrays arrays)
{
    json.key(name);
    if(index == nullptr)
    {
        json.null();
        return;
    }
    json.beginObject().member("count", index->size());
    if(arrays == Arrays::Written)
    {
        json.key("values");
        write_numbers(json, index);
    }
    json.endObject();
}

void write_vectors(JsonWriter &json, char const *name, GeoVectorProperty const *property,
                   Arrays arrays)
{
    json.key(name);
    if(property == nullptr)
    {
        json.null();
        return;
    }
    json.beginObject().member("count", property->size());
    if(arrays == Arrays::Written)
    {
        OSG::VectorArray const values = property->getArray();
        json.key("values").beginArray();
        for(OSG::UInt32 i = 0; i < values.size(); ++i)
            json.array(values[i], values.dimension());
        json.endArray();
    }
    json.endObject();
}
} // namespace

void write_geometry(JsonWriter &json, Geometry const &geometry, Arrays arrays)
{
    json.key("types");
    write_numbers(json, geometry.getTypes());
    json.key("lengths");
    write_numbers(json, geometry.getLengths());
    write_vectors(json, "positions", geometry.getPositions(), arrays);
    write_vectors(json, "normals", geometry.getNormals(), arrays);
    write_vectors(json, "colors", geometry.getColors(), arrays);
    write_vectors(json, "texCoords", geometry.getTexCoords(), arrays);

    GeoIntegralProperty const *const positions = geometry.getIndex(Geometry::PositionsSlot);
    GeoIntegralProperty const *const normals = geometry.getIndex(Geometry::NormalsSlot);
    GeoIntegralProperty const *const texCoords = geometry.getIndex(Geometry::TexCoordsSlot);
    json.key("indices").beginObject();
    write_index(json, "positions", positions, arrays);
    write_index(json, "normals", normals, arrays);
    write_index(json, "texCoords", texCoords, arrays);
    write_index(json, "colors", geometry.getIndex(Geometry::ColorsSlot), arrays);
    json.endObject();
    bool const shared = positions != nullptr && positions == normals && positions == texCoords;
    json.member("sharedIndex", shared).key("material");
    write_material(json, geometry.getMaterial());
}
} // namespace Tool
