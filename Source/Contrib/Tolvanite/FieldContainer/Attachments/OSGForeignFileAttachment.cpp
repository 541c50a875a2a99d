#include "OSGForeignFileAttachment.h"

namespace OSG
{
ForeignFileAttachment::~ForeignFileAttachment() = default;
} // namespace OSG
