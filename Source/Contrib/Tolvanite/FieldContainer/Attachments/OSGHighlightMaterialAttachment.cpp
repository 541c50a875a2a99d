#include "OSGHighlightMaterialAttachment.h"

namespace OSG
{
HighlightMaterialAttachment::~HighlightMaterialAttachment() = default;
} // namespace OSG
