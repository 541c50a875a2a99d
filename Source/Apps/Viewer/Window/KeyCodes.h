#pragma once

#include "OSGBaseTypes.h"

namespace Viewer
{
/// The virtual-key code of a key of GLFW; 0 for a key that has none here.
OSG::Int16 virtual_key(int glfwKey);
/// Bits of OSG::PointerTool::Modifier for those of GLFW.
OSG::UInt16 tool_modifiers(int glfwModifiers);
} // namespace Viewer
