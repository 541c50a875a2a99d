#pragma once

#include <cstring>

namespace OSG::Test
{
/// Equal to the last bit: NaN equals itself, and zero does not equal minus zero.
template <class T>
bool same_bits(T const &a, T const &b)
{
    return std::memcmp(&a, &b, sizeof(T)) == 0;
}
} // namespace OSG::Test
