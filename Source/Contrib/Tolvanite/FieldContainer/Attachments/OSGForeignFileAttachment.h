#pragma once

#include "OSGForeignFileAttachmentBase.h"

namespace OSG
{
/// Tells where an imported prototype node comes from. Two texts hold the node's handle in the
/// host's repository and the name of the imported file. A prototype and its clones share one
/// attachment. The library never opens the file, which need not exist.
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
