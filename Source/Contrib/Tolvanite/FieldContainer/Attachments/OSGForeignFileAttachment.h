#pragma once

#include "OSGForeignFileAttachmentBase.h"

namespace OSG
{
/// Where an imported prototype node came from: the handle in the host's repository and the file, as
/// text. A prototype and its clones share one attachment. The file is never opened and need not
/// exist.
class OSG_CONTRIBTOLVANITE_API ForeignFileAttachment : public ForeignFileAttachmentBase
{
  public:
    static constexpr bool IsSharedByClones = true;

  protected:
    ForeignFileAttachment() = default;
    ForeignFileAttachment(ForeignFileAttachment const &) = default;
    ~ForeignFileAttachment() override;

    friend Pattern;
};
} // namespace OSG
