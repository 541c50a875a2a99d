#pragma once

/// \file
/// Fixed-width numbers of the system.

#include <cstdint>

namespace OSG
{
using Int8 = std::int8_t;
using Int16 = std::int16_t;
using Int32 = std::int32_t;
using Int64 = std::int64_t;
using UInt8 = std::uint8_t;
using UInt16 = std::uint16_t;
using UInt32 = std::uint32_t;
using UInt64 = std::uint64_t;
using Real32 = float;
using Real64 = double;

/// Change mask of a container: bit `1 << id` stands for the field with that id.
using BitVector = std::uint64_t;
} // namespace OSG
