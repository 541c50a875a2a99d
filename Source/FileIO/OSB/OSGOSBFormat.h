#pragma once

#include "OSGBaseTypes.h"

namespace OSG::OSBFormat
{
/// The first bytes of a file. A transfer as text or with seven bits changes them, so the damage is
/// noticed.
inline constexpr UInt8 Signature[8] = {0x89, 'O', 'S', 'B', '\r', '\n', 0x1a, '\n'};

/// Versions of a file, which follow the signature. Version NamesInFull repeats the names of types
/// and fields in every record and has all fields. The later version has each name once and leaves
/// out fields with the value of a new container.
inline constexpr UInt16 NamesInFull = 0x0200;
inline constexpr UInt16 NamesOnce = 0x0300;
} // namespace OSG::OSBFormat
