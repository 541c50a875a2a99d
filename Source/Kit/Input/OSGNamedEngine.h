#pragma once

/// \file
/// The navigation engines by the names that users choose them by.

#include <string>
#include <vector>

#include "OSGNavigatorEngine.h"
#include "OSGRefCountPtr.h"
#include "OSGTolvaniteKitApi.h"

namespace OSG
{
/// A new engine: "cad" is CadTrackballEngine with a radius of 0.8, "fly" WASDFlyEngine, "copter"
/// CopterFlyEngine, "walk" WASDWalkEngine. Null for another name, and where there is no memory. A
/// walk keeps the desktop that is current when it is made.
OSG_TOLVANITEKIT_API TransitPtr<NavigatorEngine> make_engine(std::string const &name);
/// All names, in the order in which a menu lists them.
OSG_TOLVANITEKIT_API std::vector<std::string> engine_names();
} // namespace OSG
