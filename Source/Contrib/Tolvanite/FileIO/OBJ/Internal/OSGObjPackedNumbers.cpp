#include "OSGObjPackedNumbers.h"

#include <algorithm>
#include <cstring>

namespace OSG
{
namespace
{
/// Four numbers in a vector register.
using FourInt32 = Int32 __attribute__((vector_size(16)));

struct Limits
{
    Int32 least;
    Int32 greatest;
};

Limits limits_of(std::span<Int32 const> numbers)
{
    FourInt32 least = FourInt32{} + numbers[0];
    FourInt32 greatest = least;
    Int32 const *number = numbers.data();
    Int32 const *const end = number + numbers.size();
    for(; end - number >= 4; number += 4)
    {
        FourInt32 four;
        std::memcpy(&four, number, sizeof four);
        least = four < least ? four : least;
        greatest = four > greatest ? four : greatest;
    }
    Limits limits = {numbers[0], numbers[0]};
    for(int lane = 0; lane < 4; ++lane)
    {
        limits.least = std::min<Int32>(limits.least, least[lane]);
        limits.greatest = std::max<Int32>(limits.greatest, greatest[lane]);
    }
    for(; number != end; ++number)
    {
        limits.least = std::min(limits.least, *number);
        limits.greatest = std::max(limits.greatest, *number);
    }
    return limits;
}

UInt32 width_for(UInt32 difference)
{
    return difference == 0 ? 0 : difference < 0x100 ? 1 : difference < 0x10000 ? 2 : 4;
}
} // namespace

ObjPackedNumbers::ObjPackedNumbers(std::span<Int32 const> numbers, ObjByteStack &room)
{
    if(numbers.empty())
        return;
    Limits const limits = limits_of(numbers);
    _least = limits.least;
    _greatest = limits.greatest;
    // Differences wrap around where they do not fit into a signed number.
    _width = width_for(static_cast<UInt32>(_greatest) - static_cast<UInt32>(_least));
    if(_width == 1)
        store<UInt8>(numbers, room);
    else if(_width == 2)
        store<UInt16>(numbers, room);
    else if(_width == 4)
        store<UInt32>(numbers, room);
}

void ObjPackedNumbers::unpack(std::size_t first, std::span<Int32> to) const
{
    if(_width == 0)
        std::fill(to.begin(), to.end(), _least);
    else if(_width == 1)
        load<UInt8>(first, to);
    else if(_width == 2)
        load<UInt16>(first, to);
    else
        load<UInt32>(first, to);
}

namespace
{
// Eight numbers at a time, as vectors that the compiler lays on the registers of the machine.
constexpr std::size_t Lanes = 8;
using Numbers = UInt32 __attribute__((vector_size(Lanes * sizeof(UInt32))));
template <class Word>
struct Packed;
template <>
struct Packed<UInt8>
{
    using Words = UInt8 __attribute__((vector_size(Lanes)));
};
template <>
struct Packed<UInt16>
{
    using Words = UInt16 __attribute__((vector_size(Lanes * sizeof(UInt16))));
};
template <>
struct Packed<UInt32>
{
    using Words = Numbers;
};
} // namespace

template <class Word>
void ObjPackedNumbers::store(std::span<Int32 const> numbers, ObjByteStack &room)
{
    using Words = typename Packed<Word>::Words;
    _bytes = room.add(numbers.size() * sizeof(Word));
    Word *const to = reinterpret_cast<Word *>(_bytes);
    UInt32 const least = static_cast<UInt32>(_least);
    std::size_t i = 0;
    for(; i + Lanes <= numbers.size(); i += Lanes)
    {
        Numbers eight;
        std::memcpy(&eight, &numbers[i], sizeof eight);
        Words const words = __builtin_convertvector(eight - least, Words);
        std::memcpy(to + i, &words, sizeof words);
    }
    for(; i < numbers.size(); ++i)
        to[i] = static_cast<Word>(static_cast<UInt32>(numbers[i]) - least);
}

template <class Word>
void ObjPackedNumbers::load(std::size_t first, std::span<Int32> numbers) const
{
    using Words = typename Packed<Word>::Words;
    Word const *const from = reinterpret_cast<Word const *>(_bytes) + first;
    UInt32 const least = static_cast<UInt32>(_least);
    std::size_t i = 0;
    for(; i + Lanes <= numbers.size(); i += Lanes)
    {
        Words words;
        std::memcpy(&words, from + i, sizeof words);
        Numbers const eight = __builtin_convertvector(words, Numbers) + least;
        std::memcpy(&numbers[i], &eight, sizeof eight);
    }
    for(; i < numbers.size(); ++i)
        numbers[i] = static_cast<Int32>(least + from[i]);
}
} // namespace OSG
