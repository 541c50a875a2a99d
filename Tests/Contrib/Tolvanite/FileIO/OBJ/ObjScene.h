#pragma once

/// \file
/// Scenes that the library reads from OBJ texts, in a form that tests can compare.

#include <string>
#include <vector>

#include "OSGGeometry.h"
#include "OSGNode.h"
#include "OSGSimpleTexturedMaterial.h"

namespace OSG::Test
{
/// The texts that reading logged, with their levels before them: "2: Mesh with empty faceList\n".
using LogLines = std::vector<std::string>;

struct ObjScene
{
    UnrecordedRefPtr<Node> root;
    LogLines log;

    /// The geometries from the first child on, or that of the root itself.
    std::vector<Geometry *> geometries() const;
};

/// Through the scene file handler, from a stream or from a file.
ObjScene read_obj_scene(std::string const &text);
ObjScene read_obj_file(std::string const &path);

/// "null", "geometry", or "group(geometry, geometry)", where each geometry tells the corners of its
/// faces by their entries in the position index: "(0 1 2)(2 3 4294967295)".
std::string describe_scene(Node *root);
std::string describe_faces(Geometry const &geometry);

/// All values of an array; empty for null.
std::vector<UInt32> values_of(GeoIntegralProperty const *property);
/// The elements that the index of a slot names, in the order of the vertices: numbers in rows.
std::vector<std::vector<Real32>> vertex_values(Geometry const &geometry, UInt16 slot);

/// Walks every triangle; an index beyond its array fails the test. Gives their number.
UInt64 count_triangles(Geometry const &geometry);
UInt64 count_triangles(Node *root);

/// The material that the reader gave; null for one of another class.
SimpleTexturedMaterial *material_of(Geometry const &geometry);
} // namespace OSG::Test
