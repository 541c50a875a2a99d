#pragma once

/// \file
/// OpenGL's numbers for the settings of chunks and materials.

#include "OSGBaseTypes.h"

namespace OSG::GLName
{
// --- factors of blending; the numbers from SourceColor to SourceAlphaSaturate are in a row ---
inline constexpr UInt32 One = 1;
inline constexpr UInt32 SourceColor = 0x300;
inline constexpr UInt32 SourceAlpha = 0x302;
inline constexpr UInt32 OneMinusSourceAlpha = 0x303;
inline constexpr UInt32 OneMinusDestColor = 0x307;
inline constexpr UInt32 SourceAlphaSaturate = 0x308;
inline constexpr UInt32 ConstantColor = 0x8001;
inline constexpr UInt32 OneMinusConstantAlpha = 0x8004;

// --- colours of a surface that vertices may replace ---
inline constexpr UInt32 Ambient = 0x1200;
inline constexpr UInt32 Diffuse = 0x1201;
inline constexpr UInt32 Specular = 0x1202;
inline constexpr UInt32 Emission = 0x1600;
inline constexpr UInt32 AmbientAndDiffuse = 0x1602;

// --- modes of a texture's environment ---
inline constexpr UInt32 Add = 0x104;
inline constexpr UInt32 Blend = 0xBE2;
inline constexpr UInt32 Replace = 0x1E01;
inline constexpr UInt32 Modulate = 0x2100;
inline constexpr UInt32 Decal = 0x2101;

// --- filters ---
inline constexpr UInt32 Nearest = 0x2600;
inline constexpr UInt32 Linear = 0x2601;
inline constexpr UInt32 NearestMipmapNearest = 0x2700;
inline constexpr UInt32 LinearMipmapLinear = 0x2703;

// --- how a texture goes on beyond its edge ---
inline constexpr UInt32 Clamp = 0x2900;
inline constexpr UInt32 Repeat = 0x2901;
inline constexpr UInt32 ClampToBorder = 0x812D;
inline constexpr UInt32 ClampToEdge = 0x812F;
inline constexpr UInt32 MirroredRepeat = 0x8370;
} // namespace OSG::GLName
