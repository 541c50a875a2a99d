#pragma once

#include "OSGNameBase.h"

namespace OSG
{
class AttachmentContainer;

/// The name of a node, a core or any other attachment container.
class OSG_SYSTEM_API Name : public NameBase
{
  protected:
    Name() = default;
    Name(Name const &) = default;
    ~Name() override;

    friend Pattern;
};

/// Null where `container` is null or has no name. Good until the name changes.
OSG_SYSTEM_API char const *getName(AttachmentContainer const *container);
/// Names `container`; null takes the name away.
OSG_SYSTEM_API void setName(AttachmentContainer *container, char const *name);
OSG_SYSTEM_API void setName(AttachmentContainer *container, std::string const &name);
} // namespace OSG
