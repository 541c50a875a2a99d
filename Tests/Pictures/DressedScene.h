#pragma once

/// \file
/// What a table of appearances amounts to, made slowly: a copy of the scene with an own node for
/// each place, edited as the table says.

#include "OSGAppearanceTable.h"
#include "SceneBuilders.h"

namespace OSG::Test
{
/// The places that a walk comes to, in the order of the tree.
std::vector<NodePath> places_in(Node *root);
/// Shares the cores of the scene. The trees of visiting nodes are copied for each visit.
NodePtr dressed_copy(Node *root, AppearanceTable const &table);
} // namespace OSG::Test
