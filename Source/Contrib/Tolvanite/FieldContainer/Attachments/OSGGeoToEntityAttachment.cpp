#include "OSGGeoToEntityAttachment.h"

#include <algorithm>

namespace OSG
{
GeoToEntityAttachment::~GeoToEntityAttachment() = default;

UInt64 GeoToEntityAttachment::getEntFromIndex(UInt32 index) const
{
    MField<UInt64> const &limits = getGeo();
    auto const above =
        std::find_if(limits.begin(), limits.end(), [index](UInt64 limit) { return limit > index; });
    auto const entry = static_cast<std::size_t>(above - limits.begin());
    return above != limits.end() && entry < getEnt().size() ? getEnt()[entry] : 0;
}
} // namespace OSG
