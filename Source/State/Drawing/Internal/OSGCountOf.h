#pragma once

#include <vector>

#include "OSGBaseTypes.h"

namespace OSG
{
/// The length of a list whose places are numbered by 32 bits.
template <class T>
UInt32 count_of(std::vector<T> const &list)
{
    return static_cast<UInt32>(list.size());
}
} // namespace OSG
