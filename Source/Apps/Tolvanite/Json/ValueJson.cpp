#include "ValueJson.h"

#include "OSGName.h"

namespace Tool
{
void write_bounds(JsonWriter &json, OSG::BoxVolume const &bounds)
{
    if(bounds.isEmpty() || bounds.isInfinite())
    {
        json.null();
        return;
    }
    json.beginObject();
    write_tuple(json, "min", bounds.getMin(), 3);
    write_tuple(json, "max", bounds.getMax(), 3);
    json.endObject();
}

void write_matrix(JsonWriter &json, OSG::Matrix const &matrix)
{
    json.beginArray();
    for(int column = 0; column < 4; ++column)
    {
        for(int row = 0; row < 4; ++row)
            json.value(matrix[column][row]);
    }
    json.endArray();
}

void write_name(JsonWriter &json, OSG::AttachmentContainer const *container)
{
    char const *const name = OSG::getName(container);
    if(name != nullptr)
        json.value(name);
    else
        json.null();
}
} // namespace Tool
