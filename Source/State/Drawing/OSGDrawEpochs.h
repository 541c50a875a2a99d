#pragma once

/// \file
/// Numbers that tell those who keep what they have made of a scene whether to look again. Any
/// thread may note and ask.

#include <atomic>

#include "OSGFieldContainerType.h"
#include "OSGStateApi.h"

namespace OSG
{
class OSG_STATE_API DrawEpochs
{
  public:
    enum class Kind : UInt8
    {
        Other,
        Material, ///< a material, a chunk or an image
        Mesh      ///< what a mesh is made of
    };

    /// A material, chunk or image has other values than before, or has ended.
    static void noteMaterial() { _materials.fetch_add(1, std::memory_order_relaxed); }
    static UInt64 getMaterials() { return _materials.load(std::memory_order_relaxed); }
    /// A shape gives another mesh than before.
    static void noteMesh() { _meshes.fetch_add(1, std::memory_order_relaxed); }
    static UInt64 getMeshes() { return _meshes.load(std::memory_order_relaxed); }
    /// A shape has ended.
    static void noteEndOfShape() { _shapeEnds.fetch_add(1, std::memory_order_relaxed); }
    static UInt64 getShapeEnds() { return _shapeEnds.load(std::memory_order_relaxed); }

    /// Containers of `type`, and of types derived from it, are of that kind. To be called by init
    /// functions.
    static void registerKind(FieldContainerType const &type, Kind kind);
    static Kind kindOf(FieldContainerType const &type);

  private:
    static std::atomic<UInt64> _materials;
    static std::atomic<UInt64> _meshes;
    static std::atomic<UInt64> _shapeEnds;
};
} // namespace OSG
