#pragma once

#include "OSGMatrix.h"
#include "OSGTolvaniteKitApi.h"

namespace OSG
{
struct SceneBounds;

/// The depths between which a view shows a scene. The depth of a point is its distance from the eye
/// along the direction of the view.
struct ViewDepths
{
    Real64 nearSide = 0;
    Real64 farSide = 0;

    /// False where nothing lies before the eye.
    bool isVisible() const { return farSide > 0; }
};

/// The depths for a camera whose matrix from its space to that of the scene's root is `camera`.
///
/// The far side lies at the largest depth of the box's corners times 1.001. The near side lies at
/// the larger one of the smallest depth times 0.999 and a 10,000th of the far side. Where the scene
/// holds infinite volumes, the near side is a 10,000th of the far side, and the far side is not
/// nearer than their origins times 1.001. Without a box the sides are 0.1 and 10,000.
OSG_TOLVANITEKIT_API ViewDepths depths_in_view(SceneBounds const &bounds, Matrix const &camera);
} // namespace OSG
