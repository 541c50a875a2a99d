#pragma once

/// \file
/// OpenGL's numbers for the settings of chunks and materials.

#include "OSGBaseTypes.h"

namespace OSG::GLName
{
// --- factors of blending ---
inline constexpr UInt32 SourceAlpha = 0x302;
inline constexpr UInt32 OneMinusSourceAlpha = 0x303;

// --- modes of a texture's environment ---
inline constexpr UInt32 Modulate = 0x2100;

// --- filters ---
inline constexpr UInt32 Nearest = 0x2600;
inline constexpr UInt32 Linear = 0x2601;
inline constexpr UInt32 LinearMipmapLinear = 0x2703;

// --- how a texture goes on beyond its edge ---
inline constexpr UInt32 Clamp = 0x2900;
inline constexpr UInt32 Repeat = 0x2901;
} // namespace OSG::GLName
