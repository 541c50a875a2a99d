// Highway includes this source once for each instruction set.
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "OSGBoxNode.cpp"
#include <hwy/foreach_target.h>
// Behind foreach_target.h: it is read for each set.
#include "OSGBoxLanes-inl.h"

#include "OSGBoxNode.h"

HWY_BEFORE_NAMESPACE();
namespace OSG::HWY_NAMESPACE
{
namespace
{
/// The distance of eight corners from a plane; `rows` names the bounds that make up the corners.
HWY_INLINE hn::Vec<Lanes> corner_distance(BoxNode const &node, BoxPlanes::Entry const &plane,
                                          UInt8 const *rows, std::size_t lane)
{
    Lanes const lanes;
    auto const x = hn::LoadU(lanes, node.bound[rows[0]] + lane);
    auto const y = hn::LoadU(lanes, node.bound[rows[1]] + lane);
    auto const z = hn::LoadU(lanes, node.bound[rows[2]] + lane);
    auto const xy = hn::Add(hn::Mul(hn::Set(lanes, plane.normal[0]), x),
                            hn::Mul(hn::Set(lanes, plane.normal[1]), y));
    auto const xyz = hn::Add(xy, hn::Mul(hn::Set(lanes, plane.normal[2]), z));
    return hn::Sub(xyz, hn::Set(lanes, plane.distance));
}

void grade_boxes_in_lanes(BoxNode const &node, BoxPlanes const &planes, UInt32 mask,
                          BoxGrades &grades)
{
    Lanes const lanes;
    hn::RebindToUnsigned<Lanes> const words;
    auto const zero = hn::Zero(lanes);
    grades.outside = 0;
    for(std::size_t lane = 0; lane < BoxNode::Width; lane += hn::Lanes(lanes))
    {
        auto outside = hn::Lt(zero, zero);
        auto crossed = hn::Zero(words);
        for(UInt32 rest = mask; rest != 0; rest &= rest - 1)
        {
            UInt32 const k = static_cast<UInt32>(hwy::Num0BitsBelowLS1Bit_Nonzero32(rest));
            BoxPlanes::Entry const &plane = planes.planes[k];
            auto const low = corner_distance(node, plane, plane.low, lane);
            auto const high = corner_distance(node, plane, plane.high, lane);
            auto const crosses = hn::RebindMask(words, hn::Lt(low, hn::Set(lanes, plane.margin)));
            crossed = hn::Or(crossed, hn::IfThenElseZero(crosses, hn::Set(words, 1u << k)));
            outside = hn::Or(outside, hn::Lt(high, zero));
        }
        grades.outside |= bits_of(outside) << lane;
        hn::StoreU(crossed, words, grades.crossed + lane);
        BoxPlanes::Entry const &reference = planes.planes[6];
        hn::StoreU(corner_distance(node, reference, reference.low, lane), lanes,
                   grades.nearest + lane);
        hn::StoreU(corner_distance(node, reference, reference.high, lane), lanes,
                   grades.farthest + lane);
    }
}
} // namespace
} // namespace OSG::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace OSG
{
HWY_EXPORT(grade_boxes_in_lanes);

void grade_boxes(BoxNode const &node, BoxPlanes const &planes, UInt32 mask, BoxGrades &grades)
{
    HWY_DYNAMIC_DISPATCH(grade_boxes_in_lanes)(node, planes, mask, grades);
}

void grade_boxes_slowly(BoxNode const &node, BoxPlanes const &planes, UInt32 mask,
                        BoxGrades &grades)
{
    grades = {};
    for(UInt32 box = 0; box < BoxNode::Width; ++box)
    {
        auto const distance = [&node, box](BoxPlanes::Entry const &plane, UInt8 const *rows)
        {
            return plane.normal[0] * node.bound[rows[0]][box] +
                   plane.normal[1] * node.bound[rows[1]][box] +
                   plane.normal[2] * node.bound[rows[2]][box] - plane.distance;
        };
        for(UInt32 k = 0; k < 6; ++k)
        {
            BoxPlanes::Entry const &plane = planes.planes[k];
            if((mask >> k & 1u) == 0)
                continue;
            grades.crossed[box] |= UInt32(distance(plane, plane.low) < plane.margin) << k;
            grades.outside |= UInt32(distance(plane, plane.high) < 0.f) << box;
        }
        BoxPlanes::Entry const &reference = planes.planes[6];
        grades.nearest[box] = distance(reference, reference.low);
        grades.farthest[box] = distance(reference, reference.high);
    }
}
} // namespace OSG
#endif
