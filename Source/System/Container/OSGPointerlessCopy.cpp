#include "OSGPointerlessCopy.h"

namespace OSG
{
namespace
{
thread_local FieldContainer const *Copied = nullptr;
} // namespace

PointerlessCopy::PointerlessCopy(FieldContainer const &source)
    : _outer(Copied)
{
    Copied = &source;
}

PointerlessCopy::~PointerlessCopy() { Copied = _outer; }

bool PointerlessCopy::isOf(FieldContainer const *source) { return Copied == source; }
} // namespace OSG
