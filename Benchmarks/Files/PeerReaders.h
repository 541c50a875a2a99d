#pragma once

/// \file
/// Reads of whole scene files by other libraries, from memory. Each gives the number of triangles,
/// 0 where nothing was read.

#include <cstddef>
#include <string>

namespace OSG::Bench
{
#ifdef BENCHMARK_WITH_ASSIMP
/// With equal vertices joined to one.
std::size_t read_by_assimp(std::string const &bytes, char const *suffix);
#endif
#ifdef BENCHMARK_WITH_OPENSCENEGRAPH
std::size_t read_by_openscenegraph(std::string const &bytes, char const *suffix);
#endif
} // namespace OSG::Bench
