#include "OSGPrimitiveIndex.h"

namespace OSG
{
UInt64 PrimitiveIndex::getBytes() const
{
    return sizeof(*this) + _nodes.bytes() + _order.bytes() + _noted.bytes();
}
} // namespace OSG
