#pragma once

#include "OSGViewDepths.h"
#include "OSGWindowView.h"

namespace OSG
{
/// The depths between which a view shows what lies within `depths` and the overlay besides. What
/// keeps its size on the screen has room for a tenth of the window's height in front of its origin.
/// The near side stays beyond a 10,000th of the far side. `camera` is that of depths_in_view.
ViewDepths with_overlay(ViewDepths const &depths, SceneBounds const &overlay,
                        WindowView const &view, Matrix const &camera);
} // namespace OSG
