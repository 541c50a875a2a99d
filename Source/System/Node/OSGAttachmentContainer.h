#pragma once

#include "OSGAttachmentContainerBase.h"

namespace OSG
{
class OSG_SYSTEM_API AttachmentContainer : public AttachmentContainerBase
{
  public:
    /// Hangs `attachment` on this container, counted; one of the same group is replaced, in the
    /// group "NULL" one of the same class. Null does nothing.
    void addAttachment(Attachment *attachment);
    /// Takes it off; false where it does not hang here.
    bool subAttachment(Attachment *attachment);
    /// The attachment of that group, null where there is none.
    Attachment *findAttachment(UInt32 groupId) const;

    /// This container, where its name attachment has that name.
    FieldContainer *findNamedComponent(char const *name) override;
    bool unlinkChild(FieldContainer *child, UInt16 fieldId) override;

  protected:
    AttachmentContainer() = default;
    AttachmentContainer(AttachmentContainer const &) = default;
    ~AttachmentContainer() override;

    friend Pattern;
};
} // namespace OSG

// An attachment is a container of attachments itself: its header needs this one first.
#include "OSGAttachment.h" // IWYU pragma: export
