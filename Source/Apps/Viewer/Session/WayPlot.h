#pragma once

#include <string>
#include <vector>

#include "OSGPathPlot.h"
#include "OSGWalkConsole.h"

namespace Viewer
{
/// Writes a plot of the way through the scene, see OSG::write_path_plot, and replaces a file that
/// is there. Empty on success, otherwise the reason of the failure.
std::string save_way_plot(std::string const &target, OSG::Node *scene,
                          std::vector<OSG::PathPoint> const &way, OSG::Vec3f const &up);

/// The number of points of WalkConsole::getWay, without a copy of them.
std::size_t length_of_way(OSG::WalkConsole const &console);

/// The places of a way seen from above, in a square from 0 to 1 with x to the right and y down, to
/// one scale. Places that are not finite are left out. A way that stays where it is lies in the
/// middle.
std::vector<OSG::Pnt2f> sketch_way(std::vector<OSG::PathPoint> const &way, bool isZUp);
} // namespace Viewer
