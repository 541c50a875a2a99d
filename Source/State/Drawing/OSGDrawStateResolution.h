#pragma once

#include "OSGDrawState.h"

namespace OSG
{
class Material;

/// The state in which geometry of `material` is drawn below an overriding material; either may be
/// null. What the overriding material says replaces, by kind and slot, what the material says; the
/// rest of both counts. A simple material counts as the chunks that it amounts to. What says
/// nothing of its surface gets that of a new SimpleMaterial. The state points to images and chunks
/// of the materials and counts no references.
OSG_STATE_API DrawState resolve_draw_state(Material const *material,
                                           Material const *overriding = nullptr);
} // namespace OSG
