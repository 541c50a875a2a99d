#pragma once

/// \file
/// Reads of scene files by other libraries, from memory or from a path. Each gives the number of
/// triangles, 0 where nothing was read.

#include <cstddef>
#include <string>

namespace OSG::Bench
{
#ifdef BENCHMARK_WITH_TINYOBJLOADER
/// Flat arrays; polygons stay as they are. Counts faces.
std::size_t file_by_tinyobjloader(std::string const &path);
#endif
#ifdef BENCHMARK_WITH_ASSIMP
/// With equal vertices joined to one.
std::size_t read_by_assimp(std::string const &bytes, char const *suffix);
std::size_t file_by_assimp(std::string const &path);
#endif
#ifdef BENCHMARK_WITH_OPENSCENEGRAPH
std::size_t read_by_openscenegraph(std::string const &bytes, char const *suffix);
std::size_t file_by_openscenegraph(std::string const &path);
#endif
} // namespace OSG::Bench
