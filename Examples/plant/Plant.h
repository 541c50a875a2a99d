#pragma once

#include "OSGNode.h"
#include "OSGRefCountPtr.h"

/// A small plant as a CAD application would store it: named groups of tanks and pipes. Transforms
/// place them and material groups colour them. There are a switch for the state of a valve, a multi
/// switch for layers, a light, and some empty groups that editing has left behind. The unit is the
/// metre, and y points upwards.
OSG::UnrecordedRefPtr<OSG::Node> make_plant();
