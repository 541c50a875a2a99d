#pragma once

#include <string>

#include "OSGBaseTypes.h"

namespace Viewer
{
/// A key as Navigator::keyPressEx takes it.
struct EngineKey
{
    OSG::Int16 code = 0;
    OSG::UInt16 modifiers = 0; ///< without KeyDown and KeyUp
};

/// What the engine of that name understands for a virtual-key code: some want numbers of their own
/// for arrows.
EngineKey engine_key(std::string const &engine, OSG::Int16 virtualKey);
/// Whether the engine of that name understands a character that was typed.
bool takes_character(std::string const &engine, unsigned int character);
} // namespace Viewer
