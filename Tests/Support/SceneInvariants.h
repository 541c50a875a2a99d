#pragma once

/// \file
/// What holds of every scene that a reader hands out, whatever it was given.

#include <string>

#include "OSGMemManager.h"
#include "OSGNode.h"

namespace OSG::Test
{
/// The most that reading so many bytes may hold from the allocator at its peak.
inline UInt64 read_memory_bound(UInt64 inputBytes) { return 64 * 1024 * 1024 + 40 * inputBytes; }

/// What the geometries of a scene have.
enum class Parts
{
    Any, ///< whatever the file gave them
    PositionsNormalsAndMaterial
};

/// Updates the volumes and walks all triangles, lines and primitives, touching what they deliver.
/// Gives what is wrong, or the empty string, also for null: an index beyond its array, a running
/// number that skips, a geometry without the parts, a volume that is not up to date.
std::string fault_of_scene(Node *root, Parts parts = Parts::PositionsNormalsAndMaterial);
} // namespace OSG::Test
