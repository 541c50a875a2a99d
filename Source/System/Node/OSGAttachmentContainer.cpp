#include "OSGAttachmentContainer.h"

#include <cstring>

#include "OSGName.h"

namespace OSG
{
AttachmentContainer::~AttachmentContainer() = default;

namespace
{
// Attachments that no group is named for are told apart by their classes.
bool replace_each_other(Attachment const &one, Attachment const &other)
{
    constexpr UInt32 NoGroup = 0;
    return one.getGroupId() == other.getGroupId() &&
           (one.getGroupId() != NoGroup || one.getType() == other.getType());
}
} // namespace

void AttachmentContainer::addAttachment(Attachment *attachment)
{
    if(attachment == nullptr)
        return;
    markEdited(AttachmentsFieldMask);
    for(UInt32 i = 0; i < _mfAttachments.size(); ++i)
    {
        if(_mfAttachments[i] != nullptr && replace_each_other(*_mfAttachments[i], *attachment))
        {
            _mfAttachments.replace(i, attachment);
            return;
        }
    }
    _mfAttachments.push_back(attachment);
}

bool AttachmentContainer::subAttachment(Attachment *attachment)
{
    return attachment != nullptr && unlinkChild(attachment, AttachmentsFieldId);
}

bool AttachmentContainer::unlinkChild(FieldContainer *child, UInt16 fieldId)
{
    Int32 const index = fieldId == AttachmentsFieldId ? _mfAttachments.findIndex(child) : -1;
    if(index < 0)
        return AttachmentContainerBase::unlinkChild(child, fieldId);
    markEdited(AttachmentsFieldMask);
    _mfAttachments.erase(static_cast<UInt32>(index));
    return true;
}

Attachment *AttachmentContainer::findAttachment(UInt32 groupId) const
{
    for(Attachment *attachment : _mfAttachments)
    {
        if(attachment != nullptr && attachment->getGroupId() == groupId)
            return attachment;
    }
    return nullptr;
}

FieldContainer *AttachmentContainer::findNamedComponent(char const *name)
{
    char const *const own = OSG::getName(this);
    return own != nullptr && name != nullptr && std::strcmp(own, name) == 0 ? this : nullptr;
}
} // namespace OSG
