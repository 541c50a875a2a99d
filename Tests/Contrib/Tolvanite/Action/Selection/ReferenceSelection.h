#pragma once

/// \file
/// A slow, obvious selection to compare the library's selection with.
///
/// A scene is described by plain records; `build` makes nodes of it. The reference walks the
/// records by recursion, writes out every triangle of every primitive, and takes each statement of
/// the search in turn. The volumes of the nodes are up to date.

#include <array>

#include "PrimitiveExpansion.h"
#include "SelectionScenes.h"

namespace OSG::Test
{
struct SceneRecord
{
    enum Kind
    {
        Grouping,
        Moved,    ///< by `matrix`, a Transform
        Rendered, ///< by `matrix`, a core that accumulates
        Shape,    ///< shows geometry `geometry`
        Choosing, ///< a MultiSwitch
        Visiting  ///< shows the tree of record `target`; -1 is null
    };

    Kind kind = Grouping;
    Matrix matrix = {};
    int geometry = -1;
    Int32 mode = -3;
    std::vector<UInt32> choices = {};
    int target = -1;
    UInt32 mask = 0xFFFFFFFF;
    std::vector<int> children = {};
};

/// Record 0 is the root. Children and targets have larger numbers than the records that name them.
struct SceneRecords
{
    std::vector<SceneRecord> nodes;
    std::vector<GeometryParts> geometries;
};

struct BuiltScene
{
    std::vector<NodePtr> nodes; ///< by record
};

BuiltScene build(SceneRecords const &scene);

struct ReferenceSettings
{
    UInt32 types = AllTypes;
    UInt32 plane = 0; ///< position of the reference plane
    UInt32 mask = 0xFFFFFFFF;
    bool continueOnEmptyChoices = true;
};

/// What AllHits holds once it is sorted.
Hits reference_selection(SceneRecords const &scene, BuiltScene const &built, Frustum const &frustum,
                         ReferenceSettings const &settings);

/// The two hits of one kind of primitive, as `nearHit` and `farHit` before they are recorded.
struct ReferenceExtremes
{
    Real32 nearDistance = 3.4028235e38f;
    Real32 farDistance = 1.1754944e-38f;
    Int32 nearIndex = -1;
    Int32 farIndex = -1;
    Pnt3f nearPoint, farPoint;
    Vec3f nearNormal, farNormal;
};

ReferenceExtremes reference_triangles(GeometryParts const &parts, PlaneArray const &planes,
                                      Plane const &plane);
ReferenceExtremes reference_lines(GeometryParts const &parts, PlaneArray const &planes,
                                  Plane const &plane);
ReferenceExtremes reference_points(GeometryParts const &parts, PlaneArray const &planes,
                                   Plane const &plane);
/// Whether the fast selection finds the geometry.
bool reference_has_triangle(GeometryParts const &parts, PlaneArray const &planes);
} // namespace OSG::Test
