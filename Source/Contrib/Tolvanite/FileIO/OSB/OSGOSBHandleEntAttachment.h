#pragma once

#include <string>

#include "OSGContribTolvaniteApi.h"
#include "OSGFields.h"
#include "OSGOSBCommonElement.h"

namespace OSG
{
/// Reads records of the older type name "GeoToEntAttachment" into a GeoToEntityAttachment.
///
/// There "Geo" and "Ent" are a 32-bit count and as many 32-bit numbers, which are widened to the 64
/// bits of today's fields, whatever type and size the field's header tells. Two fields of one name
/// are joined. Writing uses the layout of all containers, with 64-bit numbers: what it writes with
/// values cannot be read back by it. Today's attachments are stored under their own type name and
/// do not come to this element.
class OSG_CONTRIBTOLVANITE_API OSBHandleEntAttachment : public OSBCommonElement
{
  public:
    explicit OSBHandleEntAttachment(OSBRootElement *root);
    ~OSBHandleEntAttachment() override;

    /// Raises the handler's ReadError on a short stream.
    void read(std::string const &typeName) override;
    void postRead() override;
    void preWrite(FieldContainer *container) override;
    /// Writes nothing, with a warning, where there is no container.
    void write() override;

  private:
    void appendWidened(MField<UInt64> &values);
};
} // namespace OSG
