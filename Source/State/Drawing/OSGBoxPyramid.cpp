#include "OSGBoxPyramid.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <limits>

namespace OSG
{
namespace
{
constexpr Real32 Infinity = std::numeric_limits<Real32>::infinity();
constexpr UInt32 Lanes = BoxLanes::Lanes;

UInt32 blocks_for(UInt32 count) { return (count + Lanes - 1) / Lanes; }

// A box without points: no plane has it inside, any comparison with it is made on infinities. It is
// left out by its lane's test for being empty, see lanes_in_use().
BoxLanes empty_block()
{
    BoxLanes block;
    for(int axis = 0; axis < 3; ++axis)
    {
        std::fill_n(block.min[axis], Lanes, Infinity);
        std::fill_n(block.max[axis], Lanes, -Infinity);
    }
    return block;
}

// Bits of the lanes whose box is not empty.
UInt32 lanes_in_use(BoxLanes const &block)
{
    UInt32 bits = 0;
    for(UInt32 quad = 0; quad < BoxLanes::Quads; ++quad)
        bits |= lane_bits(block.minOf(0, quad) <= block.maxOf(0, quad)) << 4 * quad;
    return bits;
}

struct Bits
{
    UInt32 seen;
    UInt32 inside;
};

Bits test_block(ViewPlanes const &planes, BoxLanes const &block)
{
    Bits bits{0, 0};
    for(UInt32 quad = 0; quad < BoxLanes::Quads; ++quad)
    {
        FourMask missed;
        FourMask inside;
        planes.test(block, quad, missed, inside);
        bits.seen |= lane_bits(~missed) << 4 * quad;
        bits.inside |= lane_bits(inside) << 4 * quad;
    }
    bits.seen &= lanes_in_use(block);
    return bits;
}

void set_bits(std::vector<UInt64> &bits, UInt32 first, UInt64 values)
{
    bits[first / 64] |= values << first % 64; // blocks do not straddle words
}
} // namespace

void BoxPyramid::resize(UInt32 count)
{
    _size = count;
    std::size_t level = 0;
    for(UInt32 n = blocks_for(count);; n = blocks_for(n), ++level)
    {
        if(level == _levels.size())
            _levels.emplace_back();
        _levels[level].resize(n, empty_block());
        if(n <= 1)
            break;
    }
    _levels.resize(level + 1);
}

void BoxPyramid::set(UInt32 number, BoxVolume const &box)
{
    BoxLanes &block = _levels[0][number / Lanes];
    UInt32 const lane = number % Lanes;
    bool const isAll = box.isInfinite() || !box.isValid();
    for(int axis = 0; axis < 3; ++axis)
    {
        Real32 min = isAll ? -Infinity : box.isEmpty() ? Infinity : box.getMin()[axis];
        Real32 max = isAll ? Infinity : box.isEmpty() ? -Infinity : box.getMax()[axis];
        if(std::isnan(min) || std::isnan(max))
        {
            min = -Infinity;
            max = Infinity;
        }
        block.min[axis][lane] = min;
        block.max[axis][lane] = max;
        for(Real32 const bound : {min, max})
        {
            if(std::isfinite(bound))
                _reach = std::max(_reach, std::abs(bound));
        }
    }
}

void BoxPyramid::update(UInt32 first, UInt32 end)
{
    for(std::size_t level = 0; level + 1 < _levels.size() && first < end; ++level)
    {
        first /= Lanes;
        end = blocks_for(end);
        for(UInt32 i = first; i < end; ++i)
        {
            BoxLanes const &block = _levels[level][i];
            BoxLanes &above = _levels[level + 1][i / Lanes];
            for(int axis = 0; axis < 3; ++axis)
            {
                above.min[axis][i % Lanes] =
                    *std::min_element(block.min[axis], block.min[axis] + Lanes);
                above.max[axis][i % Lanes] =
                    *std::max_element(block.max[axis], block.max[axis] + Lanes);
            }
        }
    }
}

void BoxPyramid::findSeen(ViewPlanes const &planes, std::vector<UInt64> &bits) const
{
    bits.assign((_size + 63) / 64, 0);
    if(_size != 0)
        findSeen(planes, _levels.size() - 1, 0, false, bits);
}

// Seven levels hold two million boxes: the depth of the recursion is bounded by the logarithm.
void BoxPyramid::findSeen(ViewPlanes const &planes, std::size_t level, UInt32 block, bool isInside,
                          std::vector<UInt64> &bits) const
{
    BoxLanes const &boxes = _levels[level][block];
    Bits found = isInside ? Bits{lanes_in_use(boxes), 0xFF} : test_block(planes, boxes);
    if(level == 0)
    {
        set_bits(bits, block * Lanes, found.seen);
        return;
    }
    for(; found.seen != 0; found.seen &= found.seen - 1)
    {
        UInt32 const lane = static_cast<UInt32>(std::countr_zero(found.seen));
        findSeen(planes, level - 1, block * Lanes + lane, (found.inside >> lane & 1) != 0, bits);
    }
}
} // namespace OSG
