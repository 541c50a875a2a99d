#pragma once

#include <array>
#include <bit>

namespace OSG::Test
{
/// Equal to the last bit: NaN equals itself, and zero does not equal minus zero.
template <class T>
bool same_bits(T const &a, T const &b)
{
    using Bytes = std::array<unsigned char, sizeof(T)>;
    return std::bit_cast<Bytes>(a) == std::bit_cast<Bytes>(b);
}
} // namespace OSG::Test
