#pragma once

/// \file
/// Checks what is true for every scene that a reader gives, whatever the input was.

#include <string>

#include "OSGMemManager.h"
#include "OSGNode.h"

namespace OSG::Test
{
/// The largest peak of memory that reading this number of bytes may have.
inline UInt64 read_memory_bound(UInt64 inputBytes) { return 64 * 1024 * 1024 + 40 * inputBytes; }

/// The parts that the geometries of a scene must have.
enum class Parts
{
    Any, ///< whatever the file gave them
    PositionsNormalsAndMaterial
};

/// Updates the volumes, walks all triangles, lines and primitives, and reads their vertices.
/// Returns a text about the first fault, which is empty if there is none or if the scene is null.
/// Faults are an index beyond its array, a gap in running numbers, a geometry without the required
/// parts, and a volume that is out of date.
std::string fault_of_scene(Node *root, Parts parts = Parts::PositionsNormalsAndMaterial);
} // namespace OSG::Test
