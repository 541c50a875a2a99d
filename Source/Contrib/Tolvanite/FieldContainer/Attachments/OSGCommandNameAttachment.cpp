#include "OSGCommandNameAttachment.h"

namespace OSG
{
CommandNameAttachment::~CommandNameAttachment() = default;
} // namespace OSG
