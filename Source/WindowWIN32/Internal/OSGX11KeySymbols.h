#pragma once

#include <array>

#include "OSGBaseTypes.h"

namespace OSG
{
/// The symbols that X11 gives to the key with a virtual-key code: one, two (a left and a right
/// key), or none, which is 0.
std::array<UInt32, 2> x11_key_symbols(Int16 code);
} // namespace OSG
