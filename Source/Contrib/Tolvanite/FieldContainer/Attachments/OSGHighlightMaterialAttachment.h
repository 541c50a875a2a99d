#pragma once

#include "OSGHighlightMaterialAttachmentBase.h"

namespace OSG
{
/// The material that a material group had before it was highlighted, kept for as long as the
/// highlight is on. Counted, unrecorded; null is allowed.
class OSG_CONTRIBTOLVANITE_API HighlightMaterialAttachment : public HighlightMaterialAttachmentBase
{
  protected:
    HighlightMaterialAttachment() = default;
    HighlightMaterialAttachment(HighlightMaterialAttachment const &) = default;
    ~HighlightMaterialAttachment() override;

    friend Pattern;
};
} // namespace OSG
