#pragma once

/// \file
/// Shape and size of the scenes that both sides of a container benchmark make.

#include <cstddef>
#include <string>

namespace OSG::Bench
{
inline constexpr std::size_t TreeNodes = 200000;
inline constexpr std::size_t Boxes = 50000;
/// Of a node that has any, in the trees.
inline constexpr std::size_t Children = 10;

/// Nodes are numbered level by level.
inline std::size_t parent_of(std::size_t node) { return (node - 1) / Children; }
inline bool has_children(std::size_t node, std::size_t count)
{
    return node * Children + 1 < count;
}
/// Short enough that either side keeps it without a block of its own.
inline std::string name_of(std::size_t node) { return "part " + std::to_string(node); }
} // namespace OSG::Bench
