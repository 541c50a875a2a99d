#pragma once

#include "Session.h"

namespace Viewer
{
/// The numbers of a measurement beside its lines, over the view. `unitsPerPixel`: the toolkit's
/// units in a device pixel.
void draw_measure_texts(Session const &session, float unitsPerPixel);
} // namespace Viewer
