#include "OSGCommandNameAttachment.h"

namespace OSG
{
CommandNameAttachment::~CommandNameAttachment() = default;

void CommandNameAttachment::changed(BitVector whichField, UInt32 origin, BitVector details)
{
    CommandNameAttachmentBase::changed(whichField, origin, details);
}
} // namespace OSG
