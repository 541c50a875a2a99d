#pragma once

#include "OSGNode.h"
#include "OSGRefCountPtr.h"

/// A small plant as a CAD application would hold it: named groups of tanks and pipes,
/// placed by transforms, coloured by material groups, with a switch for the state of a valve, a
/// multi switch of layers, a light, and some empty groups that editing has left behind. Metres, y
/// upwards.
OSG::UnrecordedRefPtr<OSG::Node> make_plant();
