#pragma once

#include "OSGNode.h"

namespace OSG
{
/// Replaces a SwitchMaterial of the node's core by the material that it chooses. A choice beyond
/// the materials changes nothing. A ChunkMaterial without chunks draws nothing; a core with such a
/// material is replaced by a plain Group. False where the core is not a MaterialGroup,
/// MaterialChunkOverrideGroup or Geometry, or has no material.
bool resolve_material(Node &node);
} // namespace OSG
