#pragma once

#include "OSGAttachmentBase.h"

namespace OSG
{
/// Data of any module that hangs on an AttachmentContainer. Attachments of one group (the group of
/// their type) replace each other. An attachment may hang on several containers.
class OSG_SYSTEM_API Attachment : public AttachmentBase
{
  public:
    /// Hangs this on an attachment container.
    bool linkParent(FieldContainer *parent, UInt16 fieldId) override;

  protected:
    Attachment() = default;
    Attachment(Attachment const &) = default;
    ~Attachment() override;

    friend Pattern;
};
} // namespace OSG
