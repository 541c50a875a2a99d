#pragma once

/// \file
/// Four floats in a vector register that every machine has.

#if defined(__SSE__)
#include <xmmintrin.h>
#endif

#include "OSGBaseTypes.h"

namespace OSG
{
using FourReal32 = Real32 __attribute__((vector_size(16)));
/// What comparisons of FourReal32 give: all bits of a lane are set where its comparison is true.
using FourMask = Int32 __attribute__((vector_size(16)));

/// Bit i is set where lane i of the mask is.
inline UInt32 lane_bits(FourMask const &mask)
{
#if defined(__SSE__)
    return static_cast<UInt32>(_mm_movemask_ps(reinterpret_cast<__m128 const &>(mask)));
#else
    return (mask[0] & 1u) | (mask[1] & 2u) | (mask[2] & 4u) | (mask[3] & 8u);
#endif
}
} // namespace OSG
