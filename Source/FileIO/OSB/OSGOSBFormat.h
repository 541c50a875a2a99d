#pragma once

#include "OSGBaseTypes.h"

namespace OSG::OSBFormat
{
/// First bytes of a file. A transfer as text or by seven bits breaks them, so that it is noticed.
inline constexpr UInt8 Signature[8] = {0x89, 'O', 'S', 'B', '\r', '\n', 0x1a, '\n'};

/// Versions of a file, behind the signature. The first one names types and fields with every record
/// and holds all fields; the second one names them once and leaves out what a new container holds.
inline constexpr UInt16 NamesInFull = 0x0200;
inline constexpr UInt16 NamesOnce = 0x0300;
} // namespace OSG::OSBFormat
