#pragma once

#include <optional>

#include "OSGMatrix.h"
#include "OSGNodePath.h"
#include "OSGTolvaniteKitApi.h"

namespace OSG
{
/// Multiplies `matrix` by that of a core. A core whose matrix depends on the view counts as it was
/// put, not as it was seen last.
OSG_TOLVANITEKIT_API void accumulate_place(NodeCore &core, Matrix &matrix);

/// From the space in which the node of a path stands, which is that of its volume, to the
/// coordinates of `root`. No value where a walk from `root` does not come to the node on this way.
OSG_TOLVANITEKIT_API std::optional<Matrix> place_of(NodePath const &path, Node const *root);
} // namespace OSG
