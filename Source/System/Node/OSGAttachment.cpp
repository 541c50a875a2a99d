#include "OSGAttachment.h"

namespace OSG
{
Attachment::~Attachment() = default;
} // namespace OSG
