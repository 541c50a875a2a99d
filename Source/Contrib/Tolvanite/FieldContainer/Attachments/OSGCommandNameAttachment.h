#pragma once

#include "OSGCommandNameAttachmentBase.h"

namespace OSG
{
/// Holds the name of the command that a host application runs when a user picks the node. The
/// library never reads it.
class OSG_CONTRIBTOLVANITE_API CommandNameAttachment : public CommandNameAttachmentBase
{
  protected:
    CommandNameAttachment() = default;
    CommandNameAttachment(CommandNameAttachment const &) = default;
    ~CommandNameAttachment() override;

    friend Pattern;
};
} // namespace OSG
