#pragma once

namespace OSG
{
class RenderAction;

/// Below a ConstantSizeTransform the action draws one unit as one pixel at the depth of its origin,
/// wherever in the window that is. The core's own way, which others use, lets the difference in
/// normalised depth count as well: off the middle of the window, and where near and far side are
/// close to one another, it draws things smaller by a third and more.
void keep_true_sizes(RenderAction &action);
} // namespace OSG
