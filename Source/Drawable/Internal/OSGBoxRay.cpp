// Highway includes this source once for each instruction set.
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "OSGBoxRay.cpp"
#include <hwy/foreach_target.h>
// Behind foreach_target.h: it is read for each set.
#include "OSGBoxLanes-inl.h"

#include "OSGBoxRay.h"

#include <algorithm>
#include <cmath>

HWY_BEFORE_NAMESPACE();
namespace OSG::HWY_NAMESPACE
{
namespace
{
void cast_at_boxes_in_lanes(BoxNode const &node, BoxRay const &ray, Real32 limit,
                            BoxRayTimes &times)
{
    Lanes const lanes;
    times.missed = 0;
    for(std::size_t lane = 0; lane < BoxNode::Width; lane += hn::Lanes(lanes))
    {
        auto enter = hn::Zero(lanes);
        auto exit = hn::Set(lanes, limit);
        auto outside = hn::Gt(enter, exit);
        for(UInt32 axis = 0; axis < 3; ++axis)
        {
            auto const position = hn::Set(lanes, ray.position[axis]);
            auto const toEntry =
                hn::Sub(hn::LoadU(lanes, node.bound[ray.entry[axis]] + lane), position);
            auto const toExit =
                hn::Sub(hn::LoadU(lanes, node.bound[ray.exit[axis]] + lane), position);
            if(ray.isAcross[axis])
            {
                outside = hn::Or(outside, hn::Or(hn::Gt(toEntry, hn::Set(lanes, ray.room)),
                                                 hn::Lt(toExit, hn::Set(lanes, -ray.room))));
                continue;
            }
            auto const inverse = hn::Set(lanes, ray.inverse[axis]);
            auto const widening = hn::Set(lanes, ray.widening[axis]);
            enter = hn::Max(enter, hn::Sub(hn::Mul(toEntry, inverse), widening));
            exit = hn::Min(exit, hn::Add(hn::Mul(toExit, inverse), widening));
        }
        times.missed |= bits_of(hn::Or(outside, hn::Gt(enter, exit))) << lane;
        hn::StoreU(enter, lanes, times.enter + lane);
    }
}
} // namespace
} // namespace OSG::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace OSG
{
HWY_EXPORT(cast_at_boxes_in_lanes);

void cast_at_boxes(BoxNode const &node, BoxRay const &ray, Real32 limit, BoxRayTimes &times)
{
    HWY_DYNAMIC_DISPATCH(cast_at_boxes_in_lanes)(node, ray, limit, times);
}

void cast_at_boxes_slowly(BoxNode const &node, BoxRay const &ray, Real32 limit, BoxRayTimes &times)
{
    times.missed = 0;
    for(UInt32 box = 0; box < BoxNode::Width; ++box)
    {
        Real32 enter = 0.f;
        Real32 exit = limit;
        bool isOutside = false;
        for(UInt32 axis = 0; axis < 3; ++axis)
        {
            Real32 const toEntry = node.bound[ray.entry[axis]][box] - ray.position[axis];
            Real32 const toExit = node.bound[ray.exit[axis]][box] - ray.position[axis];
            if(ray.isAcross[axis])
            {
                isOutside = isOutside || toEntry > ray.room || toExit < -ray.room;
                continue;
            }
            enter = std::max(enter, toEntry * ray.inverse[axis] - ray.widening[axis]);
            exit = std::min(exit, toExit * ray.inverse[axis] + ray.widening[axis]);
        }
        times.missed |= UInt32(isOutside || enter > exit) << box;
        times.enter[box] = enter;
    }
}

// A direction below 2^-60 would make distances that no number holds. Over the length of a tame
// geometry such a ray moves along the axis by much less than the room.
void BoxRay::set(Line const &ray, Real32 growth)
{
    room = growth;
    for(UInt8 axis = 0; axis < 3; ++axis)
    {
        Real32 const direction = ray.getDirection()[axis];
        position[axis] = ray.getPosition()[axis];
        isAcross[axis] = std::abs(direction) < 0x1p-60f;
        inverse[axis] = isAcross[axis] ? 0.f : 1.f / direction;
        widening[axis] = growth * std::abs(inverse[axis]);
        bool const isForwards = isAcross[axis] || direction > 0.f;
        entry[axis] = static_cast<UInt8>(isForwards ? axis : axis + 3);
        exit[axis] = static_cast<UInt8>(isForwards ? axis + 3 : axis);
    }
}
} // namespace OSG
#endif
