#pragma once

/// \file
/// What cores tell a RenderAction. To be registered by init functions in phase SystemPost, for
/// cores of `type` and of types derived from it.

#include "OSGFieldContainerType.h"
#include "OSGGroupApi.h"
#include "OSGRenderAction.h"

namespace OSG
{
using RenderHandler = void (*)(NodeCore &core, RenderAction &action);

/// `enter` begins one scope of the action, which ends behind the subtree.
OSG_GROUP_API void register_render_scope(FieldContainerType const &type, RenderHandler enter,
                                         Action::HandlerPromise promise);
/// `choose` adds the nodes that are shown in place of the children.
OSG_GROUP_API void register_render_choice(FieldContainerType const &type, RenderHandler choose,
                                          Action::HandlerPromise promise);
/// The subtree stands in the space of the matrix that the core accumulates.
OSG_GROUP_API void register_render_space(FieldContainerType const &type);

/// Shows child `index` of the current node alone; none where there is no such child.
OSG_GROUP_API void show_child(RenderAction &action, UInt32 index);
} // namespace OSG
