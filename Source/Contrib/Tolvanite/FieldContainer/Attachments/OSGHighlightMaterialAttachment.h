#pragma once

#include "OSGHighlightMaterialAttachmentBase.h"

namespace OSG
{
/// Keeps the material that a material group had before it was highlighted. A host attaches it when
/// it highlights the group and takes it off when it restores the material. The field holds
/// an unrecorded reference; null is allowed.
class OSG_CONTRIBTOLVANITE_API HighlightMaterialAttachment : public HighlightMaterialAttachmentBase
{
  protected:
    HighlightMaterialAttachment() = default;
    HighlightMaterialAttachment(HighlightMaterialAttachment const &) = default;
    ~HighlightMaterialAttachment() override;

    friend Pattern;
};
} // namespace OSG
