#pragma once

#include <string>

#include "OSGContribTolvaniteApi.h"
#include "OSGFields.h"
#include "OSGOSBCommonElement.h"

namespace OSG
{
/// Reads records of the older type name "GeoToEntAttachment" into a GeoToEntityAttachment.
///
/// In such records the fields "Geo" and "Ent" hold a 32-bit count and as many 32-bit numbers,
/// whatever type and size the field's header has. The numbers are widened to the 64 bits of the
/// attachment's fields. Two fields of the same name are joined. Writing uses the layout of all
/// containers, with 64-bit numbers, which this element cannot read back. Attachments of today are
/// stored under their own type name and do not use this element.
class OSG_CONTRIBTOLVANITE_API OSBHandleEntAttachment : public OSBCommonElement
{
  public:
    explicit OSBHandleEntAttachment(OSBRootElement *root);
    ~OSBHandleEntAttachment() override;

    /// Raises the handler's ReadError on a short stream.
    void read(std::string const &typeName) override;
    void postRead() override;
    void preWrite(FieldContainer *container) override;
    /// Writes nothing and logs a warning where there is no container.
    void write() override;

  private:
    void appendWidened(MField<UInt64> &values);
};
} // namespace OSG
