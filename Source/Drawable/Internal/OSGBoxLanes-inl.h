/// \file
/// What the tests of the boxes of a BoxNode share, for each of Highway's instruction sets.
///
/// A source includes it behind hwy/foreach_target.h, so it is read once for each set.

#if defined(OSG_BOX_LANES_INL_H) == defined(HWY_TARGET_TOGGLE)
#ifdef OSG_BOX_LANES_INL_H
#undef OSG_BOX_LANES_INL_H
#else
#define OSG_BOX_LANES_INL_H
#endif

#include <hwy/highway.h>

#include "OSGBoxNode.h"

HWY_BEFORE_NAMESPACE();
namespace OSG::HWY_NAMESPACE
{
namespace
{
namespace hn = hwy::HWY_NAMESPACE;

/// As many of the eight boxes as a register holds.
using Lanes = hn::CappedTag<Real32, BoxNode::Width>;

HWY_INLINE UInt32 bits_of(hn::Mask<Lanes> mask)
{
    Lanes const lanes;
    UInt8 bits[8] = {};
    hn::StoreMaskBits(lanes, mask, bits);
    return bits[0];
}
} // namespace
} // namespace OSG::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();
#endif
