#pragma once

/// \file
/// The OBJ files that the readers are measured with.

#include <functional>
#include <string>
#include <vector>

namespace OSG::Bench
{
struct ObjModel
{
    std::string name; ///< as it stands in the report
    /// Reads of a measurement: more than one where a read takes milliseconds.
    int reads;
    /// False where OpenSceneGraph takes many minutes: it looks for the best order of triangles, in
    /// quadratic time where they share no vertices.
    bool forOpenSceneGraph;
    /// The path of the file, which is made where it is first asked for. Empty where a real model is
    /// missing. Files that were made are removed at the end of the program.
    std::function<std::string const &()> path;
};

std::vector<ObjModel> obj_models();

/// The bytes of a file.
std::string bytes_of_file(std::string const &path);
} // namespace OSG::Bench
