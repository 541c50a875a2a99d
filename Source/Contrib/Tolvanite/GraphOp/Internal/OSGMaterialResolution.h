#pragma once

#include "OSGNode.h"

namespace OSG
{
/// Puts the chosen material in place of a SwitchMaterial that the node's core has, and a plain
/// Group in place of a core whose material is a ChunkMaterial without chunks: that draws nothing.
/// False where the core is none of MaterialGroup, MaterialChunkOverrideGroup and Geometry, or has
/// no material. A choice beyond the materials changes nothing.
bool resolve_material(Node &node);
} // namespace OSG
