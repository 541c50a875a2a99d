#include "OSGAttachment.h"

#include "OSGAttachmentContainer.h"

namespace OSG
{
Attachment::~Attachment() = default;

bool Attachment::linkParent(FieldContainer *parent, UInt16 fieldId)
{
    auto *const container = fieldId == AttachmentContainer::AttachmentsFieldId
                                ? dynamic_cast<AttachmentContainer *>(parent)
                                : nullptr;
    if(container == nullptr)
        return false;
    container->addAttachment(this);
    return true;
}
} // namespace OSG
