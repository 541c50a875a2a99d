#pragma once

#include <string>

#include "OSGAppearanceTable.h"
#include "OSGNode.h"
#include "Oracle/PictureComparison.h"
#include "Oracle/SlowView.h"

namespace OSG
{
class OffscreenContext;
}

namespace OSG::Test
{
/// Why nothing can be rendered on this machine; empty where it can.
std::string missing_renderer();

/// The context that views of that size are rendered in; it stays until the program ends.
OffscreenContext &rendering_context(ViewSetup const &setup);
/// The picture that the system's own renderer makes in an off-screen context.
Pixels rendered_pixels(Node *root, ViewSetup const &setup, AppearanceTable const &table = {});
} // namespace OSG::Test
