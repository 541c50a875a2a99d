#pragma once

/// \file
/// The shape and size of the scenes that both halves of the container benchmarks make.

#include <cstddef>
#include <string>

namespace OSG::Bench
{
inline constexpr std::size_t TreeNodes = 200000;
inline constexpr std::size_t Boxes = 50000;
/// The number of children of each inner node of a tree.
inline constexpr std::size_t Children = 10;

/// Nodes are numbered level by level.
inline std::size_t parent_of(std::size_t node) { return (node - 1) / Children; }
inline bool has_children(std::size_t node, std::size_t count)
{
    return node * Children + 1 < count;
}
/// The name is so short that both sides store it without a heap block.
inline std::string name_of(std::size_t node) { return "part " + std::to_string(node); }
} // namespace OSG::Bench
