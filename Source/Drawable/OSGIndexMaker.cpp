#include "OSGIndexMaker.h"

#include <utility>

namespace OSG
{
GeoUInt32Ptr make_index(MField<UInt32> &&entries)
{
    GeoUInt32Ptr index(GeoUInt32Property::create());
    index->editValues() = std::move(entries);
    return index;
}
} // namespace OSG
