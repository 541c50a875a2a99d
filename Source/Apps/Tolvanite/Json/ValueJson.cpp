#include "ValueJson.h"

#include "OSGName.h"

namespace Tool
{
void writeBounds(JsonWriter &json, OSG::BoxVolume const &bounds)
{
    if(bounds.isEmpty() || bounds.isInfinite())
    {
        json.null();
        return;
    }
    json.beginObject();
    writeTuple(json, "min", bounds.getMin(), 3);
    writeTuple(json, "max", bounds.getMax(), 3);
    json.endObject();
}

void writeMatrix(JsonWriter &json, OSG::Matrix const &matrix)
{
    json.beginArray();
    for(int column = 0; column < 4; ++column)
    {
        for(int row = 0; row < 4; ++row)
            json.value(matrix[column][row]);
    }
    json.endArray();
}

void writeName(JsonWriter &json, OSG::AttachmentContainer const *container)
{
    char const *const name = OSG::getName(container);
    if(name != nullptr)
        json.value(name);
    else
        json.null();
}
} // namespace Tool
