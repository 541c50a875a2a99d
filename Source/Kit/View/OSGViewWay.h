#pragma once

#include "OSGTolvaniteKitApi.h"
#include "OSGWindowView.h"

namespace OSG
{
/// A view on the way from one view to another. `share` is 0 at the begin and 1 at the end, and the
/// host decides how it runs in time.
///
///     view = view_between(before, after, std::min(1.f, secondsSinceTheClick / 0.3f));
///
/// The camera turns by the shortest turn, at a constant rate. The point looked at goes straight,
/// and the size of what is shown there changes by equal ratios in equal shares: where the sizes
/// differ, one point keeps its place in the window.
///
/// At 0 and below the result is `from`, at 1 and above it is `to`, to the bit. Before that it has
/// the projection of `from` and the window of `to`. Where is_view is false for `from` or `to`, or
/// the share is NaN, the result is `to`.
OSG_TOLVANITEKIT_API WindowView view_between(WindowView const &from, WindowView const &to,
                                             Real32 share);
} // namespace OSG
