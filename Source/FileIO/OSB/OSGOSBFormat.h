#pragma once

#include "OSGBaseTypes.h"

namespace OSG::OSBFormat
{
/// First bytes of a file. A transfer as text or by seven bits breaks them, so that it is noticed.
inline constexpr UInt8 signature[8] = {0x89, 'O', 'S', 'B', '\r', '\n', 0x1a, '\n'};
} // namespace OSG::OSBFormat
