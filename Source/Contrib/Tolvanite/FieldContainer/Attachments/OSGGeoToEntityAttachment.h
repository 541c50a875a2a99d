#pragma once

#include "OSGGeoToEntityAttachmentBase.h"

namespace OSG
{
/// Maps ranges of a geometry's indices to entities of the host's model.
///
/// `Geo` holds limits in ascending order, and `Ent` holds one entity for each limit. Entry i covers
/// the indices from Geo[i - 1], or 0 for the first entry, up to but not including Geo[i]. The host
/// that fills the fields is responsible for the order; it is not checked. In an unsorted table a
/// search finds the first entry whose limit is greater than the index.
class OSG_CONTRIBTOLVANITE_API GeoToEntityAttachment : public GeoToEntityAttachmentBase
{
  public:
    /// The entity of an index. 0 if no limit is greater than the index, or if `Ent` is too short to
    /// have the entry. The search is linear, because these tables are small.
    UInt64 getEntFromIndex(UInt32 index) const;

  protected:
    GeoToEntityAttachment() = default;
    GeoToEntityAttachment(GeoToEntityAttachment const &) = default;
    ~GeoToEntityAttachment() override;

    friend Pattern;
};
} // namespace OSG
