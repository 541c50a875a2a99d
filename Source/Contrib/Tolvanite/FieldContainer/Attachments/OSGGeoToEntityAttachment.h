#pragma once

#include "OSGGeoToEntityAttachmentBase.h"

namespace OSG
{
/// Tells which entity of the host's model a stretch of a geometry's indices belongs to.
///
/// `Geo` holds ascending limits and `Ent` as many entities: entry i covers the indices from Geo[i -
/// 1] (0 for the first) up to but not including Geo[i]. Whoever fills the fields keeps it so;
/// nothing is checked, and an unsorted table gives the first entry that happens to be greater.
class OSG_CONTRIBTOLVANITE_API GeoToEntityAttachment : public GeoToEntityAttachmentBase
{
  public:
    /// The entity of an index; 0 where no limit is greater than it, or where the entry found has no
    /// entity. The search is linear: these tables are small.
    UInt64 getEntFromIndex(UInt32 index) const;

  protected:
    GeoToEntityAttachment() = default;
    GeoToEntityAttachment(GeoToEntityAttachment const &) = default;
    ~GeoToEntityAttachment() override;

    friend Pattern;
};
} // namespace OSG
