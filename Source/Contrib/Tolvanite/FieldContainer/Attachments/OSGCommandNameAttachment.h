#pragma once

#include "OSGCommandNameAttachmentBase.h"

namespace OSG
{
/// The command that the host application receives when the node is picked. The library itself never
/// reads it.
class OSG_CONTRIBTOLVANITE_API CommandNameAttachment : public CommandNameAttachmentBase
{
  protected:
    CommandNameAttachment() = default;
    CommandNameAttachment(CommandNameAttachment const &) = default;
    ~CommandNameAttachment() override;

    friend Pattern;
};
} // namespace OSG
