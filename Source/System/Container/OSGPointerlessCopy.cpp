#include "OSGPointerlessCopy.h"

#include "OSGStaticTls.h"

namespace OSG
{
namespace
{
constinit OSG_STATIC_TLS thread_local FieldContainer const *copied = nullptr;
} // namespace

PointerlessCopy::PointerlessCopy(FieldContainer const &source)
    : _outer(copied)
{
    copied = &source;
}

PointerlessCopy::~PointerlessCopy() { copied = _outer; }

bool PointerlessCopy::isOf(FieldContainer const *source) { return copied == source; }
} // namespace OSG
