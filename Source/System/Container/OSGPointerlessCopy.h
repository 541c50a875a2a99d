#pragma once

#include "OSGFieldContainer.h"

namespace OSG
{
/// While it lives, `shallowCopy` of one container in the calling thread leaves the pointer fields
/// of the copy empty: who copies what is pointed to as well fills them, and nothing is linked
/// twice.
class OSG_SYSTEM_API PointerlessCopy
{
  public:
    explicit PointerlessCopy(FieldContainer const &source);
    ~PointerlessCopy();
    PointerlessCopy(PointerlessCopy const &) = delete;
    PointerlessCopy &operator=(PointerlessCopy const &) = delete;

    static bool isOf(FieldContainer const *source);

  private:
    FieldContainer const *_outer;
};
} // namespace OSG
